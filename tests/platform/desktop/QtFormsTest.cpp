// tests/platform/desktop/QtFormsTest.cpp: forms and message boxes as a user closes them.
#include "platform/desktop/QtForms.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QDialog>
#include <QLabel>
#include <QMessageBox>
#include <QPushButton>
#include <QTest>

#include "platform/InputElements.h"
#include "platform/desktop/QtMessageBoxes.h"
#include "tests/platform/desktop/OpenDialog.h"
#include "values/Error.h"

namespace velkor {
namespace {

struct AskingForm : Form {
  AskingForm() : Form("frmAsk", "Asking") {
    lblHeading.SetCaption("A heading");
    lblText.SetCaption("1 < 2 & <b>plain</b>");
    cmdOK.SetCaption("OK");
    cmdCancel.SetCaption("Cancel");
    AddRow({{{&imgLogo, 1}, {&lblHeading, 1}}, FormRowKind::Heading});
    AddRow({{{&lblText, 1}}, FormRowKind::Plain});
    AddRow({{{&cmdOK, 1}, {&cmdCancel, 1}}, FormRowKind::Buttons});
    cmdOK.onClick = [this] {
      ++accepted;
      Unload();
    };
    cmdCancel.onClick = [this] { Unload(); };
  }
  Image imgLogo{"imgLogo"};
  Label lblHeading{"lblHeading"};
  Label lblText{"lblText"};
  CommandButton cmdOK{"cmdOK"};
  CommandButton cmdCancel{"cmdCancel"};
  int accepted = 0;
};

TEST(QtForms, EnterPressesTheFirstButtonAndTheFormClosesItself) {
  AskingForm form;
  WhenOpen([](QDialog& dialog) {
    EXPECT_EQ(dialog.windowTitle(), "Asking");
    EXPECT_EQ(dialog.findChild<QLabel*>("lblText")->text(), "1 < 2 & <b>plain</b>");
    const auto* const heading = dialog.findChild<QLabel*>("lblHeading");
    EXPECT_GT(heading->font().pointSizeF(), dialog.font().pointSizeF());
    EXPECT_LT(heading->y(), dialog.findChild<QPushButton*>("cmdOK")->y());
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  QtForms().ShowModal(form);
  EXPECT_EQ(form.accepted, 1);
  EXPECT_FALSE(form.IsOpen());
}

TEST(QtForms, EscapeUnloadsTheFormAndItCanBeShownAgain) {
  AskingForm form;
  for (int round = 0; round < 2; ++round) {
    WhenOpen([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    QtForms().ShowModal(form);
    EXPECT_FALSE(form.IsOpen());
  }
  EXPECT_EQ(form.accepted, 0);
}

TEST(QtForms, TheFirstInputHasTheKeyboardAndLabelsLeadToTheirs) {
  struct InputForm : Form {
    InputForm() : Form("dlgInput", "Input") {
      lblFrom.SetCaption("From:");
      lblUntil.SetCaption("Until and with:");
      tbFrom.SetText("1/1/2026");
      rbOne.group = rbTwo.group = {&rbOne, &rbTwo};
      rbTwo.SetChosen();
      cmdOK.onClick = [this] { ++accepted; };
      AddRow({{{&lblList, 1}}});
      AddRow({{{&lbList, 1}}});
      AddRow({{{&lblFrom, 0}, {&tbFrom, 0}}});
      AddRow({{{&lblUntil, 0}, {&tbUntil, 0}}});
      AddRow({{{&rbOne, 1}, {&rbTwo, 1}, {&cbMore, 1}}});
      AddRow({{{&cmdOK, 1}}, FormRowKind::Buttons});
      lbList.SetEnabled(false);
    }
    Label lblList{"lblList"};
    CheckListBox lbList{"lbList"};
    Label lblFrom{"lblFrom"};
    MaskedBox tbFrom{"tbFrom", "99/99/9999"};
    Label lblUntil{"lblUntil"};
    TextBox tbUntil{"tbUntil"};
    OptionButton rbOne{"rbOne"};
    OptionButton rbTwo{"rbTwo"};
    CheckBox cbMore{"cbMore"};
    CommandButton cmdOK{"cmdOK"};
    int accepted = 0;
  } form;
  WhenOpen([&](QDialog& dialog) {
    const auto& find = [&](const char* name) { return dialog.findChild<QWidget*>(name); };
    EXPECT_EQ(dialog.accessibleName(), "Input");
    EXPECT_EQ(dialog.findChild<QLabel*>("lblList")->buddy(), find("lbList"));
    EXPECT_EQ(dialog.findChild<QLabel*>("lblUntil")->buddy(), find("tbUntil"));
    EXPECT_EQ(find("tbFrom")->x(), find("tbUntil")->x());
    EXPECT_EQ(dialog.focusWidget(), find("tbFrom"));
    const int height = find("lbList")->height();
    dialog.resize(600, dialog.height() + 100);
    QCoreApplication::processEvents();
    EXPECT_EQ(find("lbList")->height(), height + 100);
    QTest::keyClicks(dialog.focusWidget(), "2/3/2027");
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Return);
    form.rbOne.Choose();
    form.tbUntil.SetFocus();
    QTest::keyClick(dialog.focusWidget(), Qt::Key_Escape);
  });
  QtForms().ShowModal(form);
  EXPECT_EQ(form.tbFrom.Text(), "2/3/2027");
  EXPECT_EQ(form.accepted, 1);
  WhenOpen([](QDialog& dialog) { dialog.close(); });
  QtForms().ShowModal(form);
}

TEST(QtMessageBoxes, EnterGivesTheDefaultButtonAndEscapeRefuses) {
  const Message question{.text = "Delete <this>?\r\rReally?",
                         .title = "Planner",
                         .buttons = MessageButtons::YesNo,
                         .icon = MessageIcon::Question,
                         .defaultButton = 2};
  WhenOpen([](QDialog& dialog) {
    auto& box = dynamic_cast<QMessageBox&>(dialog);
    EXPECT_EQ(box.text(), "Delete <this>?\n\nReally?");
    EXPECT_EQ(box.textFormat(), Qt::PlainText);
    EXPECT_EQ(box.icon(), QMessageBox::Question);
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  EXPECT_EQ(QtMessageBoxes().Show(question), MessageAnswer::No);
  WhenOpen([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(QtMessageBoxes().Show(question), MessageAnswer::No);
  WhenOpen([](QDialog& dialog) { Press(dialog, QDialogButtonBox::Yes); });
  EXPECT_EQ(QtMessageBoxes().Show(question), MessageAnswer::Yes);
}

TEST(QtMessageBoxes, EachSetOfButtonsHasItsRefusal) {
  const std::vector<std::pair<MessageButtons, MessageAnswer>> cases{
      {MessageButtons::Ok, MessageAnswer::Ok},
      {MessageButtons::OkCancel, MessageAnswer::Cancel},
      {MessageButtons::RetryCancel, MessageAnswer::Cancel},
      {MessageButtons::YesNoCancel, MessageAnswer::Cancel},
  };
  for (const auto& [buttons, answer] : cases) {
    WhenOpen([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
    EXPECT_EQ(QtMessageBoxes().Show({.text = "?", .title = "?", .buttons = buttons}), answer);
  }
}

}  // namespace
}  // namespace velkor
