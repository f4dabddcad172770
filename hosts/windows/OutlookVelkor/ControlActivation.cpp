// hosts/windows/OutlookVelkor/ControlActivation.cpp: how containers make the control active in
// fewer steps, or leave it inactive for as long as nobody points at it.
#include <cwctype>
#include <utility>
#include <vector>

#include "hosts/windows/OutlookVelkor/YearPlanControl.h"

namespace velkor {
namespace {

/// Whoever points at an inactive control wants to see what its bars tell: that needs its window.
constexpr DWORD Policy = POINTERINACTIVE_ACTIVATEONENTRY;

/// Connects one listener of a container's; 0 where it has none or is refused.
DWORD Connect(ControlListeners& listeners, REFIID events, IUnknown* listener) {
  ComPtr<IConnectionPoint> point;
  DWORD cookie = 0;
  if (listener == nullptr || FAILED(listeners.FindConnectionPoint(events, &point))) return 0;
  return SUCCEEDED(point->Advise(listener, &cookie)) ? cookie : 0;
}

/// The buttons that keys press, with their commands.
std::vector<std::pair<ACCEL, CommandButton*>> AcceleratorsOf(YearPlanElements& elements) {
  std::vector<std::pair<ACCEL, CommandButton*>> accelerators;
  for (const PlacedElement& placed : elements.Placed()) {
    auto* const button = dynamic_cast<CommandButton*>(placed.element);
    if (button == nullptr || button->accessKey == 0) continue;
    accelerators.emplace_back(ACCEL{FALT | FVIRTKEY, static_cast<WORD>(button->accessKey),
                                    static_cast<WORD>(accelerators.size())},
                              button);
  }
  return accelerators;
}

}  // namespace

/// The table is the control's, made once.
STDMETHODIMP YearPlanControl::GetControlInfo(CONTROLINFO* info) {
  if (info == nullptr) return E_POINTER;
  return Answer([&] {
    std::vector<ACCEL> table;
    for (const auto& [accelerator, button] : AcceleratorsOf(plan_.Elements())) {
      table.push_back(accelerator);
    }
    if (!accelerators_) {
      accelerators_.reset(::CreateAcceleratorTableW(table.data(), static_cast<int>(table.size())));
    }
    info->hAccel = accelerators_.get();
    info->cAccel = static_cast<USHORT>(accelerators_ ? table.size() : 0);
    info->dwFlags = 0;
  });
}

STDMETHODIMP YearPlanControl::OnMnemonic(MSG* message) {
  if (message == nullptr) return E_POINTER;
  return AnswerCall([&] {
    // Of a character its small letter may have been typed.
    const auto key = static_cast<WORD>(::towupper(static_cast<wint_t>(message->wParam)));
    for (const auto& [accelerator, button] : AcceleratorsOf(plan_.Elements())) {
      if (accelerator.key == key && stock_.Enabled() && !ambients_.uiDead) return button->Click();
    }
  });
}

STDMETHODIMP YearPlanControl::GetActivationPolicy(DWORD* policy) {
  if (policy == nullptr) return E_POINTER;
  *policy = Policy;
  return S_OK;
}

/// The container activates the control before it would have use for these.
STDMETHODIMP YearPlanControl::OnInactiveMouseMove(LPCRECT, LONG, LONG, DWORD) {
  return S_OK;
}

STDMETHODIMP YearPlanControl::OnInactiveSetCursor(LPCRECT, LONG, LONG, DWORD, BOOL mustSet) {
  if (!mustSet) return S_FALSE;
  ::SetCursor(::LoadCursorW(nullptr, IDC_ARROW));
  return S_OK;
}

/// For sites that do not answer for themselves.
void YearPlanControl::TakeSurroundings(const QACONTAINER& container) {
  ambients_.back = container.colorBack;
  ambients_.fore = container.colorFore;
  ambients_.font = FontOf(container.pFont);
  const auto locale = static_cast<LCID>(container.lcid);
  ambients_.locale = ::IsValidLocale(locale, LCID_INSTALLED) ? locale : 0;
  ambients_.uiDead = (container.dwAmbientFlags & QACONTAINER_UIDEAD) != 0;
  Dress();
}

STDMETHODIMP YearPlanControl::QuickActivate(QACONTAINER* container, QACONTROL* control) {
  if (container == nullptr || control == nullptr) return E_POINTER;
  return AnswerCall([&] {
    const ULONG size = control->cbSize;
    *control = {};
    control->cbSize = size;
    if (container->pClientSite != nullptr) {
      SetClientSite(container->pClientSite);
      ComPtr<IDispatch> ambient;
      if (FAILED(container->pClientSite->QueryInterface(IID_PPV_ARGS(&ambient)))) {
        TakeSurroundings(*container);
      }
    }
    if (container->pAdviseSink != nullptr) {
      listeners_.SetAdvise(DVASPECT_CONTENT, 0, container->pAdviseSink);
    }
    control->dwEventCookie = Connect(listeners_, DIID__YearPlanEvents, container->pUnkEventSink);
    control->dwPropNotifyCookie =
        Connect(listeners_, __uuidof(IPropertyNotifySink), container->pPropertyNotifySink);
    GetMiscStatus(DVASPECT_CONTENT, &control->dwMiscStatus);
    control->dwViewStatus = VIEWSTATUS_OPAQUE;
    control->dwPointerActivationPolicy = Policy;
  });
}

STDMETHODIMP YearPlanControl::SetContentExtent(LPSIZEL size) {
  return SetExtent(DVASPECT_CONTENT, size);
}

STDMETHODIMP YearPlanControl::GetContentExtent(LPSIZEL size) {
  return GetExtent(DVASPECT_CONTENT, size);
}

}  // namespace velkor
