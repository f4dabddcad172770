// platform/windows/elements/PaintedWindow.cpp: registers the class, and keeps its windows' fonts.
#include "platform/windows/elements/PaintedWindow.h"

#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

constexpr const wchar_t* Name = L"VelkorPainted";

LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  switch (message) {
    case WM_SETFONT:
      ::SetWindowLongPtrW(window, 0, static_cast<LONG_PTR>(wParam));
      return 0;
    case WM_GETFONT:
      return ::GetWindowLongPtrW(window, 0);
    default:
      return ::DefWindowProcW(window, message, wParam, lParam);
  }
}

}  // namespace

const wchar_t* PaintedWindowClass() {
  WNDCLASSW definition{};
  if (::GetClassInfoW(ThisModule(), Name, &definition)) return Name;
  definition.style = CS_DBLCLKS;
  definition.lpfnWndProc = Procedure;
  definition.cbWndExtra = sizeof(LONG_PTR);
  definition.hInstance = ThisModule();
  definition.hCursor = ::LoadCursorW(nullptr, IDC_ARROW);
  definition.lpszClassName = Name;
  ::RegisterClassW(&definition);
  return Name;
}

void UnregisterPaintedWindowClass() {
  ::UnregisterClassW(Name, ThisModule());
}

}  // namespace velkor
