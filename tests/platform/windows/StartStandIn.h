// tests/platform/windows/StartStandIn.h: the calendar program for tests, started.
#pragma once

#include "platform/windows/com/Automation.h"
#include "values/Error.h"

namespace velkor {

/// Its application object. Tried again for some seconds: under Wine a program that is just ending
/// may still stand for its class.
inline ComPtr<IDispatch> StartStandIn(AutomationProgram& program) {
  const ULONGLONG end = ::GetTickCount64() + 5000;
  for (;;) {
    try {
      return program.Create("Outlook.Application");
    } catch (const Error&) {
      if (::GetTickCount64() > end) throw;
      ::Sleep(100);
    }
  }
}

}  // namespace velkor
