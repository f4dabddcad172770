// tests/hosts/PlannerWindowTest.cpp: the window over real calendar files, used by mouse and keys.
#include "hosts/yearplan/PlannerWindow.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>
#include <sys/file.h>

#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QDropEvent>
#include <QFile>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPushButton>
#include <QTemporaryDir>
#include <QTest>

#include "control/YearPlan.h"
#include "hosts/yearplan/PlannerSession.h"
#include "model/ColourRecord.h"
#include "platform/headless/MemorySettings.h"
#include "tests/platform/desktop/CalendarText.h"
#include "tests/platform/desktop/OpenDialog.h"
#include "view/YearGrid.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::Not;

class PlannerWindow : public testing::Test {
 protected:
  static constexpr int Year = 2026;

  std::string Path(const char* name) const { return folder_.filePath(name).toStdString(); }

  QByteArray Bytes(const char* name) const {
    QFile file(folder_.filePath(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  /// A calendar with one all-day event for each pair of a day, as in 20260504, and a subject.
  void Write(const char* name, const std::vector<std::pair<const char*, const char*>>& events) {
    QByteArray text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\nPRODID:-//test//\r\n";
    int number = 0;
    for (const auto& [day, subject] : events) {
      text += "BEGIN:VEVENT\r\nUID:u" + QByteArray::number(++number) +
              "\r\nDTSTAMP:20260101T000000Z\r\nDTSTART;VALUE=DATE:" + day +
              "\r\nCATEGORIES:Leave\r\nSUMMARY:" + subject + "\r\nEND:VEVENT\r\n";
    }
    WriteBytes(name, text + "END:VCALENDAR\r\n");
  }
  void WriteBytes(const char* name, const QByteArray& bytes) {
    QFile file(folder_.filePath(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }

  void Open(velkor::PlannerWindow& window, const char* name) {
    window.resize(1200, 700);
    window.show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(&window));
    ASSERT_TRUE(window.OpenCalendar(Path(name), Year));
  }

  static YearPlan& Plan(velkor::PlannerWindow& window) { return window.Session()->Plan(); }
  static QWidget& Grid(velkor::PlannerWindow& window) {
    return *window.findChild<QWidget*>("pic1");
  }
  static bool Shows(velkor::PlannerWindow& window, std::size_t events) {
    return QTest::qWaitFor([&] { return Plan(window).Grid().Events().Count() == events; }, 15000);
  }

  /// A point of pic1 on the bar of an event, while nothing is scrolled.
  static QPoint BarOf(velkor::PlannerWindow& window, const char* subject) {
    const YearGrid& grid = Plan(window).Grid();
    for (int y = 0; y < Grid(window).height(); ++y) {
      for (int x = 0; x < Grid(window).width(); x += 4) {
        const auto hit = grid.HitTestAt({x * TwipsPerPixel, y * TwipsPerPixel});
        const auto event = hit ? grid.EventAt(*hit) : std::nullopt;
        if (event && grid.Events()[*event].Subject == subject) return QPoint(x + 4, y + 2);
      }
    }
    ADD_FAILURE() << "No bar of " << subject;
    return {};
  }

  QTemporaryDir folder_;
  MemorySettings settings_;
};

TEST_F(PlannerWindow, ShowsTheYearOfTheCalendarThroughTheCacheUtility) {
  Write("team.ics", {{"20260504", "Holiday"}, {"20261224", "Party"}, {"20270101", "Later"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  ASSERT_TRUE(Shows(window, 2));
  EXPECT_EQ(window.windowTitle(), "team - YearPlan");
  EXPECT_EQ(window.focusWidget(), &Grid(window));
  EXPECT_THAT(Grid(window).accessibleDescription().toStdString(), HasSubstr("2 appointments"));
  EXPECT_TRUE(Plan(window).AllEvents());
  EXPECT_TRUE(Plan(window).DisplaySubject());
  QTest::keyClick(&Grid(window), Qt::Key_PageDown);
  EXPECT_EQ(Plan(window).DisplayedYear(), Year + 1);
  EXPECT_TRUE(Shows(window, 1));
  EXPECT_THAT(Bytes("team.ics").toStdString(), Not(HasSubstr("PLEASE IGNORE")));
}

TEST_F(PlannerWindow, RemarksTellWhatIsNotShownAsTheFileSays) {
  Write("team.ics", {{"20260504", "\u4f11\u65e5"}, {"20260506", "Plain"}, {"2026", "Odd"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  const auto* const remarks = window.findChild<QLabel*>("remarks");
  EXPECT_EQ(remarks->text(), "2 remarks on the file");
  EXPECT_THAT(remarks->toolTip().toStdString(), HasSubstr("1 subject holds characters"));
  EXPECT_THAT(remarks->toolTip().toStdString(), HasSubstr("team.ics:"));
}

TEST_F(PlannerWindow, FirstColoursNameTheCategoriesOfTheFile) {
  Write("team.ics", {{"20260504", "Holiday"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  EXPECT_THAT(Plan(window).GetStringList(), testing::ElementsAre("Leave", "Other"));
}

TEST_F(PlannerWindow, ClickOnABarOpensItsAppointmentAndOkSavesIntoTheFile) {
  Write("team.ics", {{"20260504", "Holiday"}, {"20261224", "Party"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  ASSERT_TRUE(Shows(window, 2));
  WhenOpen([](QDialog& dialog) {
    auto* const subject = dialog.findChild<QLineEdit*>("subject");
    ASSERT_TRUE(subject);
    EXPECT_EQ(subject->text(), "Party");
    subject->setText("Feast");
    QTest::keyClick(subject, Qt::Key_Return);
  });
  const QPoint bar = BarOf(window, "Party");
  QTest::mouseMove(&Grid(window), bar);
  QTest::mouseClick(&Grid(window), Qt::LeftButton, {}, bar);
  EXPECT_THAT(Bytes("team.ics").toStdString(), HasSubstr("SUMMARY:Feast"));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        const auto& events = Plan(window).Grid().Events();
        return std::any_of(events.begin(), events.end(),
                           [](const CalEvent& event) { return event.Subject == "Feast"; });
      },
      15000));
}

TEST_F(PlannerWindow, DragOverFreeDaysSelectsThemAndTheMenuMakesAnAppointmentOfThem) {
  Write("team.ics", {{"20260504", "Holiday"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  ASSERT_TRUE(Shows(window, 1));
  QWidget& grid = Grid(window);
  const double column = Plan(window).Grid().Geometry().ColumnWidth / TwipsPerPixel;
  // Columns 8 to 10 of the third row: 8 to 10 March.
  const int y = grid.height() / 12 * 5 / 2;
  const auto at = [&](double columns) { return QPoint(static_cast<int>(columns * column), y); };
  QTest::mouseMove(&grid, at(7.5));
  QTest::mousePress(&grid, Qt::LeftButton, {}, at(7.5));
  QTest::mouseMove(&grid, at(8.5));
  QTest::mouseMove(&grid, at(9.5));
  QTest::mouseRelease(&grid, Qt::LeftButton, {}, at(9.5));
  const auto* const date = window.findChild<QLabel*>("lblDate");
  EXPECT_THAT(date->text().toStdString(), HasSubstr("Selected:"));

  QTest::mouseClick(&grid, Qt::RightButton, {}, at(8.5));
  const QList<QMenu*> menus = window.findChildren<QMenu*>("mnuPop");
  ASSERT_FALSE(menus.isEmpty());
  EXPECT_TRUE(menus.back()->isVisible());
  menus.back()->hide();
  WhenOpen([](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QDateEdit*>("startDate")->date(), QDate(Year, 3, 8));
    EXPECT_EQ(dialog.findChild<QDateEdit*>("endDate")->date(), QDate(Year, 3, 10));
    dialog.findChild<QLineEdit*>("subject")->setText("Camp");
    QTest::keyClick(&dialog, Qt::Key_Return);
  });
  menus.back()->actions().front()->trigger();
  EXPECT_THAT(Bytes("team.ics").toStdString(), HasSubstr("SUMMARY:Camp"));
  EXPECT_TRUE(Shows(window, 2));
}

TEST_F(PlannerWindow, DeleteOfTheMenuAsksAndTheOtherWindowFollows) {
  Write("team.ics", {{"20260504", "Holiday"}, {"20261224", "Party"}});
  velkor::PlannerWindow other(settings_);
  Open(other, "team.ics");
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  ASSERT_TRUE(Shows(window, 2));
  ASSERT_TRUE(Shows(other, 2));
  const QPoint bar = BarOf(window, "Holiday");
  const auto remove = [&](Qt::Key answer) {
    QTest::mouseMove(&Grid(window), bar);
    QTest::mouseClick(&Grid(window), Qt::RightButton, {}, bar);
    auto* const menu = window.findChildren<QMenu*>("mnuPop").back();
    menu->hide();
    WhenOpen([answer](QDialog& dialog) {
      EXPECT_THAT(dynamic_cast<QMessageBox&>(dialog).text().toStdString(), HasSubstr("Holiday"));
      if (answer == Qt::Key_Y) {
        QTest::mouseClick(dynamic_cast<QMessageBox&>(dialog).button(QMessageBox::Yes),
                          Qt::LeftButton);
      } else {
        QTest::keyClick(&dialog, answer);
      }
    });
    menu->actions()[2]->trigger();
  };
  remove(Qt::Key_Return);
  EXPECT_THAT(Bytes("team.ics").toStdString(), HasSubstr("Holiday"));
  remove(Qt::Key_Y);
  EXPECT_THAT(Bytes("team.ics").toStdString(), Not(HasSubstr("Holiday")));
  EXPECT_TRUE(Shows(window, 1));
  EXPECT_TRUE(Shows(other, 1));
}

TEST_F(PlannerWindow, WhatAnotherProgramSavesAppearsAndAFileThatIsGoneIsTold) {
  Write("team.ics", {{"20260504", "Holiday"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  ASSERT_TRUE(Shows(window, 1));
  Write("team.ics", {{"20260504", "Holiday"}, {"20260713", "Trip"}});
  EXPECT_TRUE(Shows(window, 2));
  const auto* const trouble = window.findChild<QLabel*>("trouble");
  QFile::remove(folder_.filePath("team.ics"));
  EXPECT_TRUE(QTest::qWaitFor([&] { return trouble->text().contains("team.ics"); }, 8000));
  EXPECT_EQ(Plan(window).Grid().Events().Count(), 2U);
  Write("team.ics", {{"20260504", "Holiday"}, {"20260713", "Trip"}, {"20260901", "Back"}});
  EXPECT_TRUE(Shows(window, 3));
  EXPECT_EQ(trouble->text(), "");
}

TEST_F(PlannerWindow, AFileThatBecomesGarbageLeavesTheLastGoodYearOnShow) {
  Write("team.ics", {{"20260504", "Holiday"}, {"20260713", "Trip"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  ASSERT_TRUE(Shows(window, 2));
  const auto* const trouble = window.findChild<QLabel*>("trouble");
  WriteBytes("team.ics", QByteArray(5000, '\xFE'));
  EXPECT_TRUE(QTest::qWaitFor([&] { return !trouble->text().isEmpty(); }, 8000));
  EXPECT_EQ(Plan(window).Grid().Layout().bars.size(), 2U);
  Write("team.ics", {{"20260504", "Holiday"}});
  EXPECT_TRUE(Shows(window, 1));
  EXPECT_EQ(trouble->text(), "");
}

TEST_F(PlannerWindow, ASaveIntoALockedFileIsRefusedAndCanBeTriedAgain) {
  Write("team.ics", {{"20260504", "Holiday"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  ASSERT_TRUE(Shows(window, 1));
  QFile other(folder_.filePath("team.ics"));
  ASSERT_TRUE(other.open(QIODevice::ReadOnly));
  ASSERT_EQ(::flock(other.handle(), LOCK_EX), 0);
  const QByteArray before = Bytes("team.ics");
  WhenOpen([&](QDialog& dialog) {
    auto* const subject = dialog.findChild<QLineEdit*>("subject");
    ASSERT_TRUE(subject);
    subject->setText("Feast");
    QTest::keyClick(subject, Qt::Key_Return);
    EXPECT_NE(dialog.findChild<QLabel*>("complaint")->text(), "");
    EXPECT_EQ(Bytes("team.ics"), before);
    ::flock(other.handle(), LOCK_UN);
    QTest::keyClick(subject, Qt::Key_Return);
  });
  const QPoint bar = BarOf(window, "Holiday");
  QTest::mouseMove(&Grid(window), bar);
  QTest::mouseClick(&Grid(window), Qt::LeftButton, {}, bar);
  EXPECT_THAT(Bytes("team.ics").toStdString(), HasSubstr("SUMMARY:Feast"));
}

TEST_F(PlannerWindow, FiftyThousandAppointmentsAreShown) {
  constexpr int Count = 50'000;
  WriteBytes("team.ics", Calendar(Count));
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  EXPECT_TRUE(Shows(window, Count));
}

TEST_F(PlannerWindow, SettingsAreKeptForEachCalendarAndTheYearStays) {
  Write("a.ics", {{"20260504", "Holiday"}});
  Write("b.ics", {{"20260504", "Holiday"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "a.ics");
  QTest::keyClick(&Grid(window), Qt::Key_PageUp);
  WhenOpen([](QDialog& dialog) {
    dialog.findChild<QComboBox*>("FirstMonth")->setCurrentIndex(3);
    dialog.findChild<QLineEdit*>("TitleName")->setText("Mine");
    QTest::mouseClick(dialog.findChild<QDialogButtonBox*>()->button(QDialogButtonBox::Ok),
                      Qt::LeftButton);
  });
  window.AskForSettings();
  EXPECT_EQ(Plan(window).DisplayedYear(), Year - 1);
  EXPECT_EQ(Plan(window).Grid().Span().FirstMonth, 4);
  EXPECT_EQ(Plan(window).TitleName(), "Mine");
  ASSERT_TRUE(window.OpenCalendar(Path("b.ics")));
  EXPECT_EQ(Plan(window).FirstMonth(), 1);
  ASSERT_TRUE(window.OpenCalendar(Path("a.ics")));
  EXPECT_EQ(Plan(window).FirstMonth(), 4);
}

TEST_F(PlannerWindow, RemembersItsSizeAndCalendarAndStoredNonsenseDoesNotStopIt) {
  Write("team.ics", {{"20260504", "Holiday"}});
  {
    velkor::PlannerWindow window(settings_);
    EXPECT_EQ(window.LastCalendar(), "");
    Open(window, "team.ics");
    window.resize(700, 500);
    window.close();
  }
  settings_.Save(SettingsName, "Calendar " + Path("team.ics"), "StartMonth", "none");
  settings_.Save(SettingsName, "Calendar " + Path("team.ics"), "AllEvents", "2");
  velkor::PlannerWindow window(settings_);
  EXPECT_EQ(window.size(), QSize(700, 500));
  ASSERT_EQ(window.LastCalendar(), Path("team.ics"));
  Open(window, "team.ics");
  EXPECT_TRUE(Shows(window, 1));
  settings_.Save(SettingsName, "Window", "Geometry", "nonsense");
  velkor::PlannerWindow third(settings_);
  EXPECT_GT(third.width(), 700);
}

TEST_F(PlannerWindow, CalendarThatCannotBeReadIsToldAndTheOldOneStays) {
  Write("team.ics", {{"20260504", "Holiday"}});
  velkor::PlannerWindow window(settings_);
  Open(window, "team.ics");
  WhenOpen([](QDialog& dialog) {
    EXPECT_THAT(dynamic_cast<QMessageBox&>(dialog).text().toStdString(), HasSubstr("none.ics"));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_FALSE(window.OpenCalendar(Path("none.ics")));
  EXPECT_EQ(window.windowTitle(), "team - YearPlan");
  EXPECT_TRUE(Shows(window, 1));
  EXPECT_EQ(window.LastCalendar(), Path("team.ics"));
}

TEST_F(PlannerWindow, DroppedCalendarIsOpenedAndNothingElse) {
  Write("team.ics", {{"20260504", "Holiday"}});
  velkor::PlannerWindow window(settings_);
  window.show();
  for (const char* name : {"team.txt", "team.ics"}) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(folder_.filePath(name))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &enter);
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window, &drop);
    EXPECT_EQ(window.Session() != nullptr, std::string(name) == "team.ics");
  }
}

}  // namespace
}  // namespace velkor
