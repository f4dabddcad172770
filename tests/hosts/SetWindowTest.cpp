// tests/hosts/SetWindowTest.cpp: a window over several calendars, by drops, menus, pane and
// inspector.
#include <QAction>
#include <QComboBox>
#include <QDropEvent>
#include <QFileDialog>
#include <QLabel>
#include <QLineEdit>
#include <QListWidget>
#include <QMenu>
#include <QMenuBar>
#include <QMimeData>
#include <QToolButton>

#include "hosts/yearplan/window/CalendarDock.h"
#include "tests/hosts/WindowCase.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::Not;

class SetWindow : public WindowCase {
 protected:
  SetWindow() {
    Write("anna.ics", CalendarOf({{"20260504", "Holiday"}, {"20260706", "Trip"}}));
    Write("bert.ics", CalendarOf({{"20260505", "Party"}}));
    window_.resize(1200, 700);
    window_.show();
  }

  void Drop(const QStringList& names) {
    QMimeData data;
    QList<QUrl> urls;
    for (const QString& name : names) urls << QUrl::fromLocalFile(File(name));
    data.setUrls(urls);
    QDragEnterEvent enter(QPoint(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window_, &enter);
    QDropEvent drop(QPointF(50, 50), Qt::CopyAction, &data, Qt::LeftButton, {});
    QCoreApplication::sendEvent(&window_, &drop);
  }
  /// Drops two calendars and waits for their year.
  void OpenBoth() {
    Drop({"anna.ics", "bert.ics"});
    ASSERT_TRUE(window_.Session());
    window_.Session()->ShowYear(Year);
    ASSERT_TRUE(Shows(3));
  }
  /// Presses a menu's entry; its text without the mark of its key.
  void Choose(const char* entry) {
    for (QAction* const action : window_.findChildren<QAction*>()) {
      if (action->text().remove('&') == entry) return action->trigger();
    }
    ADD_FAILURE() << "No entry " << entry;
  }
  void ChooseOfRow(int row, const char* entry) {
    List().setCurrentRow(row);
    QMenu& menu = *window_.findChild<QToolButton*>("calendarMenu")->menu();
    emit menu.aboutToShow();
    menu.findChild<QAction*>(entry)->trigger();
  }
  QListWidget& List() { return *window_.findChild<QListWidget*>("calendarList"); }
  CalendarDock& Dock() { return *window_.findChild<CalendarDock*>(); }
  QString Title() { return window_.windowTitle().section(" - ", 0, 0); }
};

TEST_F(SetWindow, DroppedFilesBecomeASetThatIsSavedAndFoundAgain) {
  OpenBoth();
  EXPECT_EQ(Title(), "anna and 1 more");
  EXPECT_TRUE(Dock().isVisible());
  ASSERT_EQ(List().count(), 2);
  EXPECT_EQ(List().item(1)->text(), "bert");
  Write("carl.ics", CalendarOf({{"20260901", "Move"}}));
  Drop({"carl.ics"});
  EXPECT_EQ(Title(), "anna and 2 more");
  EXPECT_EQ(Plan().DisplayedYear(), Year);
  EXPECT_TRUE(Shows(4));
  WhenOpen([&](QDialog& files) {
    files.findChild<QLineEdit*>("fileNameEdit")->setText(File("team"));
    QTest::keyClick(files.findChild<QLineEdit*>("fileNameEdit"), Qt::Key_Return);
  });
  Choose("Save Set As...");
  EXPECT_EQ(Title(), "team");
  EXPECT_THAT(Bytes("team.yearplan").toStdString(), HasSubstr("carl.ics"));
  EXPECT_EQ(window_.LastCalendar(), Path("team.yearplan"));
  QMenu& recent = *window_.findChild<QMenu*>("recent");
  emit recent.aboutToShow();
  EXPECT_TRUE(recent.actions()[0]->text().startsWith("&1 team.yearplan"));
  EXPECT_TRUE(recent.actions()[1]->isSeparator()) << "a set that nobody saved is listed";

  velkor::PlannerWindow other(settings_);
  Open(other, "team.yearplan");
  EXPECT_TRUE(Shows(other, 4));
  ChooseOfRow(2, "remove");
  EXPECT_TRUE(Shows(3));
  EXPECT_TRUE(Shows(other, 3));
}

TEST_F(SetWindow, BoxesHideNamesAndDaysOffAreKeptAndColoursAreThoseOfCalendars) {
  OpenBoth();
  List().item(0)->setCheckState(Qt::Unchecked);
  EXPECT_TRUE(Shows(1));
  List().item(0)->setCheckState(Qt::Checked);
  EXPECT_TRUE(Shows(3));
  List().item(1)->setText("Robert");
  const QImage byCategory = Grid().grab().toImage();
  Choose("Colour Bars by Calendar");
  EXPECT_NE(Grid().grab().toImage(), byCategory);
  Choose("Colour Bars by Calendar");
  EXPECT_EQ(Grid().grab().toImage(), byCategory);
  ChooseOfRow(1, "daysOff");
  EXPECT_TRUE(Shows(2));
  EXPECT_NE(Grid().grab().toImage(), byCategory);
  EXPECT_TRUE(QTest::qWaitFor([&] {
    return List().item(1)->data(Qt::AccessibleTextRole).toString() == "Robert: Days off";
  }));
}

TEST_F(SetWindow, TheInspectorPutsANewAppointmentAndMovesAnotherOne) {
  OpenBoth();
  const auto calendarOf = [](QDialog& dialog, int chosen) {
    auto* const box = dialog.findChild<QComboBox*>("calendar");
    EXPECT_EQ(box->currentIndex(), 0);
    box->setCurrentIndex(chosen);
    QTest::keyClick(dialog.findChild<QLineEdit*>("subject"), Qt::Key_Return);
  };
  WhenOpen([&](QDialog& dialog) { calendarOf(dialog, 1); });
  ClickBarOf("Trip");
  EXPECT_THAT(Bytes("anna.ics").toStdString(), Not(HasSubstr("Trip")));
  EXPECT_THAT(Bytes("bert.ics").toStdString(), HasSubstr("Trip"));
  EXPECT_TRUE(Shows(3));
  WhenOpen([&](QDialog& dialog) {
    dialog.findChild<QLineEdit*>("subject")->setText("Feast");
    calendarOf(dialog, 1);
  });
  const auto column = Plan().Grid().Geometry().ColumnWidth / TwipsPerPixel;
  const QPoint day(static_cast<int>(8.5 * column), Grid().height() / 12 * 5 / 2);
  QTest::mouseMove(&Grid(), day);
  QTest::mouseClick(&Grid(), Qt::RightButton, {}, day);
  auto* const menu = window_.findChildren<QMenu*>("mnuPop").back();
  menu->hide();
  menu->actions().front()->trigger();
  EXPECT_THAT(Bytes("bert.ics").toStdString(), HasSubstr("Feast"));
}

TEST_F(SetWindow, OneCalendarsFaultIsALineOfThePaneAndTheOthersStay) {
  OpenBoth();
  QFile::remove(File("bert.ics"));
  EXPECT_TRUE(QTest::qWaitFor(
      [&] { return List().item(1)->data(Qt::AccessibleTextRole).toString().contains("Failing"); },
      8000));
  Write("anna.ics", CalendarOf({{"20260504", "Holiday"}}));
  EXPECT_TRUE(Shows(2));
  EXPECT_FALSE(QApplication::activeModalWidget());
}

TEST_F(SetWindow, ThePaneIsRememberedForSetsAndForSingleCalendarsApart) {
  Drop({"anna.ics"});
  EXPECT_FALSE(Dock().isVisible());
  EXPECT_EQ(Title(), "anna");
  Choose("New Set");
  EXPECT_EQ(Title(), "New set");
  EXPECT_TRUE(Dock().isVisible());
  EXPECT_FALSE(List().isVisible());
  Dock().toggleViewAction()->trigger();
  ASSERT_TRUE(window_.OpenCalendar(Path("bert.ics")));
  Dock().toggleViewAction()->trigger();
  EXPECT_EQ(List().item(0)->text(), "bert");
  velkor::PlannerWindow other(settings_);
  Open(other, "anna.ics");
  EXPECT_TRUE(other.findChild<CalendarDock*>()->isVisible());
  window_.close();
  other.close();
  EXPECT_EQ(settings_.Get("yearplan", "Calendar pane", "Shown for sets", ""), "False");
}

}  // namespace
}  // namespace velkor
