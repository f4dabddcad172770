// tests/platform/windows/StandIn.h: the tests' own calendar program, registered and running.
#pragma once

#include <chrono>
#include <map>
#include <string>
#include <utility>

#include "platform/windows/com/Automation.h"
#include "platform/windows/com/Registration.h"
#include "tests/platform/windows/PumpMessages.h"
#include "tests/platform/windows/StartStandIn.h"
#include "values/Error.h"

namespace velkor {

/// Runs StandInCalendar.exe, which lies beside the test program, and waits for its exit code.
inline DWORD RunStandIn(const std::string& arguments) {
  const std::string own = ModulePath(nullptr);
  const std::string path = own.substr(0, own.find_last_of("\\/") + 1) + "StandInCalendar.exe";
  std::wstring line = ToWide("\"" + path + "\" " + arguments);
  STARTUPINFOW startup{};
  startup.cb = sizeof(startup);
  PROCESS_INFORMATION process{};
  if (!::CreateProcessW(nullptr, line.data(), nullptr, nullptr, FALSE, 0, nullptr, nullptr,
                        &startup, &process)) {
    return static_cast<DWORD>(-1);
  }
  ::WaitForSingleObject(process.hProcess, 30000);
  DWORD code = static_cast<DWORD>(-1);
  ::GetExitCodeProcess(process.hProcess, &code);
  ::CloseHandle(process.hThread);
  ::CloseHandle(process.hProcess);
  return code;
}

/// A stand-in of its own, registered, new and empty. At the end its process has gone and nothing is
/// registered any more.
class StandIn {
 public:
  /// @param patience  how long calls that it rejects are made again
  explicit StandIn(std::chrono::milliseconds patience = std::chrono::seconds(5))
      : program_("Outlook", owner_, patience),
        application_(As("Application", StartStandIn(program_))),
        testing_(As("Testing", application_.Get("Testing").ToObject())),
        process_(::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE, FALSE,
                               static_cast<DWORD>(testing_.Get("ProcessId").ToInt()))) {}
  ~StandIn() {
    try {
      application_.Call("Quit");
    } catch (const Error&) {
      // It has gone already, or a test made it fail.
    }
    if (::WaitForSingleObject(process_, 5000) != WAIT_OBJECT_0) ::TerminateProcess(process_, 1);
    ::CloseHandle(process_);
  }
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;

  AutomationObject& Application() { return application_; }
  /// Counts, faults and content (Application.Testing).
  AutomationObject& Testing() { return testing_; }
  HANDLE Process() const { return process_; }

  /// An object with the member identifiers of its class.
  AutomationObject As(const std::string& kind, ComPtr<IDispatch> object) {
    return {program_, kinds_.try_emplace(kind, kind).first->second, std::move(object)};
  }
  AutomationObject As(const std::string& kind, const Variant& object) {
    return As(kind, object.ToObject());
  }
  AutomationObject Create(const std::string& kind, const std::string& programId) {
    return As(kind, program_.Create(programId));
  }
  /// The application that is running; null for none.
  ComPtr<IDispatch> Join() { return program_.Join("Outlook.Application"); }
  AutomationObject Session() {
    return As("NameSpace", application_.Get("GetNamespace", {Variant("MAPI")}));
  }
  /// Of the default calendar.
  AutomationObject Items() {
    const auto folder = As("MAPIFolder", Session().Call("GetDefaultFolder", {Variant(9)}));
    return As("Items", folder.Get("Items"));
  }
  /// Saves a new appointment.
  AutomationObject Add(const std::string& subject, Date start, Date end) {
    const auto item = As("AppointmentItem", Items().Call("Add"));
    item.Put("Subject", Variant(subject));
    item.Put("Start", Variant(start));
    item.Put("End", Variant(end));
    item.Call("Save");
    return item;
  }

 private:
  struct Apartment {
    HRESULT result = ::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED);
    ~Apartment() {
      if (SUCCEEDED(result)) ::CoUninitialize();
    }
  };
  struct Entries {
    Entries() {
      if (RunStandIn("/register zqcdo") != 0) throw Error(0, "StandInCalendar.exe: /register");
    }
    ~Entries() { RunStandIn("/unregister"); }
  };

  // What is held goes before what holds it.
  Apartment apartment_;
  Entries entries_;
  DialogOwner owner_;
  AutomationProgram program_;
  std::map<std::string, AutomationClass> kinds_;
  AutomationObject application_;
  AutomationObject testing_;
  HANDLE process_;
};

}  // namespace velkor
