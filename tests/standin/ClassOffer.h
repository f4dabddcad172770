// tests/standin/ClassOffer.h: a class that this process gives to whoever asks for it; part of the
// calendar program for tests, never shipped.
#pragma once

#include <functional>
#include <utility>

#include "platform/windows/com/ComObject.h"

namespace velkor {

/// For as long as it lives.
class ClassOffer {
 public:
  using Make = std::function<ComPtr<IDispatch>()>;

  ClassOffer(const CLSID& id, DWORD context, Make make) {
    const ComPtr<Factory> factory(new Factory(std::move(make)));
    ::CoRegisterClassObject(id, factory.Get(), context, REGCLS_MULTIPLEUSE, &cookie_);
  }
  ~ClassOffer() { ::CoRevokeClassObject(cookie_); }
  ClassOffer(const ClassOffer&) = delete;
  ClassOffer& operator=(const ClassOffer&) = delete;

 private:
  class Factory : public ComObject<IClassFactory> {
   public:
    explicit Factory(Make make) : make_(std::move(make)) {}
    STDMETHODIMP CreateInstance(IUnknown*, REFIID id, void** object) override {
      return make_()->QueryInterface(id, object);
    }
    STDMETHODIMP LockServer(BOOL) override { return S_OK; }

   private:
    Make make_;
  };

  DWORD cookie_ = 0;
};

}  // namespace velkor
