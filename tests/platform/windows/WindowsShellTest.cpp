// tests/platform/windows/WindowsShellTest.cpp: messages in the middle of a call, pointer, pages.
#include "platform/windows/system/WindowsShell.h"

#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>

#include "platform/windows/system/MessageWindow.h"
#include "tests/platform/windows/DriveDialog.h"
#include "tests/platform/windows/OwnerWindow.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

namespace fs = std::filesystem;

class WindowsShellTest : public testing::Test {
 protected:
  WindowsShellTest() {
    ::SetWindowSubclass(container_.window, Hear, 1, reinterpret_cast<DWORD_PTR>(this));
  }

  static LRESULT CALLBACK Hear(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                               UINT_PTR /*id*/, DWORD_PTR self) {
    auto& test = *reinterpret_cast<WindowsShellTest*>(self);
    if (message != WM_APP && message != WM_CHAR) {
      return ::DefSubclassProc(window, message, wParam, lParam);
    }
    ++test.heard_;
    EXPECT_TRUE(test.container_.owner.IsBusy());
    // The flood of a window that never comes to rest.
    if (wParam == 1) ::PostMessageW(window, WM_APP, 1, 0);
    return 0;
  }

  OwnerWindow container_;
  int heard_ = 0;
  WindowsShell shell_{container_.owner, {}};
};

TEST_F(WindowsShellTest, WaitingMessagesAreProcessedAndNoneAreWaitedForLong) {
  ::PostMessageW(container_.window, WM_APP, 0, 0);
  ::PostMessageW(container_.window, WM_KEYDOWN, 'A', 0x1E0001);
  shell_.ProcessMessages();
  EXPECT_EQ(heard_, 2);
  EXPECT_FALSE(container_.owner.IsBusy());

  int ticks = 0;
  const MessageWindow clock([&](UINT, WPARAM) { ++ticks; });
  ::SetTimer(clock.Get(), 1, USER_TIMER_MINIMUM, nullptr);
  for (int i = 0; i < 100; ++i) shell_.ProcessMessages();
  EXPECT_GE(ticks, 3) << "whoever waits should sleep";
  ::PostMessageW(container_.window, WM_APP, 1, 0);
  shell_.ProcessMessages();
  EXPECT_GT(heard_, 3);
}

TEST_F(WindowsShellTest, QuittingStaysInTheQueueUntilItsOwnLoop) {
  ::PostQuitMessage(7);
  shell_.ProcessMessages();
  shell_.ProcessMessages();
  EXPECT_TRUE(TakeQuit());
}

TEST_F(WindowsShellTest, TheWaitPointerStaysUntilTheLastCallEnds) {
  const HCURSOR before = ::LoadCursorW(nullptr, IDC_CROSS);
  const HCURSOR wait = ::LoadCursorW(nullptr, IDC_WAIT);
  ::SetCursor(before);
  shell_.SetWaitPointer(true);
  shell_.SetWaitPointer(true);
  shell_.SetWaitPointer(false);
  EXPECT_EQ(::GetCursor(), wait);
  EXPECT_TRUE(shell_.IsWaiting());
  shell_.SetWaitPointer(false);
  shell_.SetWaitPointer(false);
  EXPECT_EQ(::GetCursor(), before);
  EXPECT_FALSE(shell_.IsWaiting());
}

TEST_F(WindowsShellTest, APageWithoutASlashIsOneOfItsOwnAndAMissingOneIsPassedOver) {
  const fs::path folder =
      fs::temp_directory_path() / (L"velkor-pages-" + std::to_wstring(::GetCurrentProcessId()));
  fs::create_directories(folder);
  // A page that writes down that it was opened.
  for (const char* name : {"one", "two"}) {
    std::ofstream(folder / (name + std::string(".bat"))) << "echo x>%~dp0" << name << ".txt\r\n";
  }
  WindowsShell shell(container_.owner, ToUtf8(folder.wstring()));
  shell.OpenPage("missing.bat");
  shell.OpenPage("one.bat");
  shell.OpenPage(ToUtf8((folder / L"two.bat").wstring()));
  for (const wchar_t* name : {L"one.txt", L"two.txt"}) {
    EXPECT_NO_THROW(WaitUntil("page", [&] { return fs::exists(folder / name); }));
  }
  EXPECT_EQ(FindOpenWindow({}), nullptr);
  EXPECT_NO_THROW(WaitUntil("end of what wrote", [&] {
    std::error_code held;
    fs::remove_all(folder, held);
    return !held;
  }));
}

}  // namespace
}  // namespace velkor
