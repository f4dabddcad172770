// platform/windows/WindowsMessageBoxes.h: the system's message boxes.
#pragma once

#include "platform/MessageBoxes.h"
#include "platform/windows/Win32.h"

namespace velkor {

class WindowsMessageBoxes : public MessageBoxes {
 public:
  /// `owner` is disabled while a message shows; may be null.
  explicit WindowsMessageBoxes(HWND owner = nullptr) : owner_(owner) {}

  MessageAnswer Show(const Message& message) override;

 private:
  HWND owner_;
};

}  // namespace velkor
