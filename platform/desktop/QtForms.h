// platform/desktop/QtForms.h: forms as dialogs.
#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/Forms.h"

namespace velkor {

/// Shows a form over the dialog that is open, else over `parent`. A form that places its elements
/// itself has a window of its own kind (see QtFormWindow). The Buttons rows of others stand at the
/// bottom; Enter presses the first button of them, Escape closes the form. The first input has the
/// keyboard, labels that keep their width and begin a row are as wide as each other, and a row with
/// a check list takes the height that is left over. Throws Error for an element that no widget
/// mirrors.
class QtForms : public Forms {
 public:
  explicit QtForms(QWidget* parent = nullptr) : parent_(parent) {}

  void ShowModal(Form& form) override;

 private:
  QPointer<QWidget> parent_;
};

}  // namespace velkor
