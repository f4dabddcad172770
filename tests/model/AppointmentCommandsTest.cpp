// tests/model/AppointmentCommandsTest.cpp: opening, deleting and creating appointments.
#include "model/AppointmentCommands.h"

#include "tests/model/CalendarCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::SizeIs;

constexpr const char* NotLocated = "Unable to locate event, please refresh and try again.";

class AppointmentCommandsTest : public CalendarCase {
 protected:
  AppointmentCommandsTest() { access_.ResolveFolder(""); }

  /// Puts an item into the calendar and its first day into the view.
  /// @return the event's key
  std::string Put(const CalendarItem& item) {
    calendar_.Add(item);
    const CalEvent event = SampleEvent(item.entryId, item.start, item.end);
    view_.events.Insert({event});
    return EventCollection::KeyOf(event, seams_.locale);
  }
  std::string PutAppointment() {
    return Put(SampleItem("a", At(2006, 3, 1, 9), At(2006, 3, 1, 10)));
  }

  AppointmentCommands commands_{view_.view, refresh_, access_, platform_, appointmentForm_};
};

TEST_F(AppointmentCommandsTest, AnInspectorClosedWithoutChangesReloadsNothing) {
  const std::string key = PutAppointment();
  int opened = 0;
  inspect_ = [&](OutlookItem& item) {
    EXPECT_EQ(item.EntryID(), "a");
    item.Save();
    ++opened;
  };
  commands_.Edit(key);
  commands_.Edit("");
  EXPECT_EQ(opened, 1);
  EXPECT_THAT(view_.Take(), IsEmpty());
}

TEST_F(AppointmentCommandsTest, AChangedAppointmentReloadsAndForcesARefresh) {
  const std::string key = PutAppointment();
  inspect_ = [this](OutlookItem& item) {
    item.SetLocation("Ghent");
    item.Save();
    tmrItems_.Tick();
  };
  commands_.Edit(key);
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite", "reload", "force"));
}

TEST_F(AppointmentCommandsTest, WhatIsGoneOrNoAppointmentIsTold) {
  const std::string gone = PutAppointment();
  calendar_.Delete("a");
  CalendarItem task = SampleItem("task", At(2006, 3, 2), At(2006, 3, 3));
  task.itemClass = 48;
  const std::string other = Put(task);
  CalendarItem meeting = SampleItem("meeting", At(2006, 3, 4), At(2006, 3, 5));
  meeting.itemClass = outlook::ClassMeetingRequest;
  const std::string empty = Put(meeting);
  view_.Take();
  inspect_ = [](OutlookItem&) { ADD_FAILURE() << "nothing to show"; };

  for (const std::string& key : {gone, std::string("1/1/2006no such event"), other}) {
    messages_.Expect("");
    commands_.Edit(key);
    EXPECT_EQ(Told(), NotLocated) << key;
  }
  messages_.Expect("");
  commands_.Edit(empty);
  EXPECT_EQ(Told(), "Nothing for ai");

  messages_.Expect(NotLocated);
  commands_.Delete(gone);
  messages_.Expect("Delete this appointment Subject of task?", MessageAnswer::Yes);
  messages_.Expect(NotLocated);
  commands_.Delete(other);
  messages_.Expect("Delete this appointment Subject of meeting?", MessageAnswer::Yes);
  messages_.Expect("Nothing for ai");
  commands_.Delete(empty);
  EXPECT_THAT(view_.Take(), IsEmpty());
  EXPECT_THAT(view_.Shown(), SizeIs(3));
}

TEST_F(AppointmentCommandsTest, ACalendarWithoutInspectorSaysSo) {
  inspect_ = [](OutlookItem&) { throw Error(440, "No window."); };
  messages_.Expect("Error opening appointment 440 No window.");
  commands_.Edit(PutAppointment());
  messages_.Expect("Error creating appointment 440 No window.");
  commands_.New(At(2006, 3, 1), At(2006, 3, 2));
  EXPECT_THAT(view_.Take(), IsEmpty());
}

