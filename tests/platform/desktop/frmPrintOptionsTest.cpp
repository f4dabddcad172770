// tests/platform/desktop/frmPrintOptionsTest.cpp: the print options as a user changes them.
#include "print/frmPrintOptions.h"

#include <gtest/gtest.h>

#include <QComboBox>
#include <QGroupBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QRadioButton>
#include <QTest>

#include "platform/desktop/QtForms.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedMessageBoxes.h"
#include "platform/headless/ScriptedShell.h"
#include "print/PrintOptions.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

struct PrintDialog {
  PrintDialog() { form.Load(); }

  MemorySettings settings;
  ScriptedMessageBoxes messages{[](const std::string& failure) { FAIL() << failure; }};
  ScriptedShell shell;
  PrintOptions options{settings, {.titleName = "Team", .firstMonth = 4}};
  frmPrintOptions form{options, messages, shell};
};

TEST(QtPrintOptions, AreChangedByKeysAndClicksAndLeftByEscape) {
  PrintDialog user;
  WhenOpen([&](QDialog& dialog) {
    QWidget* const left = dialog.focusWidget();
    ASSERT_EQ(left->objectName(), "txtMLeft");
    QTest::mouseClick(dialog.findChild<QRadioButton*>("optInch"), Qt::LeftButton, {}, {8, 8});
    EXPECT_EQ(dialog.findChild<QLineEdit*>("txtMLeft")->text(), "0.8");
    left->setFocus();
    dialog.findChild<QLineEdit*>("txtMLeft")->selectAll();
    QTest::keyClicks(left, "a1.5");
    EXPECT_EQ(user.shell.beeps, 1);
    auto* const start = dialog.findChild<QComboBox*>("cmbStart");
    EXPECT_EQ(start->currentText(), "Apr");
    QTest::keyClick(start, Qt::Key_Down);
    QTest::keyClick(left, Qt::Key_Return);
  });
  QtForms().ShowModal(user.form);
  EXPECT_TRUE(user.form.OKPressed);

  EXPECT_EQ(user.options.FilterStartMonth(), 5);
  EXPECT_EQ(user.settings.Get("Year Planner", "Printing", "Left Margin", ""), "2160");
  const auto kept = user.settings.Values();
  WhenOpen([&](QDialog& dialog) {
    QTest::keyClicks(dialog.focusWidget(), "7");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
  });
  QtForms().ShowModal(user.form);
  EXPECT_EQ(user.settings.Values(), kept);
}

TEST(QtPrintOptions, RowsOfOneGroupStandInOneFrameAndItsBoxesInColumns) {
  PrintDialog shown;
  WhenOpen([](QDialog& dialog) {
    const auto frameOf = [&](const char* name) {
      return qobject_cast<QGroupBox*>(dialog.findChild<QWidget*>(name)->parentWidget());
    };
    const auto leftOf = [&](const char* name) { return dialog.findChild<QWidget*>(name)->x(); };
    ASSERT_TRUE(frameOf("txtMLeft"));
    EXPECT_EQ(frameOf("txtMLeft")->title(), "Margins");
    EXPECT_EQ(frameOf("txtMLeft"), frameOf("txtMBottom"));
    EXPECT_NE(frameOf("txtMLeft"), frameOf("txtCatW"));
    EXPECT_FALSE(frameOf("txtHeader"));
    EXPECT_EQ(leftOf("txtMRight"), leftOf("txtMBottom"));
    EXPECT_EQ(dialog.findChild<QLabel*>("lblEnd")->buddy()->objectName(), "cmbEnd");
    dialog.reject();
  });
  QtForms().ShowModal(shown.form);
}

}  // namespace
}  // namespace velkor
