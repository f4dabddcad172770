// tests/hosts/PlannerWindowTest.cpp: the window over real calendar files, used by mouse and keys.
#include "hosts/yearplan/window/PlannerWindow.h"

#include <gmock/gmock.h>
#include <sys/file.h>
#include <sys/resource.h>

#include <QAccessible>
#include <QComboBox>
#include <QDateEdit>
#include <QDropEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QMessageBox>
#include <QMimeData>
#include <QPrinterInfo>
#include <QScreen>
#include <QToolButton>
#include <algorithm>
#include <deque>

#include "control/YearPlan.h"
#include "platform/desktop/QtPages.h"
#include "tests/hosts/WindowCase.h"
#include "tests/platform/desktop/OpenDialog.h"
#include "view/YearGrid.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::Not;

class PlannerWindow : public WindowCase {};

TEST_F(PlannerWindow, ShowsTheYearOfTheCalendarThroughTheCacheUtility) {
  Write("team.ics",
        CalendarOf({{"20260504", "Holiday"}, {"20261224", "Party"}, {"20270101", "Later"}}));
  Open(window_);
  ASSERT_TRUE(Shows(2));
  EXPECT_EQ(window_.windowTitle(), "team - Year 2026 - YearPlan");
  EXPECT_EQ(window_.focusWidget(), &Grid());
  EXPECT_THAT(Grid().accessibleDescription().toStdString(), HasSubstr("2 appointments"));
  EXPECT_TRUE(Plan().Properties().AllEvents);
  EXPECT_TRUE(Plan().Properties().DisplaySubject);
  EXPECT_THAT(Plan().GetStringList(), testing::ElementsAre("Leave", "Other"));
  QTest::keyClick(&Grid(), Qt::Key_PageDown);
  EXPECT_EQ(Plan().DisplayedYear(), Year + 1);
  EXPECT_EQ(window_.windowTitle(), "team - Year 2027 - YearPlan");
  EXPECT_TRUE(Shows(1));
  EXPECT_THAT(Bytes("team.ics").toStdString(), Not(HasSubstr("PLEASE IGNORE")));
}

TEST_F(PlannerWindow, TabReachesToolbarGridAndLegendInBothDirections) {
  OpenWith({{"20260504", "Holiday"}});
  for (const auto key : {Qt::Key_Tab, Qt::Key_Backtab}) {
    Grid().setFocus();
    QStringList reached;
    do {
      reached << window_.focusWidget()->objectName();
      QTest::keyClick(window_.focusWidget(), key);
    } while (window_.focusWidget() != &Grid() && reached.size() < 50);
    if (key == Qt::Key_Backtab) std::reverse(reached.begin() + 1, reached.end());
    EXPECT_EQ(reached, QStringList({"pic1", "picCats", "Back", "Next", "Filter", "Print", "Open",
                                    "Save", "Command1"}));
  }
}

TEST_F(PlannerWindow, BandsCanBeReadAndAreScrolledAndTheWindowFitsItsScreen) {
  Days days;
  for (int i = 0; i < 60; ++i) days.emplace_back("20260504", "Crowd");
  Write("team.ics", CalendarOf(days));
  const QSize first = window_.size();
  EXPECT_EQ(first.boundedTo(window_.screen()->availableSize()), first);
  Open(window_);
  ASSERT_TRUE(Shows(days.size()));
  const GridGeometry& geometry = Plan().Grid().Geometry();
  EXPECT_TRUE(geometry.scroll);
  QtMeasuringPage measuring(geometry.pixel);
  Font font;
  font.size = 7;
  EXPECT_GE(double{geometry.BandHeight}, measuring.Page().Measure("0", font).height);
}

TEST_F(PlannerWindow, RemarksTellWhatIsNotShownAsTheFileSays) {
  Write("team.ics",
        CalendarOf({{"20260504", "\u4f11\u65e5"}, {"20260506", "Plain"}, {"2026", "Odd"}}));
  Open(window_);
  const auto* const remarks = window_.findChild<QLabel*>("remarks");
  EXPECT_EQ(remarks->text(), "1 remark");
  EXPECT_THAT(remarks->toolTip().toStdString(), HasSubstr("team.ics:"));
  for (QWidget* const widget : window_.findChildren<QWidget*>()) {
    const auto* const spoken = QAccessible::queryAccessibleInterface(widget);
    const QString description = spoken ? spoken->text(QAccessible::Description) : QString();
    EXPECT_FALSE(description.contains("<p")) << description.toStdString();
  }
}

