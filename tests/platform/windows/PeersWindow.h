// tests/platform/windows/PeersWindow.h: a window that holds peers, and what happens to windows.
#pragma once

#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/system/Modules.h"
#include "platform/windows/system/Wide.h"
#include "tests/platform/windows/PumpMessages.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {

/// A top-level window on show that does what every window with peers has to do.
class PeersWindow {
 public:
  static constexpr int Width = 400;
  static constexpr int Height = 300;
  static constexpr COLORREF Back = RGB(250, 240, 230);

  PeersWindow() {
    WNDCLASSW definition{};
    definition.lpfnWndProc = Procedure;
    definition.cbWndExtra = sizeof(LONG_PTR);
    definition.hInstance = ThisModule();
    definition.lpszClassName = L"PeersWindow";
    ::RegisterClassW(&definition);
    window_ = ::CreateWindowExW(0, definition.lpszClassName, L"", WS_POPUP | WS_CLIPCHILDREN, 0, 0,
                                Width, Height, nullptr, nullptr, ThisModule(), nullptr);
    ::SetWindowLongPtrW(window_, 0, reinterpret_cast<LONG_PTR>(font_.get()));
    ::ShowWindow(window_, SW_SHOW);
  }
  ~PeersWindow() {
    if (::IsWindow(window_)) ::DestroyWindow(window_);
    ::UnregisterClassW(L"PeersWindow", ThisModule());
  }
  PeersWindow(const PeersWindow&) = delete;
  PeersWindow& operator=(const PeersWindow&) = delete;

  HWND Get() const { return window_; }

 private:
  static LRESULT CALLBACK Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
    if (const auto answer = ReflectMessage(message, wParam, lParam)) return *answer;
    if (message == WM_GETFONT) return ::GetWindowLongPtrW(window, 0);
    if (message == WM_CTLCOLORSTATIC) {
      const auto dc = reinterpret_cast<HDC>(wParam);
      ::SetBkColor(dc, Back);
      ::SetDCBrushColor(dc, Back);
      return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
    }
    return ::DefWindowProcW(window, message, wParam, lParam);
  }

  FontHandle font_ = MakeDialogFont(DensityOf(nullptr));
  HWND window_ = nullptr;
};

inline LRESULT SendAt(HWND window, UINT message, WPARAM wParam, int x, int y) {
  return ::SendMessageW(window, message, wParam, MAKELPARAM(x, y));
}

inline void ClickAt(HWND window, int x, int y) {
  SendAt(window, WM_LBUTTONDOWN, MK_LBUTTON, x, y);
  SendAt(window, WM_LBUTTONUP, 0, x, y);
}

inline void PressKey(HWND window, WPARAM virtualKey) {
  ::SendMessageW(window, WM_KEYDOWN, virtualKey, 0);
}

/// The text of a window's tool tip; empty when it has none.
inline std::string AskToolTip(HWND window) {
  HWND found = nullptr;
  while ((found = ::FindWindowExW(nullptr, found, TOOLTIPS_CLASSW, nullptr)) != nullptr) {
    if (::GetWindowThreadProcessId(found, nullptr) != ::GetCurrentThreadId()) continue;
    wchar_t text[512] = L"";
    TTTOOLINFOW tool{};
    tool.cbSize = TTTOOLINFOW_V1_SIZE;
    tool.hwnd = window;
    tool.uId = reinterpret_cast<UINT_PTR>(window);
    tool.lpszText = text;
    ::SendMessageW(found, TTM_GETTEXTW, std::size(text), reinterpret_cast<LPARAM>(&tool));
    if (*text != L'\0') return ToUtf8(text);
  }
  return {};
}

/// A window as it draws itself.
class WindowPicture : public DibSection {
 public:
  explicit WindowPicture(HWND window) : DibSection(PeersWindow::Width, PeersWindow::Height) {
    ::SendMessageW(window, WM_PRINTCLIENT, reinterpret_cast<WPARAM>(Dc()), PRF_CLIENT);
  }
};

}  // namespace velkor
