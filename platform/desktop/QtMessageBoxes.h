// platform/desktop/QtMessageBoxes.h: message boxes as windows.
#pragma once

#include <QPointer>
#include <QWidget>

#include "platform/MessageBoxes.h"

namespace velkor {

/// The name of this program as its windows and boxes carry it.
inline constexpr const char* ProgramName = "YearPlan";

/// Shows each over the dialog that is open, else over `parent`. Texts are shown as they are,
/// without markup. Escape answers Cancel, else No, else Ok.
class QtMessageBoxes : public MessageBoxes {
 public:
  explicit QtMessageBoxes(QWidget* parent = nullptr) : parent_(parent) {}

  MessageAnswer Show(const Message& message) override;

 private:
  QPointer<QWidget> parent_;
};

}  // namespace velkor
