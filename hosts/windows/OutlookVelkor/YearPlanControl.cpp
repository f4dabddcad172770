// hosts/windows/OutlookVelkor/YearPlanControl.cpp: what the control is to itself: its life, its
// properties and methods, and what it tells its container.
#include "hosts/windows/OutlookVelkor/YearPlanControl.h"

#include "platform/windows/com/ComError.h"

#include <utility>

#include "platform/windows/com/Variant.h"
#include "platform/windows/elements/MakePeer.h"
#include "values/Error.h"
namespace velkor {
namespace {

constexpr UINT MessagesFlowAgain = WM_APP;
/// Of the dispatch interface of the events.
constexpr DISPID StatusChangeEvent = 1;
/// 900 x 480 pixels at 96 to the inch, in hundredths of a millimetre.
constexpr SIZEL FirstExtent{23813, 12700};

}  // namespace

YearPlanControl::YearPlanControl(ComPtr<ITypeInfo> typeInfo)
    : typeInfo_(std::move(typeInfo)),
      events_(new ConnectionPoint(*this, DIID__YearPlanEvents)),
      propertyEvents_(new ConnectionPoint(*this, __uuidof(IPropertyNotifySink))),
      extent_(FirstExtent),
      keeper_([this](UINT message, WPARAM) {
        if (message == MessagesFlowAgain) SettleAfterBusy();
      }),
      seams_(owner_, [this](const Error& error) { TellError(error); }),
      plan_(seams_.All(), *this) {
  owner_.onBusy = [this](bool busy) { KeepWhileBusy(busy); };
  owner_.onModal = [this](bool open) { FrameIsModal(open); };
  owner_.onEntry = [this](bool begins) { Enter(begins); };
}

YearPlanControl::~YearPlanControl() {
  owner_.onBusy = nullptr;
  owner_.onModal = nullptr;
  owner_.onEntry = nullptr;
  events_->Detach();
  propertyEvents_->Detach();
}

void* YearPlanControl::FindOther(REFIID id) {
  if (id == __uuidof(IDispatch)) return static_cast<IDispatch*>(this);
  if (id == __uuidof(IProvideClassInfo)) return static_cast<IProvideClassInfo*>(this);
  if (id == __uuidof(IPersist))
    return static_cast<IPersist*>(static_cast<IPersistStreamInit*>(this));
  if (id == __uuidof(IOleWindow))
    return static_cast<IOleWindow*>(static_cast<IOleInPlaceObject*>(this));
  if (id == __uuidof(IViewObject)) return static_cast<IViewObject*>(this);
  return nullptr;
}

/// What became busy within a call from outside is over with that call, also where no messages will
/// flow any more. What was busy before may have callers still at work, as a timer's tick.
void YearPlanControl::Enter(bool begins) {
  if (begins) {
    AddRef();
    if (entries_++ == 0) keptBefore_ = kept_;
    return;
  }
  if (--entries_ == 0 && kept_ && !owner_.IsBusy()) {
    if (keptBefore_) {
      ::PostMessageW(keeper_.Get(), MessagesFlowAgain, 0, 0);
    } else {
      SettleAfterBusy();
    }
  }
  Release();
}

HRESULT YearPlanControl::AnswerCall(const std::function<void()>& work) {
  const EntryScope entry(owner_);
  return Answer(work);
}

/// Callers of a busy part may still be at work when it ends: only the next message from the
/// outermost loop finds none of them.
void YearPlanControl::KeepWhileBusy(bool busy) {
  if (!busy) {
    if (entries_ == 0) ::PostMessageW(keeper_.Get(), MessagesFlowAgain, 0, 0);
  } else if (!kept_) {
    kept_ = true;
    AddRef();
  }
}

void YearPlanControl::SettleAfterBusy() {
  if (owner_.IsBusy() || entries_ > 0 || !kept_) return;
  kept_ = false;
  retired_.clear();
  Release();
}

bool YearPlanControl::IsDesignMode() const {
  ComPtr<IDispatch> ambient;
  if (!site_ || FAILED(site_.As(&ambient))) return false;
  Variant value;
  DISPPARAMS none{};
  const HRESULT result =
      ambient->Invoke(DISPID_AMBIENT_USERMODE, IID_NULL, LOCALE_USER_DEFAULT, DISPATCH_PROPERTYGET,
                      &none, value.Out(), nullptr, nullptr);
  // A container that says nothing runs the control.
  return SUCCEEDED(result) && value.Get().vt == VT_BOOL && value.Get().boolVal == VARIANT_FALSE;
}

void YearPlanControl::Start() {
  if (started_ || IsDesignMode()) return;
  started_ = true;
  YearPlanElements& elements = plan_.Elements();
  timers_.push_back(MakePeer(elements.tmrStart));
  timers_.push_back(MakePeer(elements.tmrBackground));
  timers_.push_back(MakePeer(elements.tmrItems));
  elements.tmrStart.SetEnabled(true);
}

void YearPlanControl::PropertyChanged(std::string_view key) {
  dirty_ = true;
  std::wstring name = ToWide(key);
  LPOLESTR names = name.data();
  DISPID member = DISPID_UNKNOWN;
  typeInfo_->GetIDsOfNames(&names, 1, &member);
  const BusyScope busy(owner_);
  for (const ComPtr<IUnknown>& listener : propertyEvents_->Listeners()) {
    ComPtr<IPropertyNotifySink> sink;
    if (SUCCEEDED(listener.As(&sink))) sink->OnChanged(member);
  }
  TellView();
}

void YearPlanControl::StatusChange(std::string_view Msg) {
  if (frozen_ > 0) return;
  const BusyScope busy(owner_);
  const Variant text(Msg);
  events_->Fire(StatusChangeEvent, {text.Get()});
}

/// The stock event for what goes wrong while the container does not wait for an answer.
void YearPlanControl::TellError(const Error& error) {
  if (frozen_ > 0) return;
  const BusyScope busy(owner_);
  BSTR description = Bstr(error.Description()).Release();
  VARIANT_BOOL cancelDisplay = VARIANT_TRUE;
  VARIANT descriptionByReference{};
  descriptionByReference.vt = VT_BYREF | VT_BSTR;
  descriptionByReference.pbstrVal = &description;
  VARIANT scode{};
  scode.vt = VT_ERROR;
  scode.scode = ToResult(error);
  VARIANT cancel{};
  cancel.vt = VT_BYREF | VT_BOOL;
  cancel.pboolVal = &cancelDisplay;
  const Variant number(static_cast<std::int16_t>(error.Number() & 0xFFFF));
  const Variant source(error.Source().empty() ? "OutlookVelkor.YearPlan" : error.Source());
  const Variant helpFile("");
  const Variant helpContext(std::int32_t{0});
  events_->Fire(DISPID_ERROREVENT, {number.Get(), descriptionByReference, scode, source.Get(),
                                    helpFile.Get(), helpContext.Get(), cancel});
  ::SysFreeString(description);
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
