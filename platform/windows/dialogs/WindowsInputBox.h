// platform/windows/dialogs/WindowsInputBox.h: a dialog that asks for one line.
#pragma once

#include "platform/MessageBoxes.h"

namespace velkor {

class DialogOwner;

/// Hands on the line as it was typed.
class WindowsInputBoxes : public InputBoxes {
 public:
  /// Identifier of the line in the dialog.
  static constexpr int LineId = 100;

  explicit WindowsInputBoxes(DialogOwner& owner) : owner_(owner) {}

  std::string Ask(const std::string& prompt, const std::string& title) override;

 private:
  DialogOwner& owner_;
};

}  // namespace velkor