TEST_F(AppointmentCommandsTest, DeletingAsksAndAnythingButYesChangesNothing) {
  const std::string key = PutAppointment();
  commands_.Delete("");
  for (const MessageAnswer answer : {MessageAnswer::No, MessageAnswer::Cancel}) {
    messages_.Expect("", answer);
    commands_.Delete(key);
    const Message& question = messages_.Shown().back();
    EXPECT_EQ(question.text, "Delete this appointment Subject of a?");
    EXPECT_EQ(question.buttons, MessageButtons::YesNo);
    EXPECT_EQ(question.icon, MessageIcon::Question);
    EXPECT_EQ(question.defaultButton, 2);
  }
  EXPECT_THAT(view_.Take(), IsEmpty());
  EXPECT_THAT(view_.Shown(), SizeIs(1));
  EXPECT_THAT(calendar_.AllItems(), SizeIs(1));
}

TEST_F(AppointmentCommandsTest, DeletingTakesTheEventOrAllItsOccurrencesOut) {
  const std::string single = PutAppointment();
  const std::string first = Put(Weekly());
  view_.events.Insert({SampleEvent("weekly", At(2006, 1, 5, 9), At(2006, 1, 5, 10))});
  view_.events.Insert({SampleEvent("weekly", At(2006, 1, 12, 9), At(2006, 1, 12, 10))});
  // What the calendar now says decides: this one is of an earlier, recurring form of the same item.
  view_.events.Insert({SampleEvent("a", At(2006, 3, 8, 9), At(2006, 3, 8, 10))});

  messages_.Expect("Delete this appointment", MessageAnswer::Yes);
  commands_.Delete(first);
  EXPECT_EQ(Told(),
            "Delete this appointment Subject of weekly? All its occurrences will be deleted.");
  EXPECT_THAT(view_.Shown(), ElementsAre("a 1.3 9", "a 8.3 9"));
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite", "force"));

  messages_.Expect("Delete this appointment", MessageAnswer::Yes);
  commands_.Delete(single);
  EXPECT_THAT(view_.Shown(), ElementsAre("a 8.3 9"));
  EXPECT_THAT(calendar_.AllItems(), IsEmpty());
}

TEST_F(AppointmentCommandsTest, ACalendarThatRefusesToDeleteLeavesViewAndCacheAsTheyAre) {
  const std::string key = PutAppointment();
  calendar_.SetWriter(&writer_);
  writer_.refuses = true;
  messages_.Expect("Delete this appointment", MessageAnswer::Yes);
  messages_.Expect("Error deleting appointment 440 The disk is full.");
  commands_.Delete(key);
  EXPECT_THAT(view_.Take(), IsEmpty());
  EXPECT_THAT(view_.Shown(), SizeIs(1));
}

TEST_F(AppointmentCommandsTest, ADayAfterWhichThereIsNoneTakesNoAppointment) {
  messages_.Expect("Error creating appointment 6 ");
  commands_.New(At(9999, 12, 31), At(9999, 12, 31).AddDays(1));
}

TEST_F(AppointmentCommandsTest, ANewAppointmentIsShownFirstAndComesInWhenItIsSaved) {
  appointmentForm_ = "IPM.Appointment.Leave";
  inspect_ = [&](OutlookItem& item) {
    EXPECT_EQ(item.MessageClass(), appointmentForm_);
    EXPECT_EQ(item.Start(), At(2006, 3, 1));
    EXPECT_EQ(item.End(), At(2006, 3, 4));
    EXPECT_TRUE(item.AllDayEvent());
    EXPECT_THAT(view_.Shown(), SizeIs(0));
    item.SetSubject("Leave");
    item.Save();
  };
  EXPECT_TRUE(commands_.New(At(2006, 3, 1), At(2006, 3, 4)));
  tmrItems_.Tick();
  EXPECT_THAT(view_.Shown(), SizeIs(1));
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));

  inspect_ = [&](OutlookItem& item) { EXPECT_FALSE(item.AllDayEvent()); };
  EXPECT_FALSE(commands_.New(At(2006, 3, 1, 9), At(2006, 3, 1, 10)));
  commands_.New(At(2006, 3, 1), At(2006, 3, 1));
  EXPECT_THAT(calendar_.AllItems(), SizeIs(1)) << "closed unsaved";
}

}  // namespace
}  // namespace velkor
