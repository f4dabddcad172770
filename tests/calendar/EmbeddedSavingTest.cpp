// tests/calendar/EmbeddedSavingTest.cpp: setting, saving and deleting items, and the item events.
#include <deque>

#include "tests/calendar/CalendarDoubles.h"
#include "tests/model/CalendarInMemory.h"

namespace velkor {
namespace {

using Texts = std::vector<std::string>;

CalendarItem Lunch() {
  CalendarItem item = SampleItem("lunch", At(2026, 3, 5, 12), At(2026, 3, 5, 13));
  item.fields.subject = "Lunch";
  return item;
}

CalendarItem Weekly() {
  CalendarItem item = Lunch();
  item.entryId = "weekly";
  item.fields.subject = "Weekly";
  item.recurring = true;
  for (int day : {5, 12, 19})
    item.occurrences.push_back({At(2026, 3, day, 12), At(2026, 3, day, 13), -1});
  return item;
}

class EmbeddedSaving : public CalendarInMemory {
 protected:
  std::unique_ptr<OutlookItems> Items() {
    return outlook_.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar)->Items();
  }
  std::unique_ptr<OutlookItem> ById(const std::string& entryId) {
    return outlook_.GetNamespace("MAPI")->GetItemFromID(entryId, "store");
  }

  Date now_ = At(2026, 1, 1, 9, 10);
  EmbeddedOutlookOptions options_{
      .userName = "Ann", .listSeparator = ";", .clock = [this] { return now_; }};
  EmbeddedOutlook outlook_{store_, seams_.locale, options_};
  ScriptedWriter writer_;
  EventLog log_;
};

TEST_F(EmbeddedSaving, ANewItemIsInTheFolderOnceItIsSaved) {
  const auto items = Items();
  items->Connect(&log_);
  const auto item = items->Add("IPM.Appointment.Leave");
  EXPECT_EQ(item->Start(), At(2026, 1, 1, 9, 30));
  item->SetSubject("Trip\r\nto Ghent");
  item->SetCategories("Leave;Trips ; ");
  item->SetBody("one\ntwo\rthree\r\n");
  item->SetStart(At(2026, 7, 1, 15));
  EXPECT_EQ(item->End(), At(2026, 7, 1, 15, 30)) << "an appointment that is moved keeps its length";
  item->SetEnd(At(2026, 7, 3, 8));
  item->SetAllDayEvent(true);
  EXPECT_EQ(Items()->GetFirst(), nullptr);
  EXPECT_EQ(item->EntryID(), "");
  EXPECT_THROW(item->Delete(), Error);

  item->Save();
  EXPECT_EQ(log_.Take(), Texts{"add Trip to Ghent"});
  const auto saved = ById(item->EntryID());
  EXPECT_EQ(saved->MessageClass(), "IPM.Appointment.Leave");
  EXPECT_EQ(saved->Categories(), "Leave; Trips");
  EXPECT_EQ(saved->Body(), "one\r\ntwo\r\nthree\r\n");
  EXPECT_EQ(saved->Start(), At(2026, 7, 1));
  EXPECT_EQ(saved->End(), At(2026, 7, 4));
  EXPECT_EQ(saved->LastModificationTime(), now_);
  EXPECT_EQ(items->Add({})->MessageClass(), "IPM.Appointment");
}

TEST_F(EmbeddedSaving, WhatIsSetStaysWithItsObjectUntilItIsSaved) {
  calendar_.Add(Lunch());
  const auto mine = ById("lunch");
  const auto other = ById("lunch");
  mine->SetSubject("Dinner");
  EXPECT_EQ(mine->Subject(), "Dinner");
  EXPECT_EQ(other->Subject(), "Lunch");
  other->SetLocation("Ghent");
  other->Save();
  mine->Save();
  EXPECT_EQ(ById("lunch")->Subject(), "Dinner");
  EXPECT_EQ(ById("lunch")->Location(), "Ghent") << "a save overwrote what it did not set";
}

TEST_F(EmbeddedSaving, EverySaveOfAChangeGivesALaterTimeOfModification) {
  calendar_.Add(Lunch());
  const auto item = ById("lunch");
  Date before = item->LastModificationTime();
  for (const char* subject : {"a", "b", "c"}) {
    item->SetSubject(subject);
    item->Save();
    EXPECT_GT(item->LastModificationTime(), before);
    before = item->LastModificationTime();
  }
  calendar_.SetWriter(&writer_);
  item->SetSubject("c");
  item->Save();
  EXPECT_EQ(item->LastModificationTime(), before);
  EXPECT_EQ(writer_.written, Texts{}) << "a save without a change was written";
}

TEST_F(EmbeddedSaving, TimesThatCannotBeAreRefused) {
  calendar_.Add(Lunch());
  calendar_.Add(Weekly());
  const auto item = ById("lunch");
  item->SetEnd(At(2026, 3, 5, 11));
  EXPECT_THROW(item->Save(), Error);
  EXPECT_THROW(item->SetStart(Date(1e9)), Error);
  for (const auto& set : std::initializer_list<std::function<void(OutlookItem&)>>{
           [](OutlookItem& one) { one.SetStart(At(2026, 3, 6)); },
           [](OutlookItem& one) { one.SetEnd(At(2026, 3, 6)); },
           [](OutlookItem& one) { one.SetAllDayEvent(true); }}) {
    const auto weekly = ById("weekly");
    set(*weekly);
    EXPECT_THROW(weekly->Save(), Error);
  }
  EXPECT_EQ(ById("weekly")->Start(), At(2026, 3, 5, 12));
}

TEST_F(EmbeddedSaving, AnOccurrenceSavesAndDeletesItsWholeAppointment) {
  calendar_.Add(Weekly());
  const auto items = Items()->Restrict("[Start] <= '12/31/2026' AND [End] > '3/8/2026'");
  items->IncludeRecurrences(true);
  const auto occurrence = items->GetFirst();
  occurrence->SetSubject("Standup");
  occurrence->SetStart(At(2026, 3, 12, 12));
  occurrence->Save();
  EXPECT_EQ(occurrence->Start(), At(2026, 3, 12, 12));
  EXPECT_EQ(ById("weekly")->Subject(), "Standup");
  EXPECT_EQ(ById("weekly")->Start(), At(2026, 3, 5, 12));
  occurrence->Delete();
  EXPECT_EQ(items->GetFirst(), nullptr);
  EXPECT_THROW(occurrence->Delete(), Error);
  EXPECT_THROW(occurrence->Save(), Error);
}

TEST_F(EmbeddedSaving, EventsReachEveryConnectedCollectionAndSurviveWhatSinksDo) {
  calendar_.Add(Lunch());
  auto first = Items();
  auto second = Items()->Restrict("[Subject]='none'");
  EventLog others;
  first->Connect(&log_);
  second->Connect(&others);
  log_.inEvent = [&] { second.reset(); };
  const auto item = ById("lunch");
  item->SetSubject("a");
  item->Save();
  EXPECT_EQ(log_.Take(), Texts{"change a"});
  EXPECT_EQ(others.Take(), Texts{}) << "a collection that had gone was told";

  log_.inEvent = [&] { first->Connect(nullptr); };
  item->SetSubject("b");
  item->Save();
  item->SetSubject("c");
  item->Save();
  EXPECT_EQ(log_.Take(), Texts{"change b"});

  first->Connect(&log_);
  log_.inEvent = [&] {
    log_.inEvent = nullptr;
    item->Delete();
    EXPECT_EQ(log_.Take(), Texts{"change d"}) << "told within what it was told before";
    throw Error(errors::CalendarFailed, "a sink that fails");
  };
  item->SetSubject("d");
  item->Save();
  EXPECT_EQ(log_.Take(), Texts{"remove"});
}

TEST_F(EmbeddedSaving, PostedEventsAreDroppedWithTheirCollection) {
  std::deque<std::function<void()>> posted;
  options_.post = [&](std::function<void()> call) { posted.push_back(std::move(call)); };
  EmbeddedOutlook outlook(store_, seams_.locale, options_);
  auto items = outlook.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar)->Items();
  items->Connect(&log_);
  items->Add({})->Save();
  items->Add({})->Save();
  EXPECT_EQ(log_.Take(), Texts{});
  ASSERT_EQ(posted.size(), 2U);
  posted[0]();
  items.reset();
  posted[1]();
  EXPECT_EQ(log_.Take(), Texts{"add "});
}

