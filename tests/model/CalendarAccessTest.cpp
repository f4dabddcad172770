// tests/model/CalendarAccessTest.cpp: finding the folder, and what its item events bring to the
// view.
#include "model/CalendarAccess.h"

#include "tests/model/CalendarCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;

class CalendarAccessTest : public CalendarCase {};

TEST_F(CalendarAccessTest, AFolderPathIsWalkedFromTheTopAndOtherKindsFallBackToTheDefault) {
  CalendarFolder& team = root_.AddFolder("Team", "team", outlook::ItemTypeAppointment);
  team.AddFolder("Rota", "rota", outlook::ItemTypeAppointment);
  root_.AddFolder("Inbox", "inbox", outlook::ItemTypeMail);
  const std::pair<const char*, const char*> paths[] = {
      {"", "calendar"},
      {"Calendar", "calendar"},
      {"Mailbox\\Team", "team"},
      {"Mailbox\\Team\\Rota", "rota"},
      {"Mailbox\\Inbox", "calendar"},
      {"Mailbox", "calendar"},
  };
  for (const auto& [path, entryId] : paths) {
    ASSERT_TRUE(access_.ResolveFolder(path)) << path;
    EXPECT_EQ(access_.EntryID(), entryId) << path;
    EXPECT_EQ(access_.StoreID(), "store");
    EXPECT_EQ(access_.Folder().EntryID(), entryId);
    EXPECT_EQ(access_.ReopenFolder()->EntryID(), entryId);
  }
  for (const char* path : {"calendar\\", "Nowhere", "Mailbox\\Nobody", "Mailbox\\Team\\Rota\\No",
                           "\\\\Mailbox\\Team", "Mailbox\\Team\\", "\\"}) {
    EXPECT_FALSE(access_.ResolveFolder(path)) << path;
    EXPECT_EQ(access_.EntryID(), "") << path;
  }
  store_.SetDefaultCalendar(nullptr);
  EXPECT_FALSE(access_.ResolveFolder(""));
  EXPECT_FALSE(access_.ResolveFolder("Mailbox\\Inbox"));
}

TEST_F(CalendarAccessTest, AnAddedAppointmentShowsAtOnceWithItsFields) {
  access_.ResolveFolder("");
  CalendarItem item = SampleItem("a", At(2006, 3, 1), At(2006, 3, 3));
  item.fields.categories = {"Unknown", "Key Customer"};
  const std::string id = Save(item);
  ASSERT_EQ(view_.events.Count(), 1U);
  const CalEvent& event = view_.events[0];
  EXPECT_EQ(event.EventID, id);
  EXPECT_EQ(event.Subject, "Subject of a");
  EXPECT_EQ(event.Categories, "Unknown, Key Customer");
  EXPECT_EQ(event.CatIndex, 2);
  // 1 March 2006 is a Wednesday.
  EXPECT_EQ(event.StartDay, 4);
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));
}

TEST_F(CalendarAccessTest, AllOccurrencesWithinTheSpanComeInOneStep) {
  access_.ResolveFolder("");
  // Same subject, another appointment.
  CalendarItem other = Weekly();
  other.entryId = "other";
  calendar_.Add(other);
  const std::string id = Save(Weekly());
  const auto shown = {id + " 5.1 9", id + " 12.1 9", id + " 19.1 9"};
  EXPECT_EQ(view_.Shown(), std::vector<std::string>(shown));
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));
}

TEST_F(CalendarAccessTest, WhatTheViewDoesNotShowStaysOut) {
  access_.ResolveFolder("");
  Save(SampleItem("another year", At(2007, 3, 1), At(2007, 3, 2)));
  view_.hideNonCategoryItems = true;
  Save(SampleItem("no category", At(2006, 3, 1), At(2006, 3, 2)));
  view_.filter.SetCategoryFilter("Leave");
  CalendarItem customer = SampleItem("filtered out", At(2006, 3, 1), At(2006, 3, 2));
  customer.fields.categories = {"Key Customer"};
  Save(customer);
  EXPECT_THAT(view_.Shown(), IsEmpty());
}

TEST_F(CalendarAccessTest, OnlyTheAppointmentFormsOwnMessageClassCounts) {
  access_.ResolveFolder("");
  CalendarItem item = SampleItem("a", At(2006, 3, 1), At(2006, 3, 2));
  item.messageClass = "IPM.Appointment.Leave";
  const std::string id = Save(item);
  appointmentForm_ = "ipm.appointment.leave";
  Save(item);
  EXPECT_THAT(view_.Take(), IsEmpty());
  appointmentForm_ = "IPM.Appointment.Leave";
  const auto changed = access_.Item(id);
  changed->SetLocation("Ghent");
  changed->Save();
  EXPECT_THAT(view_.Shown(), ElementsAre(id + " 1.3 0"));
}

