// platform/windows/elements/PressablePeer.cpp: presses by mouse and keyboard.
#include "platform/windows/elements/PressablePeer.h"

// After windows.h.
#include <windowsx.h>

namespace velkor {

PressablePeer::PressablePeer(ClickableElement& element, HWND parent, Placement placement,
                             const wchar_t* windowClass, DWORD style)
    : WindowsPeer(element, parent, placement, windowClass, style), clickable_(element) {}

void PressablePeer::Mirror() {
  const LONG style = ::GetWindowLongW(Window(), GWL_STYLE) & ~WS_TABSTOP;
  ::SetWindowLongW(Window(), GWL_STYLE, IsPressable() ? style | WS_TABSTOP : style);
  ::InvalidateRect(Window(), nullptr, FALSE);
}

void PressablePeer::DrawAll(HDC dc) {
  const SavedDc saved(dc);
  const RECT area = Area();
  ::FillRect(dc, &area, Background(dc).brush);
  const LRESULT font = ::SendMessageW(Window(), WM_GETFONT, 0, 0);
  if (font != 0) ::SelectObject(dc, reinterpret_cast<HGDIOBJ>(font));
  ::SetBkMode(dc, TRANSPARENT);
  Draw(dc, area);
  if (::GetFocus() != Window()) return;
  // What is lit is drawn by inverting these.
  ::SetTextColor(dc, RGB(0, 0, 0));
  ::SetBkColor(dc, RGB(255, 255, 255));
  ::DrawFocusRect(dc, &area);
}

void PressablePeer::Release(LPARAM position) {
  pressed_ = false;
  ::ReleaseCapture();
  const RECT area = Area();
  if (::PtInRect(&area, {GET_X_LPARAM(position), GET_Y_LPARAM(position)})) clickable_.Click();
}

std::optional<LRESULT> PressablePeer::Handle(UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
    ::InvalidateRect(Window(), nullptr, FALSE);
    return std::nullopt;
  }
  if (!IsPressable()) return std::nullopt;
  switch (message) {
    case WM_SETCURSOR:
      if (LOWORD(lParam) != HTCLIENT) return std::nullopt;
      ::SetCursor(::LoadCursorW(nullptr, IDC_HAND));
      return TRUE;
    case WM_LBUTTONDOWN:
    case WM_LBUTTONDBLCLK:
      ::SetCapture(Window());
      pressed_ = true;
      return 0;
    case WM_LBUTTONUP:
      if (pressed_) Release(lParam);
      return 0;
    case WM_CAPTURECHANGED:
      pressed_ = false;
      return 0;
    case WM_KEYDOWN:
      if (wParam != VK_SPACE && wParam != VK_RETURN) return std::nullopt;
      clickable_.Click();
      return 0;
    case WM_GETDLGCODE:
      // Enter presses this, not the button that a dialog has for it.
      return wParam == VK_RETURN ? DLGC_WANTALLKEYS : DLGC_STATIC;
    default:
      return std::nullopt;
  }
}

}  // namespace velkor
