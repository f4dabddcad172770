// hosts/windows/OutlookVelkor/ControlOleObject.cpp: the control as an embedded object: its site,
// its size and its verbs.
#include <string>

#include "hosts/windows/OutlookVelkor/Module.h"
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"
#include "platform/windows/com/Variant.h"

namespace velkor {
namespace {

/// On the menus of containers, as it is registered.
constexpr LONG PropertiesVerb = 1;

}  // namespace

STDMETHODIMP YearPlanControl::SetClientSite(IOleClientSite* site) {
  return AnswerCall([&] {
    place_.SetSite(site);
    FollowAmbients(DISPID_UNKNOWN);
    // Where properties are loaded first nobody could say then that this is design mode.
    if (plan_.Elements().tmrStart.Enabled() && place_.IsDesignMode()) timers_.clear();
  });
}

STDMETHODIMP YearPlanControl::GetClientSite(IOleClientSite** site) {
  if (site == nullptr) return E_POINTER;
  return place_.Site().CopyTo(site);
}

STDMETHODIMP YearPlanControl::Close(DWORD save) {
  return AnswerCall([&] {
    // A container that asks lets its user decide; a control has no window to ask in.
    if (save != OLECLOSE_NOSAVE && dirty_) {
      life_.Tell(place_.Site(), [](IOleClientSite& told) { return told.SaveObject(); });
    }
    place_.Close();
    isRunning_ = false;
    listeners_.Closed();
  });
}

STDMETHODIMP YearPlanControl::GetMoniker(DWORD /*assign*/, DWORD /*which*/, IMoniker** moniker) {
  if (moniker != nullptr) *moniker = nullptr;
  return E_NOTIMPL;
}

STDMETHODIMP YearPlanControl::GetClipboardData(DWORD /*reserved*/, IDataObject** data) {
  if (data != nullptr) *data = nullptr;
  return E_NOTIMPL;
}

HRESULT YearPlanControl::Activate() {
  const HRESULT result = place_.Open();
  if (SUCCEEDED(result)) Start();
  return result;
}

/// With the keyboard.
/// @param message  what the user did for it; null when the container does not say
HRESULT YearPlanControl::ActivateByUser(const MSG* message) {
  const HRESULT result = Activate();
  if (FAILED(result)) return result;
  const bool byTab =
      message != nullptr && message->message == WM_KEYDOWN && message->wParam == VK_TAB;
  place_.TakeKeyboard(byTab ? EntryByTab() : KeyboardEntry::Grid);
  if (message != nullptr) place_.TakePress(*message);
  return S_OK;
}

HRESULT YearPlanControl::Obey(LONG verb, LPMSG message, HWND parent) {
  switch (verb) {
    case OLEIVERB_HIDE:
      return InPlaceDeactivate();
    case OLEIVERB_INPLACEACTIVATE:
    case OLEIVERB_SHOW:
      return Activate();
    case OLEIVERB_PRIMARY:
    case OLEIVERB_OPEN:
    case OLEIVERB_UIACTIVATE:
      return ActivateByUser(message);
    case OLEIVERB_PROPERTIES:
    case PropertiesVerb:
      return ShowProperties(parent);
    case OLEIVERB_DISCARDUNDOSTATE:
      return S_OK;
    default:
      return verb > PropertiesVerb ? OLEOBJ_S_INVALIDVERB : E_NOTIMPL;
  }
}

STDMETHODIMP YearPlanControl::DoVerb(LONG verb, LPMSG message, IOleClientSite* /*site*/,
                                     LONG /*index*/, HWND parent, LPCRECT /*place*/) {
  HRESULT obeyed = E_FAIL;
  const HRESULT result = AnswerCall([&] { obeyed = Obey(verb, message, parent); });
  return FAILED(result) ? result : obeyed;
}

/// The calendar program is not asked until the control is activated.
STDMETHODIMP YearPlanControl::Run(IBindCtx* /*context*/) {
  isRunning_ = true;
  return S_OK;
}

STDMETHODIMP YearPlanControl::EnumVerbs(IEnumOLEVERB** verbs) {
  if (verbs == nullptr) return E_POINTER;
  *verbs = nullptr;
  return ::OleRegEnumVerbs(CLSID_YearPlan, verbs);
}

STDMETHODIMP YearPlanControl::GetUserType(DWORD form, LPOLESTR* type) {
  if (type == nullptr) return E_POINTER;
  const std::wstring text = ToWide(form == USERCLASSTYPE_APPNAME ? ApplicationName : UserType);
  *type = CopyForCaller(text);
  return *type != nullptr ? S_OK : E_OUTOFMEMORY;
}

STDMETHODIMP YearPlanControl::SetExtent(DWORD aspect, SIZEL* size) {
  if (size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  if (size->cx <= 0 || size->cy <= 0) return E_INVALIDARG;
  // The container stores it, not this.
  return AnswerCall([&] {
    place_.SetExtent(*size);
    listeners_.PictureChanged();
  });
}

STDMETHODIMP YearPlanControl::GetExtent(DWORD aspect, SIZEL* size) {
  if (size == nullptr) return E_POINTER;
  if (aspect != DVASPECT_CONTENT) return DV_E_DVASPECT;
  *size = place_.Extent();
  return S_OK;
}

STDMETHODIMP YearPlanControl::GetMiscStatus(DWORD aspect, DWORD* status) {
  if (status == nullptr) return E_POINTER;
  *status = aspect == DVASPECT_CONTENT ? MiscStatus : 0;
  return S_OK;
}

STDMETHODIMP YearPlanControl::FreezeEvents(BOOL freeze) {
  return AnswerCall([&] { listeners_.Freeze(freeze != FALSE); });
}

}  // namespace velkor