TEST_F(CalendarAccessTest, AMeetingItemBringsItsAppointmentWhereItsClassIsTheForm) {
  CalendarItem meeting = SampleItem("m", At(2006, 3, 1), At(2006, 3, 2));
  meeting.itemClass = outlook::ClassMeetingRequest;
  meeting.messageClass = "IPM.Schedule.Meeting.Request";
  CalendarItem behind = meeting;
  behind.entryId = "behind";
  behind.itemClass = outlook::ClassAppointment;
  access_.ResolveFolder("");
  appointmentForm_ = meeting.messageClass;
  Save(meeting);
  EXPECT_THAT(view_.Take(), IsEmpty()) << "without an appointment";
  meeting.appointment = std::make_shared<const CalendarItem>(behind);
  Save(meeting);
  EXPECT_THAT(view_.Shown(), ElementsAre("behind 1.3 0"));
}

TEST_F(CalendarAccessTest, AChangedAppointmentIsReplacedInOneStepAndAKeptKeyIsSkipped) {
  calendar_.Add(SampleItem("a", At(2006, 3, 1), At(2006, 3, 2)));
  calendar_.Add(SampleItem("b", At(2006, 4, 1), At(2006, 4, 2)));
  view_.events.Add(SampleEvent("a", At(2006, 3, 1), At(2006, 3, 2)));
  view_.events.Add(SampleEvent("a", At(2006, 5, 1), At(2006, 5, 2)));
  view_.events.Add(SampleEvent("b", At(2006, 4, 1), At(2006, 4, 2)));
  access_.ResolveFolder("");
  const auto item = access_.Item("a");
  item->SetEnd(At(2006, 3, 9));
  item->SetStart(At(2006, 3, 8));
  item->Save();
  EXPECT_THAT(view_.Shown(), ElementsAre("b 1.4 0", "a 8.3 0"));
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));
  // An add that was raised for what is there already.
  CalendarItem again = SampleItem("a", At(2006, 3, 8), At(2006, 3, 9));
  view_.events.Add(SampleEvent(Save(again), At(2006, 3, 8), At(2006, 3, 9)));
  EXPECT_EQ(view_.events.Count(), 3U);
}

TEST_F(CalendarAccessTest, WhatCannotBeReadAgainStaysInTheViewAndARefreshBringsIt) {
  calendar_.Add(SampleItem("a", At(2006, 3, 1), At(2006, 3, 2)));
  view_.events.Add(SampleEvent("a", At(2006, 3, 1), At(2006, 3, 2)));
  access_.ResolveFolder("");
  const auto item = access_.Item("a");
  item->SetSubject("Ann's leave");
  messages_.Expect("Error adding appointment 440 ");
  item->Save();
  EXPECT_THAT(view_.Shown(), ElementsAre("a 1.3 0"));
  EXPECT_THAT(view_.Take(), ElementsAre("force"));
}

TEST_F(CalendarAccessTest, OccurrencesBeforeAFailureAreKept) {
  CalendarItem weekly = Weekly();
  weekly.occurrences[2].end = Date(1e9);
  access_.ResolveFolder("");
  messages_.Expect("Error adding appointment 13 \"Subject of weekly\" has a date");
  const std::string id = Save(weekly);
  EXPECT_THAT(view_.Shown(), ElementsAre(id + " 5.1 9"));
  EXPECT_THAT(view_.Take(), ElementsAre("change", "force"));
}

TEST_F(CalendarAccessTest, ColourRecordsAreReadAgainAndNeverEnterTheView) {
  access_.ResolveFolder("");
  view_.span = {2011, 1};
  const auto saved = access_.Item(
      Save(SampleRecord("PLEASE IGNORE - Velkor Category Colours: Default", "a list")));
  saved->SetBody("another list");
  saved->Save();
  EXPECT_THAT(view_.Take(), ElementsAre("colours", "colours"));
}

TEST_F(CalendarAccessTest, ARemovalForcesARefreshUntilTheCalendarIsReleased) {
  const std::string first = Save(SampleItem("a", At(2006, 3, 1), At(2006, 3, 2)));
  const std::string second = Save(SampleItem("b", At(2006, 3, 1), At(2006, 3, 2)));
  access_.ResolveFolder("");
  calendar_.Delete(first);
  EXPECT_THAT(view_.Take(), ElementsAre("force"));
  access_.Release();
  calendar_.Delete(second);
  EXPECT_THAT(view_.Take(), IsEmpty());
}

}  // namespace
}  // namespace velkor
