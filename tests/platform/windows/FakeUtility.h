// tests/platform/windows/FakeUtility.h: a cache utility in this process that does what a test says.
#pragma once

#include <algorithm>
#include <functional>
#include <map>
#include <string>
#include <vector>

#include "VelkorCacheUtility.h"
#include "platform/windows/com/ConnectionPoint.h"
#include "platform/windows/com/Variant.h"

namespace velkor {

/// Answers every member but those that it is told to lack; writes down what is called.
class FakeUtility : public ComObject<IDispatch, IConnectionPointContainer> {
 public:
  FakeUtility() : events_(new ConnectionPoint(*this, DIID__IVelkorCacheUtilityEvents)) {}

  std::map<std::string, std::int32_t> values;
  std::string lacks;
  std::function<void(const std::string&)> onCall = [](const std::string&) {};
  std::vector<std::string> log;

  void Complete(std::int16_t result, std::int32_t error) {
    events_->Fire(1, {Variant(result).Get(), Variant(error).Get()});
  }

  STDMETHODIMP GetTypeInfoCount(UINT*) override { return E_NOTIMPL; }
  STDMETHODIMP GetTypeInfo(UINT, LCID, ITypeInfo**) override { return E_NOTIMPL; }
  STDMETHODIMP GetIDsOfNames(REFIID, LPOLESTR* names, UINT, LCID, DISPID* members) override {
    const std::string name = ToUtf8(std::wstring_view(names[0]));
    if (name == lacks) return DISP_E_UNKNOWNNAME;
    names_.push_back(name);
    *members = static_cast<DISPID>(names_.size());
    return S_OK;
  }
  STDMETHODIMP Invoke(DISPID member, REFIID, LCID, WORD flags, DISPPARAMS* parameters,
                      VARIANT* result, EXCEPINFO*, UINT*) override {
    std::string call = names_.at(static_cast<std::size_t>(member) - 1);
    if ((flags & DISPATCH_PROPERTYGET) != 0) {
      Variant(values[call]).MoveTo(result);
      return S_OK;
    }
    if (parameters->cArgs == 1) {
      Variant value;
      ::VariantCopy(value.Out(), &parameters->rgvarg[0]);
      call += "=" + value.ToText();
    }
    log.push_back(call);
    onCall(call);
    return S_OK;
  }
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID events, IConnectionPoint** point) override {
    return velkor::FindConnectionPoint({events_.Get()}, events, point);
  }

 protected:
  ~FakeUtility() override { events_->Detach(); }

 private:
  ComPtr<ConnectionPoint> events_;
  std::vector<std::string> names_;
};

/// Gives one object to whoever asks for the cache utility in this process.
class FakeOffer {
 public:
  explicit FakeOffer(FakeUtility& utility) {
    ::CoRegisterClassObject(CLSID_VelkorCacheUtility, ComPtr<Factory>(new Factory(utility)).Get(),
                            CLSCTX_INPROC_SERVER, REGCLS_MULTIPLEUSE, &cookie_);
  }
  ~FakeOffer() { ::CoRevokeClassObject(cookie_); }
  FakeOffer(const FakeOffer&) = delete;
  FakeOffer& operator=(const FakeOffer&) = delete;

 private:
  class Factory : public ComObject<IClassFactory> {
   public:
    explicit Factory(FakeUtility& utility) : utility_(&utility) {}
    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
      return utility_->QueryInterface(id, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

   private:
    ComPtr<FakeUtility> utility_;
  };

  DWORD cookie_ = 0;
};

}  // namespace velkor
