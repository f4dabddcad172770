// tests/standin/main.cpp: a calendar program that answers as Outlook does by automation, so
// that the Windows tests have one to call; never shipped.
#include <cstdio>
#include <functional>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/windows/com/ComError.h"
#include "tests/standin/ApplicationObject.h"
#include "tests/standin/ServedClasses.h"
#include "tests/standin/ZqObjects.h"

namespace velkor {
namespace {

class ClassFactory : public ComObject<IClassFactory> {
 public:
  using Make = std::function<ComPtr<IDispatch>()>;

  ClassFactory(ServerLoop& loop, Make make) : loop_(loop), make_(std::move(make)) {}

  STDMETHODIMP CreateInstance(IUnknown* outer, REFIID id, void** object) override {
    if (object == nullptr) return E_POINTER;
    *object = nullptr;
    if (outer != nullptr) return CLASS_E_NOAGGREGATION;
    return make_()->QueryInterface(id, object);
  }
  STDMETHODIMP LockServer(BOOL lock) override {
    if (lock) {
      loop_.Enter();
    } else {
      loop_.Leave();
    }
    return S_OK;
  }

 private:
  ServerLoop& loop_;
  Make make_;
};

class Apartment {
 public:
  Apartment() { Check(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "COM"); }
  ~Apartment() { ::CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

int Serve() {
  ServerLoop loop;
  StandInSession session(loop);
  // What clients still hold goes with the apartment, before the session.
  const Apartment apartment;
  const ComPtr<CallFilter> filter(new CallFilter(session.watch));
  ::CoRegisterMessageFilter(filter.Get(), nullptr);
  const ComPtr<ApplicationObject> application(new ApplicationObject(session));

  std::vector<DWORD> cookies;
  const auto revoke = [&cookies] {
    for (const DWORD cookie : cookies) ::CoRevokeClassObject(cookie);
  };
  session.watch.onExit = revoke;
  const auto serve = [&](const ServedClass& served, ClassFactory::Make make) {
    const ComPtr<ClassFactory> factory(new ClassFactory(loop, std::move(make)));
    Check(::CoRegisterClassObject(served.id, factory.Get(), CLSCTX_LOCAL_SERVER,
                                  REGCLS_MULTIPLEUSE | REGCLS_SUSPENDED, &cookies.emplace_back()),
          served.programId);
  };
  serve(ApplicationClass, [&] { return ComPtr<IDispatch>(application.Get()); });
  serve(CurrentUserClass, [&] { return MakeCurrentUser(session); });
  serve(AppointmentItemClass, [&] { return MakeAppointmentItem(session); });
  DWORD active = 0;
  ::RegisterActiveObject(static_cast<IDispatch*>(application.Get()), ApplicationClass.id,
                         ACTIVEOBJECT_WEAK, &active);
  ::CoResumeClassObjects();
  while (loop.Step()) {
  }
  if (active != 0) ::RevokeActiveObject(active, nullptr);
  revoke();
  ::CoRegisterMessageFilter(nullptr, nullptr);
  ::CoDisconnectObject(static_cast<IDispatch*>(application.Get()), 0);
  return 0;
}

int Run(const std::vector<std::string_view>& arguments) {
  const std::string_view command = arguments.empty() ? "-Embedding" : arguments[0];
  const bool withHelpers = arguments.size() > 1 && arguments[1] == "zqcdo";
  if (command == "-Embedding" || command == "/Embedding") return Serve();
  if (command == "/register") {
    Register(ApplicationClass);
    if (withHelpers) {
      Register(CurrentUserClass);
      Register(AppointmentItemClass);
    }
    return 0;
  }
  if (command == "/unregister") {
    for (const auto& served : {ApplicationClass, CurrentUserClass, AppointmentItemClass}) {
      Unregister(served);
    }
    return 0;
  }
  std::fputs("StandInCalendar [/register [zqcdo] | /unregister]\n", stderr);
  return 2;
}

}  // namespace
}  // namespace velkor

int main(int argc, char** argv) {
  try {
    return velkor::Run({argv + 1, argv + argc});
  } catch (const velkor::Error& error) {
    std::fprintf(stderr, "StandInCalendar: %s\n", error.Description().c_str());
    return 1;
  }
}
