// tests/hosts/SettingsDialogTest.cpp: properties shown, changed, refused and kept per calendar.
#include "hosts/yearplan/window/SettingsDialog.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTest>

#include "hosts/yearplan/window/SleepWatch.h"
#include "hosts/yearplan/window/StoredProperties.h"
#include "platform/headless/MemorySettings.h"
#include "platform/headless/ScriptedSystem.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

TEST(SettingsDialog, OkGivesWhatWasSetAndCancelNothing) {
  const PlannerProperties shown{
      .Folder = "Team", .AllEvents = true, .TitleName = "Mine", .FirstMonth = 4};
  WhenOpen([](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QComboBox*>("StartMonth")->currentIndex(), 3);
    EXPECT_EQ(dialog.findChild<QComboBox*>("StartMonth")->count(), 12);
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(AskForSettings(nullptr, shown), shown);
  WhenOpen([](QDialog& dialog) {
    dialog.findChild<QComboBox*>("StartMonth")->setCurrentIndex(6);
    QTest::mouseClick(dialog.findChild<QCheckBox*>("AllEvents"), Qt::LeftButton, {}, QPoint(8, 8));
    dialog.findChild<QLineEdit*>("TitleName")->setText("  Yours ");
    Press(dialog, QDialogButtonBox::Ok);
  });
  PlannerProperties wanted = shown;
  wanted.FirstMonth = 7;
  wanted.AllEvents = false;
  wanted.TitleName = "Yours";
  EXPECT_EQ(AskForSettings(nullptr, shown), wanted);
  WhenOpen([](QDialog& dialog) { QTest::keyClick(&dialog, Qt::Key_Escape); });
  EXPECT_EQ(AskForSettings(nullptr, shown), std::nullopt);
}

TEST(SettingsDialog, EmptyTitleIsRefused) {
  WhenOpen([](QDialog& dialog) {
    auto* const title = dialog.findChild<QLineEdit*>("TitleName");
    title->setText(" ");
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_FALSE(dialog.findChild<QLabel*>("complaint")->text().isEmpty());
    title->setText("Default");
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(AskForSettings(nullptr, {}), PlannerProperties());
}

TEST(StoredProperties, WhatMakesNoSenseIsPassedOverAndReported) {
  MemorySettings settings;
  std::vector<std::string> reports;
  StoredProperties bag(settings, "a.ics",
                       [&](const std::string& text) { reports.push_back(text); });
  for (const char* month : {"13", "0", "May", "99999999999999999999", ""}) {
    settings.Save(SettingsName, "Calendar a.ics", "StartMonth", month);
    EXPECT_EQ(bag.ReadProperty("StartMonth", std::int16_t{1}), PropertyValue(std::int16_t{1}));
  }
  settings.Save(SettingsName, "Calendar a.ics", "DisplaySubject", "perhaps");
  EXPECT_EQ(bag.ReadProperty("DisplaySubject", false), PropertyValue(true));
  ASSERT_EQ(reports.size(), 6U);
  EXPECT_THAT(reports.back(), HasSubstr("DisplaySubject"));
}

TEST(SleepWatch, WakesAfterAJumpOfTheClockAndNotAfterABusyMinute) {
  int woken = 0;
  ScriptedClock clock;
  clock.now = Date::FromYmd(2026, 5, 4);
  SleepWatch watch(clock, [&] { ++woken; });
  for (const int seconds : {15, 75, 130, 140, 15}) {
    clock.now = Date::FromSeconds(clock.now.Seconds() + seconds);
    watch.Look();
  }
  EXPECT_EQ(woken, 1);
}

}  // namespace
}  // namespace velkor