TEST_F(EmbeddedSaving, ManyReplacedItemsAreToldAsOneRemoval) {
  const DateWindow year{At(2026, 1, 1), At(2026, 12, 31)};
  calendar_.Replace({Lunch(), Weekly()}, year);
  const auto items = Items();
  items->Connect(&log_);
  std::vector<CalendarItem> many(60, Lunch());
  for (CalendarItem& item : many) item.entryId = std::to_string(&item - many.data());
  calendar_.Replace(many, year);
  EXPECT_EQ(log_.Take(), Texts{"remove"});
}

TEST_F(EmbeddedSaving, AnUnsavedRecordCanBeOfferedAgainUnderItsOldIdentifier) {
  calendar_.SetWriter(&writer_);
  CalendarItem record = Lunch();
  for (int round = 0; round < 2; ++round) {
    calendar_.AddUnsaved(record);
    calendar_.AddUnsaved(record);
    EXPECT_EQ(calendar_.AllItems().size(), 1U);
    const auto item = Items()->Find("[Subject]='Lunch'");
    item->SetBody("list");
    item->Save();
    Items()->Find("[Subject]='Lunch'")->Delete();
  }
  EXPECT_EQ(writer_.written, (Texts{"new Lunch", "delete Lunch", "new Lunch", "delete Lunch"}));
}

TEST_F(EmbeddedSaving, AMeetingItemOfAMailFolderLeadsToTheAppointmentAsItStandsNow) {
  calendar_.Add(Lunch());
  CalendarItem meeting = Lunch();
  meeting.entryId = "invitation";
  meeting.itemClass = outlook::ClassMeetingRequest;
  meeting.appointment = std::make_shared<CalendarItem>(Lunch());
  root_.AddFolder("Inbox", "inbox", outlook::ItemTypeMail).Add(meeting);
  const auto item = ById("lunch");
  item->SetSubject("Dinner");
  item->Save();
  EXPECT_EQ(item->GetAssociatedAppointment(false), nullptr);
  const auto found = ById("invitation");
  EXPECT_EQ(found->Class(), outlook::ClassMeetingRequest);
  const auto appointment = found->GetAssociatedAppointment(false);
  EXPECT_EQ(appointment->Subject(), "Dinner");
  appointment->Delete();
  EXPECT_THROW(ById("lunch"), Error);
  EXPECT_THROW(found->GetAssociatedAppointment(false)->Delete(), Error);
  EXPECT_THROW(outlook_.GetNamespace("MAPI")->GetItemFromID("invitation", "elsewhere"), Error);
}

TEST_F(EmbeddedSaving, AnItemIsNotDisplayedWhereThereIsNoInspector) {
  calendar_.Add(Lunch());
  EXPECT_THROW(ById("lunch")->Display(true), Error);
}

}  // namespace
}  // namespace velkor
