// tests/model/ItemArrivalsTest.cpp: what the folder's item events bring to the view.
#include "model/ItemArrivals.h"

#include <algorithm>

#include "tests/control/LoggedOutlook.h"
#include "tests/model/CalendarCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class ItemArrivalsTest : public CalendarCase {
 protected:
  ItemArrivalsTest() { access_.ResolveFolder(""); }

  /// One of several that are taken together by the next tick.
  std::string SaveSilently(CalendarItem item) {
    return calendar_.SaveNew(std::move(item), false, At(2006, 1, 1))->entryId;
  }
};

TEST_F(ItemArrivalsTest, AnAddedAppointmentShowsAtOnceWithItsFields) {
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

TEST_F(ItemArrivalsTest, AllOccurrencesWithinTheSpanComeInOneStep) {
  // Same subject, another appointment.
  CalendarItem other = Weekly();
  other.entryId = "other";
  calendar_.Add(other);
  const std::string id = Save(Weekly());
  const auto shown = {id + " 5.1 9", id + " 12.1 9", id + " 19.1 9"};
  EXPECT_EQ(view_.Shown(), std::vector<std::string>(shown));
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));
}

TEST_F(ItemArrivalsTest, WhatTheViewDoesNotShowStaysOut) {
  Save(SampleItem("another year", At(2007, 3, 1), At(2007, 3, 2)));
  view_.hideNonCategoryItems = true;
  Save(SampleItem("no category", At(2006, 3, 1), At(2006, 3, 2)));
  view_.filter.SetCategoryFilter("Leave");
  CalendarItem customer = SampleItem("filtered out", At(2006, 3, 1), At(2006, 3, 2));
  customer.fields.categories = {"Key Customer"};
  Save(customer);
  EXPECT_THAT(view_.Shown(), IsEmpty());
}

TEST_F(ItemArrivalsTest, OnlyTheAppointmentFormsOwnMessageClassCounts) {
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
  tmrItems_.Tick();
  EXPECT_THAT(view_.Shown(), ElementsAre(id + " 1.3 0"));
}

TEST_F(ItemArrivalsTest, AMeetingItemBringsItsAppointmentWhereItsClassIsTheForm) {
  CalendarItem meeting = SampleItem("m", At(2006, 3, 1), At(2006, 3, 2));
  meeting.itemClass = outlook::ClassMeetingRequest;
  meeting.messageClass = "IPM.Schedule.Meeting.Request";
  CalendarItem behind = meeting;
  behind.entryId = "behind";
  behind.itemClass = outlook::ClassAppointment;
  appointmentForm_ = meeting.messageClass;
  Save(meeting);
  EXPECT_THAT(view_.Take(), IsEmpty()) << "without an appointment";
  meeting.appointment = std::make_shared<const CalendarItem>(behind);
  Save(meeting);
  EXPECT_THAT(view_.Shown(), ElementsAre("behind 1.3 0"));
}

TEST_F(ItemArrivalsTest, AChangedAppointmentIsReplacedInOneStepAndAKeptKeyIsSkipped) {
  calendar_.Add(SampleItem("a", At(2006, 3, 1), At(2006, 3, 2)));
  calendar_.Add(SampleItem("b", At(2006, 4, 1), At(2006, 4, 2)));
  view_.events.Insert({SampleEvent("a", At(2006, 3, 1), At(2006, 3, 2)),
                       SampleEvent("a", At(2006, 5, 1), At(2006, 5, 2)),
                       SampleEvent("b", At(2006, 4, 1), At(2006, 4, 2))});
  const auto item = access_.Item("a");
  item->SetEnd(At(2006, 3, 9));
  item->SetStart(At(2006, 3, 8));
  item->Save();
  tmrItems_.Tick();
  EXPECT_THAT(view_.Shown(), ElementsAre("a 8.3 0", "b 1.4 0"));
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));
  // An add that was raised for what is there already.
  CalendarItem again = SampleItem("a", At(2006, 3, 8), At(2006, 3, 9));
  view_.events.Insert({SampleEvent(Save(again), At(2006, 3, 8), At(2006, 3, 9))});
  EXPECT_EQ(view_.events.Count(), 3U);
}

