// tests/platform/windows/DriveDialog.h: answers real dialogs from a thread beside the one they
// block.
#pragma once

#include <gtest/gtest.h>

#include <chrono>
#include <functional>
#include <stdexcept>
#include <string>
#include <thread>
#include <utility>

#include "platform/windows/system/Wide.h"

namespace velkor {

inline constexpr std::chrono::seconds WindowDeadline{10};

/// What to look for among the top-level windows of this process; an empty title fits any.
struct WantedWindow {
  std::wstring title;
  /// "#32770" is every dialog, "#32768" a menu that popped up.
  std::wstring windowClass = L"#32770";
};

/// Title of a window, without asking its thread.
inline std::wstring TitleOf(HWND window) {
  wchar_t text[256];
  const int length = ::InternalGetWindowText(window, text, static_cast<int>(std::size(text)));
  return {text, static_cast<std::size_t>(length)};
}

/// Calls `visit(window)` for each visible, enabled top-level window of this process with a class.
template <typename Visit>
void ForEachOpenWindow(const std::wstring& windowClass, Visit visit) {
  HWND window = nullptr;
  while ((window = ::FindWindowExW(nullptr, window, windowClass.c_str(), nullptr)) != nullptr) {
    DWORD process = 0;
    ::GetWindowThreadProcessId(window, &process);
    if (process == ::GetCurrentProcessId() && ::IsWindowVisible(window) &&
        ::IsWindowEnabled(window)) {
      visit(window);
    }
  }
}

/// Null while there is none.
inline HWND FindOpenWindow(const WantedWindow& wanted) {
  HWND found = nullptr;
  ForEachOpenWindow(wanted.windowClass, [&](HWND window) {
    if (wanted.title.empty() || TitleOf(window) == wanted.title) found = window;
  });
  return found;
}

/// Polls until `holds`. Throws at the deadline, which fails the test that drives.
inline void WaitUntil(const std::string& what, const std::function<bool()>& holds,
                      std::chrono::milliseconds deadline = WindowDeadline) {
  const auto end = std::chrono::steady_clock::now() + deadline;
  while (!holds()) {
    if (std::chrono::steady_clock::now() > end) throw std::runtime_error("in vain: " + what);
    ::Sleep(10);
  }
}

/// Waits for a window that the user could answer: visible and enabled.
inline HWND WaitForWindow(const WantedWindow& wanted,
                          std::chrono::milliseconds deadline = WindowDeadline) {
  HWND found = nullptr;
  WaitUntil(
      "window " + ToUtf8(wanted.windowClass) + " \"" + ToUtf8(wanted.title) + "\"",
      [&] { return (found = FindOpenWindow(wanted)) != nullptr; }, deadline);
  return found;
}

/// Waits for a dialog with a title.
inline HWND WaitForDialog(const std::wstring& title) {
  return WaitForWindow({.title = title});
}

/// A click on a button, by its identifier.
inline void Press(HWND dialog, int id) {
  ::PostMessageW(dialog, WM_COMMAND, static_cast<WPARAM>(id),
                 reinterpret_cast<LPARAM>(::GetDlgItem(dialog, id)));
}

/// Presses a button that ends the dialog, or opens another over it, and waits for that.
inline void Answer(HWND dialog, int id) {
  Press(dialog, id);
  WaitUntil("end of a dialog", [&] { return !::IsWindow(dialog) || !::IsWindowEnabled(dialog); });
}

/// Sets the text of an edit, by its identifier, and tells the dialog as typing would.
inline void SetText(HWND dialog, int id, const std::wstring& text) {
  WaitUntil("item " + std::to_string(id), [&] { return ::GetDlgItem(dialog, id) != nullptr; });
  ::SendMessageW(::GetDlgItem(dialog, id), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(text.c_str()));
}

inline std::wstring TextOf(HWND dialog, int id) {
  wchar_t text[1024]{};
  ::SendMessageW(::GetDlgItem(dialog, id), WM_GETTEXT, std::size(text),
                 reinterpret_cast<LPARAM>(text));
  return text;
}

/// Runs steps on a thread of its own while the test's thread sits in the dialogs that they answer;
/// ends with them. Dialogs that nobody answered fail the test and are closed, so that it never
/// hangs. Windows other than dialogs and menus are the steps' own to close.
///
///   const DriveDialog drive([] { Answer(WaitForDialog(L"Title"), IDOK); });
///   EXPECT_EQ(boxes.Show(message), MessageAnswer::Ok);
class DriveDialog {
 public:
  explicit DriveDialog(std::function<void()> steps)
      : thread_([steps = std::move(steps)](const std::stop_token& stop) { Run(steps, stop); }) {}

 private:
  static void Run(const std::function<void()>& steps, const std::stop_token& stop) {
    try {
      steps();
      WaitUntil("end of what the test called", [&] { return stop.stop_requested(); });
    } catch (const std::exception& error) {
      ADD_FAILURE() << error.what();
    }
    while (!stop.stop_requested()) {
      ForEachOpenWindow(L"#32768",
                        [](HWND menu) { ::PostMessageW(menu, WM_KEYDOWN, VK_ESCAPE, 0); });
      ForEachOpenWindow(L"#32770", [](HWND dialog) {
        for (const int id : {IDCANCEL, IDNO, IDOK}) Press(dialog, id);
      });
      ::Sleep(100);
    }
  }

  std::jthread thread_;
};

}  // namespace velkor
