// tests/hosts/AppointmentInspectorTest.cpp: what a user types into the inspector reaches the item.
#include "hosts/yearplan/window/AppointmentInspector.h"

#include <gmock/gmock.h>

#include <QCheckBox>
#include <QComboBox>
#include <QDateEdit>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QTest>
#include <QTimeEdit>

#include "tests/calendar/CalendarDoubles.h"
#include "tests/model/CalendarInMemory.h"
#include "tests/platform/desktop/OpenDialog.h"

namespace velkor {
namespace {

using testing::HasSubstr;

class AppointmentInspector : public CalendarInMemory {
 protected:
  AppointmentInspector() { calendar_.SetWriter(&writer_); }

  std::unique_ptr<OutlookItem> Appointment(Date start, Date end, bool allDay,
                                           bool recurring = false) {
    CalendarItem item = SampleItem("a", start, end);
    item.fields.subject = "Holiday <b>";
    item.fields.location = "Home";
    item.fields.categories = {"Leave"};
    item.fields.body = "First line\r\nSecond line";
    item.fields.allDay = allDay;
    item.recurring = recurring;
    if (recurring) item.occurrences = {{start, end}};
    calendar_.Add(item);
    return Saved("a");
  }
  std::unique_ptr<OutlookItem> New() {
    return embedded_.GetNamespace("MAPI")
        ->GetDefaultFolder(outlook::FolderCalendar)
        ->Items()
        ->Add("");
  }
  /// The item as it stands in the calendar.
  std::unique_ptr<OutlookItem> Saved(const char* entryId) {
    return embedded_.GetNamespace("MAPI")->GetItemFromID(entryId, "store");
  }

  static void Inspect(OutlookItem& item, const std::function<void(QDialog&)>& steps) {
    WhenOpen(steps);
    InspectAppointment(nullptr, item);
  }
  static void Type(QDialog& dialog, const char* field, const char* text) {
    auto* const line = dialog.findChild<QLineEdit*>(field);
    line->selectAll();
    QTest::keyClicks(line, text);
  }

