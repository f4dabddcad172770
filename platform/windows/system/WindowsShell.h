// platform/windows/system/WindowsShell.h: the message queue, the pointer and the browser.
#pragma once

#include "platform/System.h"
#include "platform/windows/system/Win32.h"

namespace velkor {

class DialogOwner;

class WindowsShell : public Shell {
 public:
  /// @param pages  folder of the product's own pages, UTF-8
  WindowsShell(DialogOwner& owner, std::string pages) : owner_(owner), pages_(std::move(pages)) {}

  /// Waits two milliseconds at most for a message, and processes messages for a few more at most,
  /// so that it returns whatever keeps coming. WM_QUIT stays in the queue, and this returns at
  /// once.
  void ProcessMessages() override;
  /// A window under the pointer that is asked (WM_SETCURSOR) meanwhile should ask IsWaiting.
  void SetWaitPointer(bool wait) override;
  bool IsWaiting() const { return waits_ > 0; }
  void Beep() override;
  /// An address without a slash is one of the product's own pages. What cannot be opened is passed
  /// over.
  void OpenPage(const std::string& address) override;

 private:
  DialogOwner& owner_;
  std::string pages_;
  int waits_ = 0;
  HCURSOR before_ = nullptr;
};

}  // namespace velkor
