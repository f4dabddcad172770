// platform/windows/dialogs/WindowsForms.h: forms as dialogs.
#pragma once

#include "platform/Forms.h"

namespace velkor {

class DialogOwner;

/// Shows a form over the dialog that is open, else over the window around the control. A form that
/// places its elements itself has a window of its own kind (see WindowsFormWindow); others have
/// their rows as WindowsFormRows lays them out. Enter presses the first button, Escape closes the
/// form, the first input has the keyboard. Throws Error for an element that no window mirrors.
class WindowsForms : public Forms {
 public:
  /// The owner outlives this.
  explicit WindowsForms(DialogOwner& owner) : owner_(owner) {}

  void ShowModal(Form& form) override;

 private:
  DialogOwner& owner_;
};

}  // namespace velkor
