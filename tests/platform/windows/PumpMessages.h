// tests/platform/windows/PumpMessages.h: lets this thread's messages be processed for a while.
#pragma once

#include <functional>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// False when it takes longer than 20 seconds.
inline bool PumpUntil(const std::function<bool()>& isSo, DWORD milliseconds = 20'000) {
  const ULONGLONG end = ::GetTickCount64() + milliseconds;
  while (!isSo()) {
    if (::GetTickCount64() > end) return false;
    ::MsgWaitForMultipleObjectsEx(0, nullptr, 5, QS_ALLINPUT, MWMO_INPUTAVAILABLE);
    MSG message;
    while (!isSo() && ::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) {
      ::TranslateMessage(&message);
      ::DispatchMessageW(&message);
    }
  }
  return true;
}

inline void PumpFor(DWORD milliseconds) {
  PumpUntil([] { return false; }, milliseconds);
}

}  // namespace velkor
