// tests/platform/windows/StandIn.h: the tests' own calendar program, registered and running.
#pragma once

#include <string>

#include "platform/windows/com/Automation.h"
#include "tests/platform/windows/Apartment.h"
#include "tests/platform/windows/Programs.h"
#include "values/Error.h"

namespace velkor {

/// A stand-in of its own, registered, new and empty. At the end its process has gone and nothing is
/// registered any more.
class StandIn {
 public:
  StandIn() { Begin(); }
  ~StandIn() {
    try {
      application_.Call("Quit");
    } catch (const Error&) {
      // It has gone already, or a test made it fail.
    }
    LetGo();
    if (::WaitForSingleObject(process_.get(), 5000) != WAIT_OBJECT_0) {
      ::TerminateProcess(process_.get(), 1);
    }
    RunProgram("StandInCalendar.exe", "/unregister");
  }
  StandIn(const StandIn&) = delete;
  StandIn& operator=(const StandIn&) = delete;

  const AutomationObject& Application() const { return application_; }
  /// Counts, faults and content (Application.Testing).
  const AutomationObject& Testing() const { return testing_; }
  HANDLE Process() const { return process_.get(); }

  /// Starts it, again when it has ended.
  void Begin() {
    LetGo();
    if (RunProgram("StandInCalendar.exe", "/register zqcdo") != 0) {
      throw Error(0, "StandInCalendar.exe: /register");
    }
    application_ = {program_, applications_, Start()};
    testing_ = {program_, tests_, application_.Get("Testing").ToObject()};
    process_.reset(::OpenProcess(SYNCHRONIZE | PROCESS_TERMINATE | PROCESS_QUERY_INFORMATION, FALSE,
                                 static_cast<DWORD>(testing_.GetInt("ProcessId"))));
  }

 private:
  void LetGo() {
    testing_ = {program_, tests_, nullptr};
    application_ = {program_, applications_, nullptr};
    tests_.Forget();
    applications_.Forget();
  }
  /// Tried again for some seconds: under Wine a program that is just ending may still stand for its
  /// class.
  ComPtr<IDispatch> Start() {
    const ULONGLONG end = ::GetTickCount64() + 5000;
    for (;;) {
      try {
        return program_.Create("Outlook.Application");
      } catch (const Error&) {
        if (::GetTickCount64() > end) throw;
        ::Sleep(100);
      }
    }
  }

  const Apartment apartment_;
  DialogOwner owner_;
  AutomationProgram program_{"Outlook", owner_};
  AutomationClass applications_{"Application"};
  AutomationClass tests_{"Testing"};
  AutomationObject application_{program_, applications_, nullptr};
  AutomationObject testing_{program_, tests_, nullptr};
  KernelHandle process_;
};

}  // namespace velkor
