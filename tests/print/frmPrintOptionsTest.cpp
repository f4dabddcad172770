// tests/print/frmPrintOptionsTest.cpp: what the dialog shows, lets pass, and stores.
#include "print/frmPrintOptions.h"

#include <gmock/gmock.h>

#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedMessageBoxes.h"
#include "platform/headless/ScriptedShell.h"
#include "print/PrintOptions.h"

namespace velkor {
namespace {

class frmPrintOptionsTest : public testing::Test {
 protected:
  frmPrintOptionsTest() {
    options_.Load(messages_);
    form_.onOptionsChanged = [this] { ++layouts_; };
    form_.Load();
    form_.Open();
  }
  std::string Stored(const std::string& key) {
    return settings_.Get("Year Planner", "Printing", key, "nothing");
  }

  MemorySettings settings_;
  ScriptedMessageBoxes messages_{[](const std::string& failure) { FAIL() << failure; }};
  ScriptedShell shell_;
  PrintOptions options_{settings_, {.titleName = "Team", .firstMonth = 1}, ","};
  frmPrintOptions form_{options_, messages_, shell_};
  int layouts_ = 0;
};

TEST_F(frmPrintOptionsTest, AnotherUnitIsStoredAtOnceAndShowsTheSameLengthsInIt) {
  EXPECT_EQ(form_.txtMLeft.Text(), "20.0");
  EXPECT_EQ(form_.txtMinBandW.Text(), "2.5");
  form_.txtHeader.SetText("typed");
  form_.optInch.Choose();
  EXPECT_EQ(Stored("Units"), "Inch");
  EXPECT_EQ(form_.txtMLeft.Text(), "0.8");
  EXPECT_EQ(form_.txtCatW.Text(), "1.6");
  EXPECT_EQ(form_.txtMinBandW.Text(), "0.1");
  EXPECT_EQ(form_.txtHeader.Text(), "");
  form_.chkReprint.Toggle();
  form_.txtMLeft.SetText("3");
  form_.cmdCancel.Click();
  EXPECT_EQ(Stored("ReprintLegend"), "False");
  EXPECT_EQ(Stored("Left Margin"), "nothing");
  EXPECT_FALSE(form_.IsOpen() || form_.OKPressed);
}

TEST_F(frmPrintOptionsTest, NumericBoxesRefuseWhatStandsAboveTheDigitsWithABeep) {
  for (const int code : {8, key_codes::Enter, key_codes::Escape, int{' '}, int{'!'}, int{'9'}}) {
    EXPECT_TRUE(form_.txtMLeft.onKeyPress(code) && form_.txtMinBandNo.onKeyPress(code)) << code;
  }
  EXPECT_TRUE(form_.txtMinBandW.onKeyPress('.'));
  EXPECT_EQ(shell_.beeps, 0);
  EXPECT_FALSE(form_.txtMinBandNo.onKeyPress('.') || form_.txtCatW.onKeyPress(':') ||
               form_.txtMTop.onKeyPress(0x20AC));
  EXPECT_EQ(shell_.beeps, 3);
  EXPECT_FALSE(form_.txtHeader.onKeyPress);
}

TEST_F(frmPrintOptionsTest, OkStoresEveryFieldAndLaysOutAgain) {
  form_.optInch.Choose();
  form_.txtMLeft.SetText("1.5");
  form_.txtMinBandNo.SetText("7");
  form_.txtHeader.SetText("Our year");
  form_.cmbStart.Choose(9);
  form_.cmbEnd.Choose(2);
  form_.chkVisibleText.Toggle();
  form_.radFormatMulti.Choose();
  form_.cmdOK.Click();
  EXPECT_EQ(Stored("Left Margin"), "2160");
  EXPECT_EQ(Stored("Bands"), "7");
  EXPECT_EQ(Stored("TeamHeader"), "Our year");
  EXPECT_EQ(Stored("StartMonth") + " to " + Stored("EndMonth"), "3 to 10");
  EXPECT_EQ(Stored("PrintText"), "True");
  EXPECT_EQ(Stored("PrintTextFormat"), "0");
  EXPECT_TRUE(form_.OKPressed && !form_.IsOpen());
  EXPECT_EQ(layouts_, 1);
  form_.Open();
  form_.cmbStart.Choose(10);
  form_.cmbEnd.Choose(11);
  form_.txtMLeft.SetText("2,5");
  form_.cmdOK.Click();
  EXPECT_EQ(Stored("StartMonth") + " to " + Stored("EndMonth"), "11 to 12");
  EXPECT_EQ(Stored("Left Margin"), "3600");
}

TEST_F(frmPrintOptionsTest, ABoxWithoutANumberIsToldInOrderAndOnlyItsFieldIsKept) {
  TextBox* const boxes[]{&form_.txtMLeft, &form_.txtMRight,    &form_.txtMTop,    &form_.txtMBottom,
                         &form_.txtCatW,  &form_.txtMinBandNo, &form_.txtMinBandW};
  for (TextBox* box : boxes) box->SetText("abc");
  form_.txtHeader.SetText("still stored");
  for (const char* what :
       {"left margin", "right margin", "top margin", "bottom margin", "category legend width",
        "minimum number of bands", "minimum band height"}) {
    messages_.Expect("Please enter a numeric value for the " + std::string(what));
  }
  form_.cmdOK.Click();
  for (TextBox* box : boxes) EXPECT_EQ(box->Text(), "0") << box->Name();
  for (const Message& message : messages_.Shown()) {
    EXPECT_EQ(message.icon, MessageIcon::Information);
  }
  EXPECT_EQ(options_.Values().LeftMargin, 1134);
  EXPECT_EQ(options_.MinBandNo(), 3);
  EXPECT_EQ(Stored("Left Margin"), "nothing");
  EXPECT_EQ(Stored("TeamHeader"), "still stored");
  EXPECT_EQ(layouts_, 1);
  EXPECT_FALSE(form_.IsOpen());
}

TEST_F(frmPrintOptionsTest, WhatCannotBeStoredEndsOkAndLeavesTheDialogOpen) {
  for (const char* bands : {"32767", "40000", "-32769"}) {
    form_.txtMLeft.SetText("10");
    form_.txtMinBandNo.SetText(bands);
    form_.txtHeader.SetText("not reached");
    messages_.Expect("Error saving the print options 6 ");
    form_.cmdOK.Click();
    EXPECT_EQ(Stored("Left Margin"), "567");
    EXPECT_EQ(Stored("Bands") + Stored("TeamHeader"), "nothingnothing");
  }
  settings_.readOnly = true;
  for (int failures = 0; failures < 3; ++failures) messages_.Expect("cannot be written");
  form_.cmdOK.Click();
  form_.chkReprint.Toggle();
  form_.optInch.Choose();
  // The boxes follow the unit that is in force, stored or not.
  EXPECT_EQ(form_.txtMLeft.Text(), "0.4");
  EXPECT_TRUE(form_.IsOpen() && !form_.OKPressed);
  EXPECT_EQ(layouts_, 0);
}

}  // namespace
}  // namespace velkor
