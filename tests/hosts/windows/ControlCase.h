// tests/hosts/windows/ControlCase.h: the control's library, and containers that hold the control.
#pragma once

#include <gmock/gmock.h>

#include <map>
#include <string>

#include "platform/windows/com/Automation.h"
#include "platform/windows/system/Modules.h"
#include "tests/platform/windows/Apartment.h"
#include "tests/platform/windows/PumpMessages.h"

namespace velkor {

/// A function of a library, by its name.
template <typename Function>
Function* FunctionOf(HMODULE library, const char* name) {
  return reinterpret_cast<Function*>(reinterpret_cast<void*>(::GetProcAddress(library, name)));
}

/// The library beside the test program, loaded for as long as it lives.
class ControlLibrary {
 public:
  ControlLibrary() : library_(::LoadLibraryW(ToWide(Path()).c_str())) {}
  ~ControlLibrary() { ::FreeLibrary(library_); }
  ControlLibrary(const ControlLibrary&) = delete;
  ControlLibrary& operator=(const ControlLibrary&) = delete;

  static std::string Path() {
    const std::string program = ModulePath(nullptr);
    return program.substr(0, program.find_last_of('\\') + 1) + "OutlookVelkor.ocx";
  }
  HRESULT Call(const char* function) const {
    return FunctionOf<HRESULT STDMETHODCALLTYPE()>(library_, function)();
  }
  HRESULT Install(bool install, const wchar_t* argument) const {
    return FunctionOf<HRESULT STDMETHODCALLTYPE(BOOL, LPCWSTR)>(library_, "DllInstall")(install,
                                                                                        argument);
  }
  bool CanUnload() const { return Call("DllCanUnloadNow") == S_OK; }

 private:
  HMODULE library_;
};

/// The control registered, and let go of by the end.
class ControlCase : public testing::Test {
 protected:
  ControlCase() { EXPECT_EQ(library_.Call("DllRegisterServer"), S_OK); }
  ~ControlCase() override {
    EXPECT_TRUE(PumpUntil([this] { return library_.CanUnload(); })) << "something holds it";
    EXPECT_EQ(library_.Call("DllUnregisterServer"), S_OK);
  }

  static CLSID Id() {
    CLSID id{};
    EXPECT_EQ(::CLSIDFromProgID(L"OutlookVelkor.YearPlan", &id), S_OK);
    return id;
  }
  template <typename Interface>
  static ComPtr<Interface> Create() {
    ComPtr<Interface> made;
    EXPECT_EQ(::CoCreateInstance(Id(), nullptr, CLSCTX_INPROC_SERVER, IID_PPV_ARGS(&made)), S_OK);
    return made;
  }
  /// One interface of an object as another one.
  template <typename Interface, typename Object>
  static ComPtr<Interface> As(const ComPtr<Object>& object) {
    ComPtr<Interface> answered;
    EXPECT_EQ(object.As(&answered), S_OK);
    return answered;
  }
  /// The control's members by their names.
  AutomationObject Planner(ComPtr<IDispatch> control) {
    return {program_, class_, std::move(control)};
  }

  const Apartment apartment_;
  ControlLibrary library_;
  DialogOwner owner_;
  AutomationProgram program_{"YearPlan", owner_};
  AutomationClass class_{"YearPlan"};
};

/// A property bag of a container, in memory.
class TextBag : public ComObject<IPropertyBag> {
 public:
  std::map<std::wstring, Variant> values;

  STDMETHODIMP Read(LPCOLESTR name, VARIANT* value, IErrorLog* /*log*/) override {
    const auto found = values.find(name);
    return found == values.end() ? E_INVALIDARG
                                 : ::VariantCopy(value, const_cast<VARIANT*>(&found->second.Get()));
  }
  STDMETHODIMP Write(LPCOLESTR name, VARIANT* value) override {
    return ::VariantCopy(values[name].Out(), value);
  }
};

/// The system's own container, in a window of its own.
class AtlContainer {
 public:
  explicit AtlContainer(const wchar_t* control = L"OutlookVelkor.YearPlan") {
    window_ = ::CreateWindowExW(0, L"STATIC", L"Container", WS_OVERLAPPEDWINDOW | WS_VISIBLE, 0, 0,
                                960, 540, nullptr, nullptr, nullptr, nullptr);
    FunctionOf<BOOL WINAPI()>(atl_, "AtlAxWinInit")();
    result_ = FunctionOf<HRESULT WINAPI(LPCOLESTR, HWND, IStream*, IUnknown**)>(
        atl_, "AtlAxCreateControl")(control, window_, nullptr, nullptr);
  }
  ~AtlContainer() { Close(); }
  AtlContainer(const AtlContainer&) = delete;
  AtlContainer& operator=(const AtlContainer&) = delete;

  HRESULT Result() const { return result_; }
  HWND Window() const { return window_; }
  /// The control's own window.
  HWND Child() const { return ::GetWindow(window_, GW_CHILD); }
  template <typename Interface = IDispatch>
  ComPtr<Interface> Control() const {
    ComPtr<IUnknown> unknown;
    FunctionOf<HRESULT WINAPI(HWND, IUnknown**)>(atl_, "AtlAxGetControl")(window_, &unknown);
    ComPtr<Interface> control;
    if (unknown) unknown.As(&control);
    return control;
  }
  void Close() {
    if (window_ != nullptr) ::DestroyWindow(window_);
    window_ = nullptr;
  }

 private:
  /// Stays loaded: it does not take back its window classes.
  HMODULE atl_ = ::LoadLibraryW(L"atl.dll");
  HWND window_ = nullptr;
  HRESULT result_ = E_FAIL;
};

}  // namespace velkor