  ScriptedWriter writer_;
};

TEST_F(AppointmentInspector, OkSavesWhatWasTypedAndLeavesTheRest) {
  const auto item =
      Appointment(Date::FromFields({2026, 5, 4, 9, 30, 15}), At(2026, 5, 4, 11, 0), false);
  Inspect(*item, [](QDialog& dialog) {
    EXPECT_EQ(dialog.findChild<QPlainTextEdit*>("notes")->toPlainText(), "First line\nSecond line");
    EXPECT_EQ(dialog.findChild<QLineEdit*>("categories")->text(), "Leave");
    Type(dialog, "subject", "Trip");
    Type(dialog, "categories", "Trip, Leave");
    Press(dialog, QDialogButtonBox::Ok);
  });
  const auto saved = Saved("a");
  EXPECT_EQ(saved->Subject(), "Trip");
  EXPECT_EQ(saved->Categories(), "Trip, Leave");
  EXPECT_EQ(saved->Location(), "Home");
  EXPECT_EQ(saved->Body(), "First line\r\nSecond line");
  EXPECT_EQ(saved->Start(), Date::FromFields({2026, 5, 4, 9, 30, 15}));
}

TEST_F(AppointmentInspector, AllDayBoxTurnsDaysIntoTimesAndBack) {
  const auto item = Appointment(At(2026, 5, 4), At(2026, 5, 5), true);
  Inspect(*item, [](QDialog& dialog) {
    auto* const allDay = dialog.findChild<QCheckBox*>("allDay");
    auto* const end = dialog.findChild<QDateEdit*>("endDate");
    allDay->click();
    EXPECT_EQ(end->date(), QDate(2026, 5, 5));
    allDay->click();
    EXPECT_EQ(end->date(), QDate(2026, 5, 4));
    allDay->click();
    dialog.findChild<QTimeEdit*>("startTime")->setTime(QTime(9, 0));
    EXPECT_EQ(dialog.findChild<QTimeEdit*>("endTime")->time(), QTime(9, 0));
    end->setDate(QDate(2026, 5, 4));
    dialog.findChild<QTimeEdit*>("endTime")->setTime(QTime(10, 15));
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_FALSE(Saved("a")->AllDayEvent());
  EXPECT_EQ(Saved("a")->Start(), At(2026, 5, 4, 9, 0));
  EXPECT_EQ(Saved("a")->End(), At(2026, 5, 4, 10, 15));
}

TEST_F(AppointmentInspector, EndBeforeTheStartIsRefusedAndNothingIsLost) {
  const auto item = Appointment(At(2026, 5, 4), At(2026, 5, 6), true);
  Inspect(*item, [](QDialog& dialog) {
    Type(dialog, "subject", "Trip");
    dialog.findChild<QDateEdit*>("endDate")->setDate(QDate(2026, 5, 3));
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_TRUE(dialog.isVisible());
    EXPECT_TRUE(dialog.findChild<QLabel*>("complaint")->isVisible());
    EXPECT_EQ(dialog.findChild<QLineEdit*>("subject")->text(), "Trip");
    dialog.findChild<QDateEdit*>("endDate")->setDate(QDate(2026, 5, 4));
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(Saved("a")->End(), At(2026, 5, 5));
  EXPECT_EQ(Saved("a")->Subject(), "Trip");
}

TEST_F(AppointmentInspector, RefusedSaveKeepsTheWindowOpenUntilItWorksOrIsGivenUp) {
  const auto item = Appointment(At(2026, 5, 4), At(2026, 5, 6), true);
  const auto failOnce = [this](QDialog& dialog) {
    writer_.refuses = true;
    Type(dialog, "subject", "Trip");
    Press(dialog, QDialogButtonBox::Ok);
    EXPECT_THAT(dialog.findChild<QLabel*>("complaint")->text().toStdString(),
                HasSubstr("The disk is full."));
    EXPECT_EQ(dialog.findChild<QLineEdit*>("subject")->text(), "Trip");
  };
  Inspect(*item, [&](QDialog& dialog) {
    failOnce(dialog);
    QTest::keyClick(&dialog, Qt::Key_Escape);
  });
  EXPECT_EQ(item->Subject(), "Holiday <b>");
  Inspect(*item, [&](QDialog& dialog) {
    failOnce(dialog);
    writer_.refuses = false;
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(Saved("a")->Subject(), "Trip");
}

TEST_F(AppointmentInspector, TimesOfARecurringAppointmentAreShownOnly) {
  const auto item = Appointment(At(2026, 5, 4), At(2026, 5, 5), true, true);
  Inspect(*item, [](QDialog& dialog) {
    for (const char* name : {"startDate", "endDate", "startTime", "endTime", "allDay"}) {
      EXPECT_FALSE(dialog.findChild<QWidget*>(name)->isEnabled()) << name;
    }
    EXPECT_THAT(dialog.findChild<QLabel*>("recurrence")->text().toStdString(), HasSubstr("recurs"));
    Type(dialog, "location", "Away");
    Press(dialog, QDialogButtonBox::Ok);
  });
  EXPECT_EQ(Saved("a")->Location(), "Away");
  EXPECT_EQ(Saved("a")->Start(), At(2026, 5, 4));
}

TEST_F(AppointmentInspector, OkCreatesANewItemAndCancelDoesNot) {
  const auto item = New();
  Inspect(*item, [](QDialog& dialog) { Press(dialog, QDialogButtonBox::Cancel); });
  EXPECT_TRUE(calendar_.AllItems().empty());
  Inspect(*item, [](QDialog& dialog) {
    Type(dialog, "subject", "Brand new");
    QTest::keyClick(dialog.findChild<QLineEdit*>("subject"), Qt::Key_Return);
  });
  EXPECT_EQ(Saved("file 1")->Subject(), "Brand new");
}

TEST_F(AppointmentInspector,
       ANewOneIsPutBeforeItIsSavedAnotherOneMovesAfterItAndAReadOnlyOneStays) {
  std::vector<std::string> put;
  const auto choiceOf = [&](bool isNew, const char* current) {
    return CalendarChoice{.calendars = {{"a", "Anna", {}, ""},
                                        {"b", "Bert", {}, ""},
                                        {"c", "Days off", {}, "It is read-only."}},
                          .current = current,
                          .isNew = isNew,
                          .put = [&](const std::string& id) {
                            if (id == "a") throw Error(errors::CalendarFailed, "Full.");
                            put.push_back(id + std::to_string(calendar_.AllItems().size()));
                          }};
  };
  const auto choose = [](QDialog& dialog, int calendar) {
    dialog.findChild<QComboBox*>("calendar")->setCurrentIndex(calendar);
    Press(dialog, QDialogButtonBox::Ok);
  };
  const auto isNew = New();
  WhenOpen([&](QDialog& dialog) {
    EXPECT_EQ(dialog.focusWidget()->objectName(), "subject");
    choose(dialog, 1);
  });
  InspectAppointment(nullptr, *isNew, choiceOf(true, "a"));
  const auto item = Appointment(At(2026, 5, 4, 9, 0), At(2026, 5, 4, 11, 0), false);
  for (const int chosen : {1, 0}) {
    WhenOpen([&](QDialog& dialog) {
      choose(dialog, chosen);
      if (chosen != 0) return;
      EXPECT_THAT(dialog.findChild<QLabel*>("complaint")->text().toStdString(), HasSubstr("Full."));
      QTest::keyClick(&dialog, Qt::Key_Escape);
    });
    InspectAppointment(nullptr, *item, choiceOf(false, chosen == 1 ? "a" : "b"));
  }
  EXPECT_THAT(put, testing::ElementsAre("b0", "b2"));
  WhenOpen([](QDialog& dialog) {
    EXPECT_FALSE(dialog.findChild<QComboBox*>("calendar")->isEnabled());
    EXPECT_TRUE(dialog.findChild<QLineEdit*>("subject")->isReadOnly());
    EXPECT_EQ(dialog.findChild<QLabel*>("refusal")->text(), "It is read-only.");
    Press(dialog, QDialogButtonBox::Close);
  });
  InspectAppointment(nullptr, *item, choiceOf(false, "c"));
}

}  // namespace
}  // namespace velkor
