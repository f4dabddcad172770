// hosts/yearplan/window/Complaint.h: the line in a dialog that says what has to be put right.
#pragma once

#include <QAccessible>
#include <QLabel>
#include <QLayout>
#include <QWidget>

namespace velkor {

/// Hidden while there is nothing to say.
class Complaint : public QLabel {
 public:
  Complaint() {
    setObjectName("complaint");
    setTextFormat(Qt::PlainText);
    setWordWrap(true);
    setStyleSheet(
        "background:#fdecea; color:#8a1c12; border:1px solid #d9584a; border-radius:3px;"
        "padding:6px");
    hide();
  }

  void Say(const QString& text) {
    setText(text);
    setVisible(!text.isEmpty());
    QAccessibleEvent alert(this, QAccessible::Alert);
    if (!text.isEmpty()) QAccessible::updateAccessibility(&alert);
  }
};

/// Makes a window as high as its texts need at its width, and never lower.
inline void GrowToFit(QWidget& window) {
  window.layout()->activate();
  const int needed = window.layout()->totalHeightForWidth(window.width());
  if (needed > window.height()) window.resize(window.width(), needed);
}

}  // namespace velkor
