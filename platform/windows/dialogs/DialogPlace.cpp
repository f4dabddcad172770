// platform/windows/dialogs/DialogPlace.cpp: asks for the screen, the frame and the owner's place.
#include "platform/windows/dialogs/DialogPlace.h"

#include <algorithm>

#include "platform/windows/system/WindowDensity.h"

namespace velkor {

RECT WorkAreaAround(HWND window) {
  MONITORINFO monitor{};
  monitor.cbSize = sizeof monitor;
  ::GetMonitorInfoW(::MonitorFromWindow(window, MONITOR_DEFAULTTONEAREST), &monitor);
  return monitor.rcWork;
}

SIZE SizeOf(const RECT& rect) {
  return {rect.right - rect.left, rect.bottom - rect.top};
}

SIZE WithFrame(HWND window, SIZE area) {
  return SizeOf(
      AroundArea({0, 0, area.cx, area.cy}, static_cast<DWORD>(::GetWindowLongW(window, GWL_STYLE)),
                 static_cast<DWORD>(::GetWindowLongW(window, GWL_EXSTYLE)), DotsPerInch(window)));
}

void PutInMiddle(HWND dialog, HWND owner, SIZE size) {
  const RECT screen = WorkAreaAround(owner != nullptr ? owner : dialog);
  RECT around = screen;
  if (owner != nullptr && !::IsIconic(owner)) ::GetWindowRect(owner, &around);
  const LONG left = (around.left + around.right - size.cx) / 2;
  const LONG top = (around.top + around.bottom - size.cy) / 2;
  ::SetWindowPos(dialog, nullptr, std::max(screen.left, std::min(left, screen.right - size.cx)),
                 std::max(screen.top, std::min(top, screen.bottom - size.cy)), size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
}

}  // namespace velkor