TEST_F(PlannerWindow, WithoutFoldersTheYearIsShownFromMemoryWithRemarksThatNameTheirVariables) {
  const QByteArray cacheHome = qgetenv("XDG_CACHE_HOME");
  qputenv("XDG_CACHE_HOME", "/dev/null/none");
  settings_.readOnly = true;
  OpenWith({{"20260504", "Holiday"}, {"20261224", "Party"}});
  const QString told = window_.findChild<QLabel*>("remarks")->toolTip();
  EXPECT_EQ(told.count("in memory"), 2);
  EXPECT_TRUE(told.contains("XDG_CACHE_HOME"));
  EXPECT_TRUE(told.contains("settings"));
  Write("team.ics", CalendarOf({{"20260504", "Holiday"}}));
  Plan().Elements().Command1.Click();
  EXPECT_TRUE(Shows(1));
  qputenv("XDG_CACHE_HOME", cacheHome);
}

TEST_F(PlannerWindow, WithoutAFolderForDataSingleCalendarsOpenAndSetsSayWhyNot) {
  const DataFolder none("/dev/null/none");
  Write("team.ics", CalendarOf({{"20260504", "Holiday"}}));
  velkor::PlannerWindow window(settings_);
  Open(window);
  EXPECT_TRUE(Shows(window, 1));
  WhenOpen([](QDialog& dialog) {
    EXPECT_THAT(dynamic_cast<QMessageBox&>(dialog).text().toStdString(), HasSubstr("/dev/null"));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  QTest::keyClick(&window, Qt::Key_N, Qt::ControlModifier);
  EXPECT_EQ(window.LastCalendar(), Path("team.ics"));
}

TEST_F(PlannerWindow, ClickOnABarOpensItsAppointmentAndOkSavesIntoTheFile) {
  OpenWith({{"20260504", "Holiday"}, {"20261224", "Party"}});
  WhenOpen([](QDialog& dialog) {
    auto* const subject = dialog.findChild<QLineEdit*>("subject");
    ASSERT_TRUE(subject);
    EXPECT_EQ(subject->text(), "Party");
    subject->setText("Feast");
    QTest::keyClick(subject, Qt::Key_Return);
  });
  ClickBarOf("Party");
  EXPECT_THAT(Bytes("team.ics").toStdString(), HasSubstr("SUMMARY:Feast"));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] {
        const auto& events = Plan().Grid().Events();
        return std::any_of(events.begin(), events.end(),
                           [](const CalEvent& event) { return event.Subject == "Feast"; });
      },
      15000));
}

TEST_F(PlannerWindow, DragOverFreeDaysSelectsThemAndTheMenuMakesAnAppointmentOfThem) {
  OpenWith({{"20260504", "Holiday"}});
  QWidget& grid = Grid();
  const double column = Plan().Grid().Geometry().ColumnWidth / TwipsPerPixel;
  // Columns 8 to 10 of the third row: 8 to 10 March.
  const int y = grid.height() / 12 * 5 / 2;
  const auto at = [&](double columns) { return QPoint(static_cast<int>(columns * column), y); };
  QTest::mouseMove(&grid, at(7.5));
  QTest::mousePress(&grid, Qt::LeftButton, {}, at(7.5));
  QTest::mouseMove(&grid, at(8.5));
  QTest::mouseMove(&grid, at(9.5));
  QTest::mouseRelease(&grid, Qt::LeftButton, {}, at(9.5));
  const auto* const date = window_.findChild<QLabel*>("lblDate");
  EXPECT_THAT(date->text().toStdString(), HasSubstr("Selected:"));

  QTest::mouseClick(&grid, Qt::RightButton, {}, at(8.5));
  const QList<QMenu*> menus = window_.findChildren<QMenu*>("mnuPop");
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
  EXPECT_TRUE(Shows(2));
}

