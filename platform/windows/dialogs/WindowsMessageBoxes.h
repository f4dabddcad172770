// platform/windows/dialogs/WindowsMessageBoxes.h: the system's message boxes.
#pragma once

#include "platform/MessageBoxes.h"

namespace velkor {

class DialogOwner;

class WindowsMessageBoxes : public MessageBoxes {
 public:
  explicit WindowsMessageBoxes(DialogOwner& owner) : owner_(owner) {}

  MessageAnswer Show(const Message& message) override;

 private:
  DialogOwner& owner_;
};

}  // namespace velkor
