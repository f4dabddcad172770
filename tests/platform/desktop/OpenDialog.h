// tests/platform/desktop/OpenDialog.h: what a test does with a modal dialog that is about to open.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QDialogButtonBox>
#include <QPointer>
#include <QPushButton>
#include <QTest>
#include <QTimer>
#include <functional>

namespace velkor {

/// Runs steps on the dialog that opens next. One that the steps leave open is closed as a failure.
inline void WhenOpen(const std::function<void(QDialog&)>& steps, int patience = 5000) {
  constexpr int Look = 10;
  constexpr int Closing = 100;
  QTimer::singleShot(Look, qApp, [steps, patience] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    if (!dialog || !dialog->isVisible()) {
      if (patience > 0) return WhenOpen(steps, patience - Look);
      FAIL() << "No dialog opens";
    }
    const QPointer<QDialog> stepped(dialog);
    steps(*dialog);
    // From here on: steps that open a dialog of their own may take their time.
    if (!stepped) return;
    QTimer::singleShot(Closing, dialog, [dialog] {
      if (!dialog->isVisible()) return;
      ADD_FAILURE() << "The dialog stays open";
      dialog->reject();
    });
  });
}

/// Clicks a button of a dialog or of a message box.
inline void Press(QDialog& dialog, QDialogButtonBox::StandardButton button) {
  QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(button), Qt::LeftButton);
}

}  // namespace velkor