TEST_F(PlannerWindow, DeleteOfTheMenuAsksAndTheOtherWindowFollows) {
  OpenWith({{"20260504", "Holiday"}, {"20261224", "Party"}});
  velkor::PlannerWindow other(settings_);
  Open(other);
  ASSERT_TRUE(Shows(other, 2));
  const auto remove = [&](bool really) {
    ClickBarOf("Holiday", Qt::RightButton);
    auto* const menu = window_.findChildren<QMenu*>("mnuPop").back();
    menu->hide();
    WhenOpen([really](QDialog& dialog) {
      EXPECT_THAT(dynamic_cast<QMessageBox&>(dialog).text().toStdString(), HasSubstr("Holiday"));
      really ? Press(dialog, QDialogButtonBox::Yes) : QTest::keyClick(&dialog, Qt::Key_Return);
    });
    menu->actions()[2]->trigger();
  };
  remove(false);
  EXPECT_THAT(Bytes("team.ics").toStdString(), HasSubstr("Holiday"));
  remove(true);
  EXPECT_THAT(Bytes("team.ics").toStdString(), Not(HasSubstr("Holiday")));
  EXPECT_TRUE(Shows(1));
  EXPECT_TRUE(Shows(other, 1));
}

TEST_F(PlannerWindow, WhatAnotherProgramSavesAppearsAndAFileThatIsGoneOrGarbageIsTold) {
  const Days good{{"20260504", "Holiday"}, {"20260713", "Trip"}};
  OpenWith({{"20260504", "Holiday"}});
  const auto* const trouble = window_.findChild<QLabel*>("trouble");
  for (const bool gone : {true, false}) {
    Write("team.ics", CalendarOf(good));
    EXPECT_TRUE(Shows(2));
    EXPECT_EQ(trouble->text(), "");
    if (gone) {
      QFile::remove(File("team.ics"));
    } else {
      Write("team.ics", QByteArray(5000, '\xFE'));
    }
    EXPECT_TRUE(QTest::qWaitFor([&] { return trouble->text().contains("team.ics"); }, 8000));
    EXPECT_EQ(Plan().Grid().Layout().bars.size(), 2U);
    Write("team.ics", CalendarOf({{"20260901", "Back"}}));
    EXPECT_TRUE(Shows(1));
  }
  EXPECT_EQ(trouble->text(), "");
}

TEST_F(PlannerWindow, ASaveIntoALockedFileIsRefusedAndCanBeTriedAgain) {
  OpenWith({{"20260504", "Holiday"}});
  QFile other(File("team.ics"));
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
  ClickBarOf("Holiday");
  EXPECT_THAT(Bytes("team.ics").toStdString(), HasSubstr("SUMMARY:Feast"));
}

TEST_F(PlannerWindow, FiftyThousandAppointmentsAreShown) {
  constexpr int Count = 50'000;
  Write("team.ics", Calendar(Count));
  Open(window_);
  EXPECT_TRUE(Shows(Count));
}

/// Bounds how far this thread's stack may grow, in bytes.
class StackLimit {
 public:
  explicit StackLimit(rlim_t bytes) {
    ::getrlimit(RLIMIT_STACK, &before_);
    const rlimit limit{bytes, before_.rlim_max};
    ::setrlimit(RLIMIT_STACK, &limit);
  }
  ~StackLimit() { ::setrlimit(RLIMIT_STACK, &before_); }
  StackLimit(const StackLimit&) = delete;
  StackLimit& operator=(const StackLimit&) = delete;

 private:
  rlimit before_{};
};

TEST_F(PlannerWindow, KeysHeldWhileTheFileChangesNeverPileUp) {
  OpenWith({{"20260504", "Holiday"}, {"20260706", "Trip"}});
  const StackLimit small(rlim_t{1} << 19);
  int left = 1000;
  int idle = 0;
  QTimer keyboard;
  QObject::connect(&keyboard, &QTimer::timeout, [&] {
    if (auto* const box = qobject_cast<QMessageBox*>(QApplication::activeModalWidget())) {
      ADD_FAILURE() << box->text().toStdString();
      box->reject();
    }
    if (left % 200 == 0) Replace(CalendarOf({{"20260504", left > 200 ? "Away" : "Off"}}));
    for (const auto key : {Qt::Key_PageDown, Qt::Key_PageUp}) {
      QCoreApplication::postEvent(&Grid(), new QKeyEvent(QEvent::KeyPress, key, {}));
    }
    --left;
  });
  keyboard.start(1);
  while (left > 0) {
    QCoreApplication::processEvents(QEventLoop::AllEvents, 20);
    ++idle;
  }
  keyboard.stop();
  EXPECT_GT(idle, 10) << "the loop around the control never gets its turn";
  ASSERT_TRUE(Shows(1));
  EXPECT_EQ(Plan().DisplayedYear(), Year);
  EXPECT_TRUE(QTest::qWaitFor([&] { return Plan().Grid().Events()[0].Subject == "Off"; }, 15000));
  EXPECT_FALSE(QApplication::activeModalWidget());
}

