// hosts/windows/TryOut/WindowInput.cpp: finds the window under a point, and posts to it.
#include "hosts/windows/TryOut/WindowInput.h"

// After windows.h.
#include <commctrl.h>

#include "platform/windows/system/Wide.h"
#include "values/Error.h"

namespace velkor {
namespace {

struct Target {
  HWND window = nullptr;
  POINT point{};
};

bool IsHit(HWND child, POINT screen) {
  RECT area{};
  if (!::IsWindowVisible(child) || !::GetWindowRect(child, &area) || !::PtInRect(&area, screen)) {
    return false;
  }
  return ::SendMessageW(child, WM_NCHITTEST, 0, MAKELPARAM(screen.x, screen.y)) != HTTRANSPARENT;
}

/// Children come from the topmost down.
HWND Innermost(HWND window, POINT screen) {
  for (HWND child = ::GetWindow(window, GW_CHILD); child != nullptr;
       child = ::GetWindow(child, GW_HWNDNEXT)) {
    if (IsHit(child, screen)) return Innermost(child, screen);
  }
  return window;
}

Target TargetAt(HWND window, POINT point) {
  RECT area{};
  ::GetClientRect(window, &area);
  const std::string place = std::to_string(point.x) + ", " + std::to_string(point.y);
  if (!::PtInRect(&area, point)) {
    throw Error(errors::InvalidProcedureCall, "The point " + place + " is outside the control.");
  }
  POINT screen = point;
  ::ClientToScreen(window, &screen);
  Target target{Innermost(window, screen), screen};
  if (!::IsWindowEnabled(target.window) || !::IsWindowEnabled(::GetAncestor(window, GA_ROOT))) {
    throw Error(errors::InvalidProcedureCall, "The window at " + place + " is disabled.");
  }
  ::ScreenToClient(target.window, &target.point);
  return target;
}

HWND FindToolbar(HWND window) {
  return ::FindWindowExW(window, nullptr, TOOLBARCLASSNAMEW, nullptr);
}

}  // namespace

void PostMove(HWND window, POINT point) {
  const Target target = TargetAt(window, point);
  ::PostMessageW(target.window, WM_MOUSEMOVE, 0, MAKELPARAM(target.point.x, target.point.y));
}

void PostClick(HWND window, POINT point, MouseButton button) {
  const Target target = TargetAt(window, point);
  const LPARAM place = MAKELPARAM(target.point.x, target.point.y);
  const bool left = button == MouseButton::Left;
  ::PostMessageW(target.window, WM_MOUSEMOVE, 0, place);
  ::PostMessageW(target.window, left ? WM_LBUTTONDOWN : WM_RBUTTONDOWN,
                 left ? MK_LBUTTON : MK_RBUTTON, place);
  ::PostMessageW(target.window, left ? WM_LBUTTONUP : WM_RBUTTONUP, 0, place);
}

void PostKey(HWND window, WPARAM virtualKey) {
  const HWND focus = ::GetFocus();
  const HWND target = focus != nullptr ? focus : window;
  const LPARAM scan =
      static_cast<LPARAM>(::MapVirtualKeyW(static_cast<UINT>(virtualKey), MAPVK_VK_TO_VSC)) << 16;
  ::PostMessageW(target, WM_KEYDOWN, virtualKey, scan | 1);
  ::PostMessageW(target, WM_KEYUP, virtualKey, scan | 0xC0000001);
}

void PostText(const std::string& text) {
  const HWND focus = ::GetFocus();
  if (focus == nullptr) {
    throw Error(errors::InvalidProcedureCall, "No window of the form has the keyboard.");
  }
  for (const wchar_t letter : ToWide(text)) ::PostMessageW(focus, WM_CHAR, letter, 1);
}

void PostToolbarButton(HWND window, int place) {
  const HWND toolbar = FindToolbar(window);
  if (toolbar == nullptr) throw Error(errors::InvalidProcedureCall, "There is no toolbar.");
  if (::SendMessageW(toolbar, TB_ISBUTTONENABLED, static_cast<WPARAM>(place), 0) <= 0) {
    throw Error(errors::InvalidProcedureCall,
                "The toolbar has no enabled button " + std::to_string(place) + ".");
  }
  ::PostMessageW(::GetParent(toolbar), WM_COMMAND, static_cast<WPARAM>(place),
                 reinterpret_cast<LPARAM>(toolbar));
}

}  // namespace velkor
