// hosts/windows/OutlookVelkor/ControlListeners.cpp: events, notices and those who asked for them.
#include "hosts/windows/OutlookVelkor/ControlListeners.h"

#include <string>
#include <utility>

#include "platform/windows/com/Variant.h"
#include "values/Error.h"
// After windows.h.
#include "OutlookVelkor.h"

namespace velkor {
namespace {

/// Of the dispatch interface of the events.
constexpr DISPID StatusChangeEvent = 1;

VARIANT TextByReference(BSTR& text) {
  VARIANT value{};
  value.vt = VT_BYREF | VT_BSTR;
  value.pbstrVal = &text;
  return value;
}

VARIANT TruthByReference(VARIANT_BOOL& truth) {
  VARIANT value{};
  value.vt = VT_BYREF | VT_BOOL;
  value.pboolVal = &truth;
  return value;
}

VARIANT ResultValue(HRESULT result) {
  VARIANT value{};
  value.vt = VT_ERROR;
  value.scode = result;
  return value;
}

/// Answers with an enumeration of a holder that may not have been needed yet.
template <typename Holder>
HRESULT EnumerateSinks(const ComPtr<Holder>& holder, IEnumSTATDATA** sinks) {
  if (sinks == nullptr) return E_POINTER;
  *sinks = nullptr;
  return holder ? holder->EnumAdvise(sinks) : S_OK;
}

}  // namespace

ControlListeners::ControlListeners(ControlLife& life, IConnectionPointContainer& control,
                                   IDataObject& data)
    : life_(life),
      data_(data),
      events_(new ConnectionPoint(control, DIID__YearPlanEvents)),
      propertyEvents_(new ConnectionPoint(control, __uuidof(IPropertyNotifySink))) {}

ControlListeners::~ControlListeners() {
  events_->Detach();
  propertyEvents_->Detach();
}

void ControlListeners::PropertyChanged(DISPID member) {
  for (const ComPtr<IUnknown>& listener : propertyEvents_->Listeners()) {
    ComPtr<IPropertyNotifySink> sink;
    listener.As(&sink);
    life_.Tell(sink, [&](IPropertyNotifySink& told) { return told.OnChanged(member); });
  }
}

void ControlListeners::PictureChanged() {
  life_.Tell(dataAdviseHolder_,
             [this](IDataAdviseHolder& holder) { return holder.SendOnDataChange(&data_, 0, 0); });
  const ComPtr<IAdviseSink> sink = viewSink_;
  if ((viewSinkFlags_ & ADVF_ONLYONCE) != 0) viewSink_.Reset();
  life_.Tell(sink, [](IAdviseSink& told) {
    told.OnViewChange(DVASPECT_CONTENT, -1);
    return S_OK;
  });
}

void ControlListeners::Fire(DISPID event, std::initializer_list<VARIANT> arguments) {
  life_.Tell(events_, [&](ConnectionPoint& events) {
    events.Fire(event, arguments);
    return S_OK;
  });
}

void ControlListeners::StatusChange(std::string_view Msg) {
  if (frozen_ > 0) {
    heldStatus_ = Msg;
    return;
  }
  const Variant text(Msg);
  Fire(StatusChangeEvent, {text.Get()});
}

void ControlListeners::ErrorOccurred(const Error& error) {
  if (frozen_ > 0) {
    heldErrors_.push_back(error);
    return;
  }
  BSTR description = Bstr(error.Description()).Release();
  VARIANT_BOOL cancelDisplay = VARIANT_TRUE;
  const Variant number(static_cast<std::int16_t>(error.Number() & 0xFFFF));
  const Variant source(error.Source().empty() ? "OutlookVelkor.YearPlan" : error.Source());
  const Variant helpFile("");
  const Variant helpContext(std::int32_t{0});
  Fire(DISPID_ERROREVENT,
       {number.Get(), TextByReference(description), ResultValue(ToResult(error)), source.Get(),
        helpFile.Get(), helpContext.Get(), TruthByReference(cancelDisplay)});
  ::SysFreeString(description);
}

void ControlListeners::Closed() {
  life_.Tell(adviseHolder_, [](IOleAdviseHolder& holder) { return holder.SendOnClose(); });
}

void ControlListeners::Freeze(bool freeze) {
  if (freeze) ++frozen_;
  if (freeze || frozen_ == 0 || --frozen_ > 0) return;
  // Whoever is told may freeze events again, and hears the rest after that.
  for (const Error& error : std::exchange(heldErrors_, {})) ErrorOccurred(error);
  if (const auto status = std::exchange(heldStatus_, std::nullopt)) StatusChange(*status);
}

HRESULT ControlListeners::EnumConnectionPoints(IEnumConnectionPoints** points) const {
  return EnumerateConnectionPoints({events_.Get(), propertyEvents_.Get()}, points);
}

HRESULT ControlListeners::FindConnectionPoint(REFIID events, IConnectionPoint** point) const {
  return velkor::FindConnectionPoint({events_.Get(), propertyEvents_.Get()}, events, point);
}

HRESULT ControlListeners::Advise(IAdviseSink* sink, DWORD* cookie) {
  const HRESULT result = adviseHolder_ ? S_OK : ::CreateOleAdviseHolder(&adviseHolder_);
  return FAILED(result) ? result : adviseHolder_->Advise(sink, cookie);
}

HRESULT ControlListeners::Unadvise(DWORD cookie) {
  return adviseHolder_ ? adviseHolder_->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

HRESULT ControlListeners::EnumAdvise(IEnumSTATDATA** sinks) const {
  return EnumerateSinks(adviseHolder_, sinks);
}

HRESULT ControlListeners::DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink,
                                  DWORD* cookie) {
  const HRESULT result = dataAdviseHolder_ ? S_OK : ::CreateDataAdviseHolder(&dataAdviseHolder_);
  return FAILED(result) ? result : dataAdviseHolder_->Advise(&data_, format, flags, sink, cookie);
}

HRESULT ControlListeners::DUnadvise(DWORD cookie) {
  return dataAdviseHolder_ ? dataAdviseHolder_->Unadvise(cookie) : OLE_E_NOCONNECTION;
}

HRESULT ControlListeners::EnumDAdvise(IEnumSTATDATA** sinks) const {
  return EnumerateSinks(dataAdviseHolder_, sinks);
}

HRESULT ControlListeners::SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink) {
  if ((aspects & ~DWORD{DVASPECT_CONTENT}) != 0) return DV_E_DVASPECT;
  viewSink_ = sink;
  viewSinkAspects_ = aspects;
  viewSinkFlags_ = flags;
  if ((flags & ADVF_PRIMEFIRST) != 0) PictureChanged();
  return S_OK;
}

HRESULT ControlListeners::GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const {
  if (aspects != nullptr) *aspects = viewSinkAspects_;
  if (flags != nullptr) *flags = viewSinkFlags_;
  return sink == nullptr ? S_OK : viewSink_.CopyTo(sink);
}

}  // namespace velkor
