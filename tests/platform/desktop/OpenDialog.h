// tests/platform/desktop/OpenDialog.h: what a test does with a modal dialog that is about to open.
#pragma once

#include <gtest/gtest.h>

#include <QApplication>
#include <QDialog>
#include <QTimer>
#include <functional>

namespace velkor {

/// Runs steps on the dialog that opens next. One that the steps leave open is closed as a failure.
inline void WhenOpen(const std::function<void(QDialog&)>& steps) {
  constexpr int Opening = 20;
  constexpr int Closing = 100;
  QTimer::singleShot(Opening, [steps] {
    auto* const dialog = qobject_cast<QDialog*>(QApplication::activeModalWidget());
    ASSERT_TRUE(dialog) << "No dialog is open";
    QTimer::singleShot(Closing, dialog, [dialog] {
      if (!dialog->isVisible()) return;
      ADD_FAILURE() << "The dialog stays open";
      dialog->reject();
    });
    steps(*dialog);
  });
}

}  // namespace velkor