TEST_F(ItemArrivalsTest, WhatCannotBeReadAgainStaysInTheViewAndARefreshBringsIt) {
  CalendarItem weekly = Weekly();
  calendar_.Add(weekly);
  view_.events.Insert({SampleEvent("weekly", At(2006, 1, 5, 9), At(2006, 1, 5, 10))});
  weekly.occurrences[1].end = Date(1e9);
  messages_.Expect("Error adding appointment 13 ");
  calendar_.Replace({weekly}, {At(2006, 1, 1), At(2006, 12, 31)});
  tmrItems_.Tick();
  EXPECT_THAT(view_.Shown(), ElementsAre("weekly 5.1 9"));
  EXPECT_THAT(view_.Take(), ElementsAre("force"));
}

TEST_F(ItemArrivalsTest, OccurrencesBeforeAFailureAreKept) {
  CalendarItem weekly = Weekly();
  weekly.occurrences[2].end = Date(1e9);
  messages_.Expect("Error adding appointment 13 \"Subject of weekly\" has a date");
  const std::string id = Save(weekly);
  EXPECT_THAT(view_.Shown(), ElementsAre(id + " 5.1 9"));
  EXPECT_THAT(view_.Take(), ElementsAre("change", "force"));
}

TEST_F(ItemArrivalsTest, ColourRecordsAreReadAgainAndNeverEnterTheView) {
  view_.span = {2011, 1};
  const auto saved = access_.Item(
      Save(SampleRecord("PLEASE IGNORE - Velkor Category Colours: Default", "a list")));
  saved->SetBody("another list");
  saved->Save();
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("colours", "colours"));
}

TEST_F(ItemArrivalsTest, ARemovalForcesARefreshUntilTheCalendarIsReleased) {
  const std::string first = Save(SampleItem("a", At(2006, 3, 1), At(2006, 3, 2)));
  const std::string second = Save(SampleItem("b", At(2006, 3, 1), At(2006, 3, 2)));
  view_.Take();
  calendar_.Delete(first);
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("force"));
  calendar_.Delete(second);
  access_.Release();
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), IsEmpty());
}

TEST_F(ItemArrivalsTest, WhatWaitsIsTakenTogetherInOrderOfStart) {
  view_.events.Insert({SampleEvent("old", At(2006, 2, 1), At(2006, 2, 2))});
  std::vector<std::string> ids;
  for (const int month : {5, 1, 2}) {
    ids.push_back(
        SaveSilently(SampleItem(std::to_string(month), At(2006, month, 1), At(2006, month, 2))));
  }
  const std::string weekly = SaveSilently(Weekly());
  const auto moved = access_.Item(ids[0]);
  moved->SetEnd(At(2006, 1, 13));
  moved->SetStart(At(2006, 1, 12));
  moved->Save();
  calendar_.Delete(ids[1]);
  EXPECT_THAT(view_.Take(), IsEmpty());
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), IsEmpty()) << "a subject or two at a time";
  while (tmrItems_.Enabled()) tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite", "force"));
  EXPECT_THAT(view_.Shown(), ElementsAre(weekly + " 5.1 9", ids[0] + " 12.1 0", weekly + " 12.1 9",
                                         weekly + " 19.1 9", "old 1.2 0", ids[2] + " 1.2 0"));
  EXPECT_FALSE(tmrItems_.Enabled());
}

