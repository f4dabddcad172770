// hosts/windows/OutlookVelkor/YearPlanControl.cpp: what the control is to itself: its properties
// and methods.
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"

#include <utility>

#include "platform/windows/com/Variant.h"
#include "platform/windows/elements/MakePeer.h"
#include "values/Error.h"

namespace velkor {

YearPlanControl::YearPlanControl(ComPtr<ITypeInfo> typeInfo, IUnknown* outer)
    : PropertyMembers(outer),
      typeInfo_(std::move(typeInfo)),
      life_(Whole()),
      listeners_(life_, *this, *this),
      lastPicture_(Whole()),
      seams_(life_.Owner(), [this](const Error& error) { listeners_.ErrorOccurred(error); }),
      plan_(seams_.All(), *this),
      place_(
          life_, plan_, *this, [this] { return seams_.IsWaiting(); }, [this] { Dress(); }),
      stock_([this](std::string_view name) {
        Dress();
        PropertyChanged(name);
      }) {}

YearPlanControl::~YearPlanControl() = default;

void* YearPlanControl::FindOther(REFIID id) {
  if (id == __uuidof(IDispatch)) return static_cast<IDispatch*>(this);
  if (id == __uuidof(IProvideClassInfo)) return static_cast<IProvideClassInfo*>(this);
  // All that they have in common stands first, in the same order.
  if (id == __uuidof(IPersist) || id == __uuidof(IPersistStream))
    return static_cast<IPersistStreamInit*>(this);
  if (id == __uuidof(IOleWindow))
    return static_cast<IOleWindow*>(static_cast<IOleInPlaceObject*>(this));
  if (id == __uuidof(IViewObject)) return static_cast<IViewObject*>(this);
  if (id == __uuidof(IViewObject2)) return static_cast<IViewObject2*>(this);
  return lastPicture_.Find(id);
}

void YearPlanControl::Start() {
  if (!timers_.empty() || place_.IsDesignMode()) return;
  YearPlanElements& elements = plan_.Elements();
  for (Timer* timer : elements.Timers()) timers_.push_back(MakePeer(*timer));
  elements.tmrStart.SetEnabled(true);
}

void YearPlanControl::PropertyChanged(std::string_view key) {
  dirty_ = true;
  storage_.Changed();
  lastPicture_.Forget();
  std::wstring name = ToWide(key);
  LPOLESTR names = name.data();
  DISPID member = DISPID_UNKNOWN;
  typeInfo_->GetIDsOfNames(&names, 1, &member);
  listeners_.PropertyChanged(member);
  listeners_.PictureChanged();
}

void YearPlanControl::StatusChange(std::string_view Msg) {
  listeners_.StatusChange(Msg);
}

STDMETHODIMP YearPlanControl::CatDelete(BSTR name) {
  return AnswerCall([&] { plan_.CatDelete(ToUtf8(name)); });
}

STDMETHODIMP YearPlanControl::CatColour(BSTR name) {
  return AnswerCall([&] { plan_.CatColour(ToUtf8(name)); });
}

STDMETHODIMP YearPlanControl::GetStringList(VARIANT* names) {
  if (names == nullptr) return E_POINTER;
  ::VariantInit(names);
  return AnswerCall([&] { Variant(plan_.GetStringList()).MoveTo(names); });
}

STDMETHODIMP YearPlanControl::AboutBox() {
  return AnswerCall([&] { plan_.Elements().mnuAbout.Click(); });
}

}  // namespace velkor
