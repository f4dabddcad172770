// hosts/windows/vkrRefresh/Server.cpp: class object, apartment and message loop.
#include "hosts/windows/vkrRefresh/Server.h"

#include "hosts/windows/vkrRefresh/CacheUtilityObject.h"
#include "platform/windows/com/ComError.h"
#include "platform/windows/system/MessagePump.h"

namespace velkor {
namespace {

class ClassObject : public ComObject<IClassFactory> {
 public:
  explicit ClassObject(OpenOutlook openOutlook) : openOutlook_(std::move(openOutlook)) {}

  bool IsUsed() const { return used_; }

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    HRESULT found = E_FAIL;
    const HRESULT made = Answer([&] {
      const ComPtr<CacheUtilityObject> utility(new CacheUtilityObject(openOutlook_));
      used_ = true;
      found = utility->QueryInterface(id, object);
    });
    return FAILED(made) ? made : found;
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    if (lock) {
      ::CoAddRefServerProcess();
    } else if (::CoReleaseServerProcess() == 0) {
      ::PostQuitMessage(0);
    }
    return S_OK;
  }

 private:
  OpenOutlook openOutlook_;
  bool used_ = false;
};

class Apartment {
 public:
  Apartment() { Check(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "COM cannot be used"); }
  ~Apartment() { ::CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// Makes the class known to the system for as long as it lives.
class Offer {
 public:
  explicit Offer(IClassFactory* factory) {
    Check(::CoRegisterClassObject(CLSID_VelkorCacheUtility, factory, CLSCTX_LOCAL_SERVER,
                                  REGCLS_SINGLEUSE, &cookie_),
          "The class cannot be offered");
  }
  ~Offer() { ::CoRevokeClassObject(cookie_); }
  Offer(const Offer&) = delete;
  Offer& operator=(const Offer&) = delete;

 private:
  DWORD cookie_ = 0;
};

}  // namespace

void Serve(const OpenOutlook& openOutlook) {
  constexpr UINT TimeToAsk = 60'000;
  const Apartment apartment;
  const ComPtr<ClassObject> factory(new ClassObject(openOutlook));
  // The client may have ended while this started.
  const MessageWindow window([&](UINT message, WPARAM timer) {
    if (message != WM_TIMER) return;
    ::KillTimer(window.Get(), timer);
    if (!factory->IsUsed()) ::PostQuitMessage(0);
  });
  ::SetTimer(window.Get(), 1, TimeToAsk, nullptr);
  const Offer offer(factory.Get());
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) Dispatch(message);
}

}  // namespace velkor
