// tests/hosts/CalendarPaneTest.cpp: the list of calendars and the line of notices, by mouse and
// keys.
#include "hosts/yearplan/window/CalendarPane.h"

#include <gmock/gmock.h>

#include <QAction>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMessageBox>
#include <QTest>
#include <QToolButton>

#include "hosts/yearplan/window/NoticeLine.h"
#include "hosts/yearplan/window/RecentCalendars.h"
#include "platform/headless/MemorySettings.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

TEST(CalendarRow, StateSaysWhatMattersFirst) {
  CalendarRow row{.id = "a", .name = "Team"};
  const auto with = [&](auto change) {
    CalendarRow changed = row;
    change(changed);
    return StateOf(changed).toStdString();
  };
  EXPECT_EQ(with([](CalendarRow&) {}), "Up to date");
  EXPECT_EQ(with([](CalendarRow& it) { it.readOnly = true, it.daysOff = true; }),
            "Days off, read-only");
  EXPECT_EQ(with([](CalendarRow& it) { it.waiting = 1, it.refused = 2; }),
            "1 edit waiting, 2 edits refused");
  row.remote = true;
  EXPECT_EQ(with([](CalendarRow&) {}), "Not read yet");
  EXPECT_EQ(with([](CalendarRow& it) { it.busy = true; }), "Being refreshed");
  row.trouble = "No network";
  EXPECT_EQ(with([](CalendarRow& it) { it.offline = true, it.since = "14:05"; }),
            "Offline since 14:05");
  EXPECT_EQ(with([](CalendarRow& it) { it.waiting = 3; }), "3 edits waiting, Failing: No network");
}

class CalendarPane : public testing::Test {
 protected:
  CalendarPane() {
    pane_.resize(260, 400);
    pane_.Show(rows_);
    pane_.show();
  }

  QListWidget& List() { return *pane_.findChild<QListWidget*>(); }
  /// Chooses an entry of the menu of a row; one that is not enabled does nothing.
  void Choose(int row, const char* entry) {
    List().setCurrentRow(row);
    QMenu& menu = *pane_.findChild<QToolButton*>("calendarMenu")->menu();
    emit menu.aboutToShow();
    menu.findChild<QAction*>(entry)->trigger();
  }
  void Answer(QMessageBox::StandardButton button) {
    WhenOpen(
        [button](QDialog& dialog) { Press(dialog, QDialogButtonBox::StandardButton(button)); });
  }
  void Note(const std::string& what) { told_.push_back(what); }

  std::vector<std::string> told_;
  std::vector<CalendarRow> rows_{
      {.id = "a", .name = "Anna", .isDefault = true, .waiting = 2},
      {.id = "b", .name = "Holidays", .daysOff = true, .readOnly = true, .remote = true},
      {.id = "c", .name = "Carl", .shown = false, .trouble = "No such file", .refused = 1}};
  velkor::CalendarPane pane_{
      {.show = [this](auto id, bool on) { Note(id + (on ? " shown" : " hidden")); },
       .rename = [this](auto id, auto name) { Note(id + " is " + name); },
       .recolour = [this](auto id, Colour) { Note(id + " coloured"); },
       .makeDefault = [this](auto id) { Note(id + " default"); },
       .markDaysOff = [this](auto id, bool on) { Note(id + (on ? " off" : " bars")); },
       .refresh = [this](auto id) { Note(id + " refreshed"); },
       .exportRefused = [this](auto id) { Note(id + " exported"); },
       .remove = [this](auto id) { Note(id + " removed"); }},
      {}};
};

TEST_F(CalendarPane, ClickOnTheBoxAndKeysShowHideRenameAndRemove) {
  const QRect first = List().visualItemRect(List().item(0));
  QTest::mouseClick(List().viewport(), Qt::LeftButton, {}, {10, first.center().y()});
  List().setCurrentRow(2);
  QTest::keyClick(&List(), Qt::Key_Space);
  QTest::keyClick(&List(), Qt::Key_F2);
  auto* const name = List().findChild<QLineEdit*>();
  ASSERT_TRUE(name);
  EXPECT_LT(name->height(), first.height());
  name->setText(" Charles ");
  QTest::keyClick(name, Qt::Key_Return);
  Answer(QMessageBox::No);
  QTest::keyClick(&List(), Qt::Key_Delete);
  List().setCurrentRow(1);
  QTest::keyClick(&List(), Qt::Key_Delete);
  EXPECT_THAT(told_, ElementsAre("a hidden", "c shown", "c is Charles", "b removed"));
}

