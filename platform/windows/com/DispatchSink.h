// platform/windows/com/DispatchSink.h: what every listener to the events of another object shares.
#pragma once

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// Answers IDispatch and the interface of the events; whoever derives from it hears them in Invoke.
/// Events come by their identifiers, so that it knows no names.
class DispatchSink : public ComObject<IDispatch> {
 public:
  explicit DispatchSink(REFIID events) : events_(events) {}

  STDMETHODIMP GetTypeInfoCount(UINT* count) override {
    if (count == nullptr) return E_POINTER;
    *count = 0;
    return S_OK;
  }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR*, UINT, LCID, DISPID*) override {
    return DISP_E_UNKNOWNNAME;
  }

 protected:
  void* FindOther(REFIID id) override {
    return id == events_ ? static_cast<IDispatch*>(this) : nullptr;
  }

 private:
  IID events_;
};

}  // namespace velkor
