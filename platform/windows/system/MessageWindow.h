// platform/windows/system/MessageWindow.h: a window that nobody sees, for messages to this thread.
#pragma once

#include <functional>

#include "platform/windows/system/Win32.h"

namespace velkor {

/// Takes what is posted to it, and its timers, while messages are processed on the thread that made
/// it. Its end drops what waits. It needs no window class of its own.
class MessageWindow {
 public:
  /// May destroy the window. What it throws ends here.
  using Handler = std::function<void(UINT message, WPARAM wParam)>;

  /// @param handler  called for WM_TIMER and for messages from WM_APP on
  explicit MessageWindow(Handler handler);
  ~MessageWindow();
  MessageWindow(const MessageWindow&) = delete;
  MessageWindow& operator=(const MessageWindow&) = delete;

  HWND Get() const { return window_; }

 private:
  static LRESULT CALLBACK Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                   UINT_PTR id, DWORD_PTR self);

  Handler handler_;
  HWND window_;
};

}  // namespace velkor