TEST_F(CalendarPane, MenuOffersWhatTheCalendarAllows) {
  for (const int row : {0, 1, 2}) {
    for (const char* const entry : {"default", "daysOff", "refresh", "export"}) Choose(row, entry);
  }
  EXPECT_THAT(told_, ElementsAre("a default", "a off", "b bars", "b refreshed", "c default",
                                 "c off", "c exported"));
  told_.clear();
  WhenOpen([](QDialog& dialog) {
    EXPECT_TRUE(dynamic_cast<QMessageBox&>(dialog).text().contains("No such file"));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Choose(2, "reason");
  Answer(QMessageBox::Yes);
  Choose(0, "remove");
  EXPECT_THAT(told_, ElementsAre("a removed"));
}

TEST_F(CalendarPane, SelectionAndAnEditInProgressOutliveNews) {
  List().setCurrentRow(2);
  QTest::keyClick(&List(), Qt::Key_F2);
  List().findChild<QLineEdit*>()->setText("Charles");
  rows_[2].waiting = 7;
  pane_.Show(rows_);
  ASSERT_TRUE(List().findChild<QLineEdit*>());
  QTest::keyClick(List().findChild<QLineEdit*>(), Qt::Key_Return);
  QCoreApplication::processEvents();
  EXPECT_THAT(told_, ElementsAre("c is Charles"));
  rows_.erase(rows_.begin());
  pane_.Show(rows_);
  EXPECT_EQ(List().currentRow(), 1);
  EXPECT_EQ(List().item(1)->data(Qt::AccessibleTextRole).toString(),
            "Carl: 7 edits waiting, 1 edit refused, Failing: No such file");
  pane_.Show({});
  EXPECT_FALSE(List().isVisible());
  EXPECT_FALSE(pane_.findChild<QToolButton*>("calendarMenu")->isEnabled());
  EXPECT_THAT(told_, testing::SizeIs(1));
}

TEST(NoticeLine, TellsOneAfterTheOtherAndKeepsItsPlace) {
  std::vector<std::string> answers;
  velkor::NoticeLine line([&](const std::string& id, std::size_t answer) {
    answers.push_back(id + std::to_string(answer));
  });
  const auto press = [&](const char* name) {
    QTest::mouseClick(line.findChild<QPushButton*>(name), Qt::LeftButton);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  };
  const Notice first{"1", "Anna moved \"Trip\".", {"Take Back", "OK"}};
  const Notice second{"2", "Keep \"Party\"?", {"Keep", "Delete"}};
  line.Show({first, second});
  line.resize(900, 40);
  line.show();
  press("answer1");
  press("nextNotice");
  line.Show({{"0", "Other", {"OK"}}, second});
  EXPECT_EQ(line.findChild<QLabel*>("noticeText")->text(), "Keep \"Party\"?");
  press("answer0");
  line.Show({});
  EXPECT_FALSE(line.isVisible());
  EXPECT_THAT(answers, ElementsAre("11", "20"));
}

TEST(RecentCalendars, NewestFirstEachOnceAndNoMoreThanAFew) {
  MemorySettings settings;
  RecentCalendars recent(settings);
  for (int i = 0; i < 20; ++i) recent.Add("/" + std::to_string(i % 12));
  recent.Add("/3");
  EXPECT_THAT(RecentCalendars(settings).Paths(),
              ElementsAre("/3", "/7", "/6", "/5", "/4", "/2", "/1", "/0", "/11"));
  recent.Clear();
  EXPECT_THAT(recent.Paths(), IsEmpty());
}

}  // namespace
}  // namespace velkor
