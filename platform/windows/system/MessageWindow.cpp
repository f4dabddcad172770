// platform/windows/system/MessageWindow.cpp: a message-only window of a class that the system has.
#include "platform/windows/system/MessageWindow.h"

#include <utility>
// After windows.h.
#include <commctrl.h>

#include "platform/windows/system/Wide.h"

namespace velkor {

MessageWindow::MessageWindow(Handler handler)
    : handler_(std::move(handler)),
      window_(::CreateWindowExW(0, L"STATIC", L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr, nullptr,
                                nullptr)) {
  const bool made = window_ != nullptr &&
                    ::SetWindowSubclass(window_, Subclass, 0, reinterpret_cast<DWORD_PTR>(this));
  if (made) return;
  const DWORD code = ::GetLastError();
  if (window_ != nullptr) ::DestroyWindow(window_);
  throw SystemError(code, "No window for messages can be made");
}

MessageWindow::~MessageWindow() {
  ::RemoveWindowSubclass(window_, Subclass, 0);
  ::DestroyWindow(window_);
}

LRESULT CALLBACK MessageWindow::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                         UINT_PTR /*id*/, DWORD_PTR self) {
  if (message != WM_TIMER && message < WM_APP) {
    return ::DefSubclassProc(window, message, wParam, lParam);
  }
  try {
    // A copy: the handler may destroy the window.
    const Handler handler = reinterpret_cast<MessageWindow*>(self)->handler_;
    handler(message, wParam);
  } catch (...) {
    // Nothing may be thrown through the system, and there is nobody to tell.
  }
  return 0;
}

}  // namespace velkor