/// VELKOR_ARRIVALS sets how many changes come, one a second; the short form hurries.
TEST_F(PlannerWindow, FivePlannersOfOneCalendarEndAlikeAndTellNothing) {
  constexpr int Few = 12;
  const int arrivals = std::max(Few, qEnvironmentVariableIntValue("VELKOR_ARRIVALS"));
  std::vector<std::pair<QByteArray, QByteArray>> events;
  const auto save = [&] {
    QByteArray text;
    for (const auto& [uid, lines] : events) text += Event(uid, lines);
    Replace(velkor::CalendarOf(text));
  };
  save();
  std::deque<velkor::PlannerWindow> windows;
  for (int i = 0; i < 5; ++i) Open(windows.emplace_back(settings_));
  for (int i = 0; i < arrivals; ++i) {
    const QByteArray number = QByteArray::number(i);
    const QByteArray day = QByteArray::number(20260101 + i * 7 % 12 * 100 + i % 28);
    events.emplace_back(number,
                        "DTSTART;VALUE=DATE:" + day + "\r\nSUMMARY:Tom's " + number + "\r\n");
    if (i % 4 == 3) events.erase(events.begin() + i / 4);
    if (i % 5 == 4) events.front().second += "LOCATION:Ghent\r\n";
    save();
    QTest::qWait(arrivals > Few ? 1000 : 250);
    ASSERT_FALSE(QApplication::activeModalWidget());
  }
  const auto shownBy = [&](velkor::PlannerWindow& window) {
    std::vector<std::string> shown;
    for (const CalEvent& event : Plan(window).Grid().Events()) shown.push_back(event.EventID);
    return shown;
  };
  for (velkor::PlannerWindow& window : windows) {
    EXPECT_TRUE(Shows(window, events.size()));
    EXPECT_TRUE(QTest::qWaitFor([&] { return shownBy(window) == shownBy(windows[0]); }, 15000));
    EXPECT_EQ(window.findChild<QLabel*>("trouble")->text(), "");
  }
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(PlannerWindow, SettingsAreKeptForEachCalendarAndTheYearStays) {
  Write("a.ics", CalendarOf({{"20260504", "Holiday"}}));
  Write("b.ics", CalendarOf({{"20260504", "Holiday"}}));
  Open(window_, "a.ics");
  QTest::keyClick(&Grid(), Qt::Key_PageUp);
  WhenOpen([](QDialog& dialog) {
    dialog.findChild<QComboBox*>("StartMonth")->setCurrentIndex(3);
    dialog.findChild<QLineEdit*>("TitleName")->setText("Mine");
    Press(dialog, QDialogButtonBox::Ok);
  });
  window_.AskForSettings();
  EXPECT_EQ(Plan().DisplayedYear(), Year - 1);
  EXPECT_EQ(Plan().Grid().Span().FirstMonth, 4);
  EXPECT_EQ(Plan().Properties().TitleName, "Mine");
  ASSERT_TRUE(window_.OpenCalendar(Path("b.ics")));
  EXPECT_EQ(Plan().Properties().FirstMonth, 1);
  ASSERT_TRUE(window_.OpenCalendar(Path("a.ics")));
  EXPECT_EQ(Plan().Properties().FirstMonth, 4);
}

TEST_F(PlannerWindow, RemembersItsSizeAndCalendarAndStoredNonsenseDoesNotStopIt) {
  Write("team.ics", CalendarOf({{"20260504", "Holiday"}}));
  {
    velkor::PlannerWindow window(settings_);
    EXPECT_EQ(window.LastCalendar(), "");
    Open(window);
    window.resize(700, 500);
    window.close();
  }
  settings_.Save(SettingsName, "Calendar " + Path("team.ics"), "StartMonth", "none");
  settings_.Save(SettingsName, "Calendar " + Path("team.ics"), "AllEvents", "2");
  velkor::PlannerWindow window(settings_);
  EXPECT_EQ(window.size(), QSize(700, 500));
  ASSERT_EQ(window.LastCalendar(), Path("team.ics"));
  Open(window);
  EXPECT_TRUE(Shows(window, 1));
  settings_.Save(SettingsName, "Window", "Geometry", "nonsense");
  velkor::PlannerWindow third(settings_);
  EXPECT_GT(third.width(), 700);
}

TEST_F(PlannerWindow, APageThatNobodyShowsAndACalendarThatCannotBeReadAreToldAndAllStays) {
  OpenWith({{"20260504", "Holiday"}});
  WhenOpen([](QDialog& dialog) {
    EXPECT_THAT(dynamic_cast<QMessageBox&>(dialog).text().toStdString(), HasSubstr("help.html"));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  Plan().Elements().mnuHelp.Click();
  WhenOpen([](QDialog& dialog) {
    EXPECT_THAT(dynamic_cast<QMessageBox&>(dialog).text().toStdString(), HasSubstr("none.ics"));
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_FALSE(window_.OpenCalendar(Path("none.ics")));
  EXPECT_EQ(window_.windowTitle(), "team - Year 2026 - YearPlan");
  EXPECT_TRUE(Shows(1));
  EXPECT_EQ(window_.LastCalendar(), Path("team.ics"));
}

TEST_F(PlannerWindow, DroppedCalendarIsOpenedAndNothingElse) {
  Write("team.ics", CalendarOf({{"20260504", "Holiday"}}));
  window_.show();
  for (const char* name : {"team.txt", "team.ics"}) {
    QMimeData data;
    data.setUrls({QUrl::fromLocalFile(File(name))});
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window_, &enter);
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window_, &drop);
    EXPECT_EQ(window_.Session() != nullptr, std::string(name) == "team.ics");
  }
}

TEST_F(PlannerWindow, CtrlPShowsThePreviewWhichPrintsToAFileAndSaysWhere) {
  if (!QPrinterInfo::availablePrinterNames().isEmpty()) GTEST_SKIP() << "there are printers";
  OpenWith({{"20260504", "Away"}});
  QString told;
  WhenOpen([&](QDialog& preview) {
    auto& status = *preview.findChild<QLabel*>("txtStatus");
    EXPECT_TRUE(QTest::qWaitFor([&] { return status.text().startsWith("Page 1 of 1"); }));
    WhenOpen([&](QDialog& files) {
      files.findChild<QLineEdit*>("fileNameEdit")->setText(File("year.pdf"));
      QTest::keyClick(files.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
    });
    preview.findChild<QToolButton*>("Print")->click();
    told = status.text();
    QTest::keyClick(&preview, Qt::Key_Escape);
  });
  QTest::keyClick(&window_, Qt::Key_P, Qt::ControlModifier);
  EXPECT_EQ(told, "Printed to " + File("year.pdf"));
}

TEST_F(PlannerWindow, AYearThatLooksEmptySaysWhyOnceItWasRead) {
  OpenWith({{"20260504", "Holiday"}});
  auto* const notice = window_.findChild<QWidget*>("notice");
  const auto isRead = [&] { return notice->isVisible(); };
  const auto says = [&] {
    const QImage with = Grid().grab().toImage();
    notice->hide();
    return Grid().grab().toImage() != with;
  };
  ASSERT_TRUE(QTest::qWaitFor(isRead, 15000));
  EXPECT_FALSE(says());
  QTest::keyClick(&Grid(), Qt::Key_PageUp);
  EXPECT_FALSE(isRead());
  ASSERT_TRUE(QTest::qWaitFor(isRead, 15000));
  EXPECT_TRUE(says());
  EXPECT_THAT(Grid().accessibleDescription().toStdString(), HasSubstr("has no appointments"));
}

}  // namespace
}  // namespace velkor
