// hosts/windows/OutlookVelkor/ControlListeners.h: tells others what happens to one control.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "hosts/windows/OutlookVelkor/ControlLife.h"
#include "platform/windows/com/ConnectionPoint.h"
#include "values/Error.h"

namespace velkor {

/// Those who hear of a control's events, of its properties, of its picture and of its end. They may
/// come and go while one of them is told.
class ControlListeners {
 public:
  /// Both outlive this; `control` is also the object that data listeners are told of.
  ControlListeners(ControlLife& life, IConnectionPointContainer& control, IDataObject& data);
  ~ControlListeners();
  ControlListeners(const ControlListeners&) = delete;
  ControlListeners& operator=(const ControlListeners&) = delete;

  void PropertyChanged(DISPID member);
  void PictureChanged();
  void StatusChange(std::string_view Msg);
  /// The stock event for what goes wrong while the container does not wait for an answer.
  void ErrorOccurred(const Error& error);
  void Closed();
  /// Until it is taken back as often, no events are told. Then the last status and all errors are.
  void Freeze(bool freeze);

  // As the interfaces of the control say.
  HRESULT EnumConnectionPoints(IEnumConnectionPoints** points) const;
  HRESULT FindConnectionPoint(REFIID events, IConnectionPoint** point) const;
  HRESULT Advise(IAdviseSink* sink, DWORD* cookie);
  HRESULT Unadvise(DWORD cookie);
  HRESULT EnumAdvise(IEnumSTATDATA** sinks) const;
  HRESULT DAdvise(FORMATETC* format, DWORD flags, IAdviseSink* sink, DWORD* cookie);
  HRESULT DUnadvise(DWORD cookie);
  HRESULT EnumDAdvise(IEnumSTATDATA** sinks) const;
  HRESULT SetAdvise(DWORD aspects, DWORD flags, IAdviseSink* sink);
  HRESULT GetAdvise(DWORD* aspects, DWORD* flags, IAdviseSink** sink) const;

 private:
  void Fire(DISPID event, std::initializer_list<VARIANT> arguments);

  ControlLife& life_;
  IDataObject& data_;
  ComPtr<ConnectionPoint> events_;
  ComPtr<ConnectionPoint> propertyEvents_;
  ComPtr<IOleAdviseHolder> adviseHolder_;
  ComPtr<IDataAdviseHolder> dataAdviseHolder_;
  ComPtr<IAdviseSink> viewSink_;
  DWORD viewSinkFlags_ = 0;
  DWORD viewSinkAspects_ = 0;
  int frozen_ = 0;
  /// What was held back.
  std::optional<std::string> heldStatus_;
  std::vector<Error> heldErrors_;
};

}  // namespace velkor
