// tests/print/frmPrintOptionsTest.cpp: what the dialog lets pass, tells, and lays out.
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

TEST_F(frmPrintOptionsTest, OkLaysOutAgainAndCancelDoesNot) {
  form_.txtMLeft.SetText("abc");
  form_.cmdCancel.Click();
  EXPECT_FALSE(form_.IsOpen() || form_.OKPressed);
  EXPECT_EQ(layouts_, 0);
  form_.Open();
  messages_.Expect("Please enter a numeric value for the left margin");
  form_.cmdOK.Click();
  EXPECT_EQ(messages_.Shown()[0].icon, MessageIcon::Information);
  EXPECT_TRUE(form_.OKPressed && !form_.IsOpen());
  EXPECT_EQ(layouts_, 1);
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