TEST_F(ItemArrivalsTest, AmongManyOfOneSubjectThoseThatCameAreFetchedOnceAndALongSeriesInSteps) {
  LoggedOutlook logged(embedded_);
  CalendarAccess access(view_.view, refresh_, seams_.On(logged, messages_), tmrItems_,
                        appointmentForm_);
  tmrItems_.onTimer = [&] { access.Arrivals().Take(); };
  access.Open();
  access_.Release();
  for (int i = 0; i < 300; ++i) {
    CalendarItem item = SampleItem("same", At(2006, 1, 1 + i), At(2006, 1, 2 + i));
    item.entryId = std::to_string(i);
    calendar_.Add(std::move(item));
  }
  access.ResolveFolder("");
  const auto countOf = [&](const char* call) {
    return std::count(logged.calls.begin(), logged.calls.end(), call);
  };
  for (const int day : {10, 12, 9}) {
    SaveSilently(SampleItem("same", At(2006, 3, day), At(2006, 3, day)));
  }
  tmrItems_.Tick();
  EXPECT_EQ(view_.events.Count(), 3U);
  EXPECT_EQ(countOf("Restrict"), 1);
  EXPECT_LE(countOf("GetNext"), 9) << "those of their own days";

  CalendarItem daily = SampleItem("daily", At(2006, 1, 1), At(2006, 1, 2));
  daily.recurring = true;
  for (int i = 0; i < 365; ++i)
    daily.occurrences.push_back({At(2006, 1, 1 + i), At(2006, 1, 2 + i), -1});
  SaveSilently(daily);
  while (tmrItems_.Enabled()) {
    const auto calls = countOf("GetNext");
    tmrItems_.Tick();
    EXPECT_LE(countOf("GetNext") - calls, 16);
    EXPECT_TRUE(view_.events.Count() == 3U || !tmrItems_.Enabled());
  }
  EXPECT_EQ(view_.events.Count(), 368U);
}

TEST_F(ItemArrivalsTest, SubjectsWithAnyQuotesArrive) {
  std::size_t count = 0;
  for (const char* subject : {"Tom's", "\"Tom\"", "Tom's \"day\"", "'", "''\"\""}) {
    CalendarItem item = SampleItem("a", At(2006, 3, 1), At(2006, 3, 2));
    item.fields.subject = subject;
    Save(item);
    EXPECT_EQ(view_.events.Count(), ++count) << subject;
    EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));
  }
}

TEST_F(ItemArrivalsTest, AfterAChangedSeriesARefreshBringsItsRenamedOccurrences) {
  CalendarItem weekly = Weekly();
  weekly.changed.push_back({"Renamed", {}, "", "", false});
  weekly.occurrences[2].changed = 0;
  calendar_.Add(weekly);
  const auto item = access_.Item("weekly");
  item->SetLocation("Ghent");
  item->Save();
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite", "refresh"));
}

TEST_F(ItemArrivalsTest, ManyChangesThatFailEndInOneMessage) {
  CalendarItem broken = SampleItem("a", At(2006, 3, 1), Date(1e9));
  messages_.Expect("Error adding appointment 13 ");
  for (int batch = 0; batch < 3; ++batch) {
    for (int i = 0; i < 30; ++i) SaveSilently(broken);
    while (tmrItems_.Enabled()) tmrItems_.Tick();
    EXPECT_THAT(view_.Take(), ElementsAre("force"));
  }
  // Colours that cannot be read are told by whoever reads them.
  view_.categoriesKnown = false;
  SaveSilently(SampleRecord("PLEASE IGNORE - Velkor Category Colours: Default", "a list"));
  SaveSilently(broken);
  while (tmrItems_.Enabled()) tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("colours", "force"));
  // Nor is there one for a refresh that fails at the same.
  seams_.cacheUtilities.Complete(7);
}

TEST_F(ItemArrivalsTest, OfVeryManyNoneIsReadByItself) {
  for (int i = 0; i < 10'000; ++i) SaveSilently(SampleItem("a", At(2006, 3, 1), At(2006, 3, 2)));
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("colours", "force"));
}

TEST_F(ItemArrivalsTest, NothingIsTakenWhileARefreshIsStartedOrCancelled) {
  refresh_.Together([&] {
    Save(SampleItem("a", At(2006, 3, 1), At(2006, 3, 2)));
    EXPECT_THAT(view_.Take(), IsEmpty());
  });
  tmrItems_.Tick();
  EXPECT_THAT(view_.Take(), ElementsAre("change", "rewrite"));
}

}  // namespace
}  // namespace velkor
