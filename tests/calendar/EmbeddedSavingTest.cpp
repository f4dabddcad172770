// tests/calendar/EmbeddedSavingTest.cpp: setting, saving and deleting items, and the item events.
#include <gtest/gtest.h>

#include <deque>

#include "calendar/EmbeddedOutlook.h"
#include "platform/headless/FixedLocale.h"
#include "tests/calendar/CalendarDoubles.h"

namespace velkor {
namespace {

using Texts = std::vector<std::string>;

Date At(int month, int day, int hour = 0, int minute = 0) {
  return Date::FromFields({2026, month, day, hour, minute, 0});
}

CalendarItem Lunch() {
  CalendarItem item;
  item.entryId = "lunch";
  item.fields.subject = "Lunch";
  item.start = At(3, 5, 12);
  item.end = At(3, 5, 13);
  return item;
}

CalendarItem Weekly() {
  CalendarItem item = Lunch();
  item.entryId = "weekly";
  item.fields.subject = "Weekly";
  item.recurring = true;
  for (int day : {5, 12, 19}) item.occurrences.push_back({At(3, day, 12), At(3, day, 13), -1});
  return item;
}

class EmbeddedSaving : public testing::Test {
 protected:
  EmbeddedSaving() {
    CalendarFolder& root = store_.AddFolder("Personal Folders", "f0", outlook::ItemTypeMail);
    folder_ = &root.AddFolder("Team", "f1", outlook::ItemTypeAppointment);
    inbox_ = &root.AddFolder("Inbox", "f2", outlook::ItemTypeMail);
    store_.SetDefaultCalendar(folder_);
  }
  std::unique_ptr<OutlookItems> Items() {
    return outlook_.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar)->Items();
  }
  std::unique_ptr<OutlookItem> ById(const std::string& entryId) {
    return outlook_.GetNamespace("MAPI")->GetItemFromID(entryId, "store");
  }

  CalendarStore store_{"store"};
  CalendarFolder* folder_;
  CalendarFolder* inbox_;
  FixedLocale locale_;
  Date now_ = At(1, 1, 9, 10);
  EmbeddedOutlookOptions options_{
      .userName = "Ann", .listSeparator = ";", .clock = [this] { return now_; }};
  EmbeddedOutlook outlook_{store_, locale_, options_};
  ScriptedWriter writer_;
  EventLog log_;
};

TEST_F(EmbeddedSaving, ANewItemIsInTheFolderOnceItIsSaved) {
  const auto items = Items();
  items->Connect(&log_);
  const auto item = items->Add("IPM.Appointment.Leave");
  EXPECT_EQ(item->Start(), At(1, 1, 9, 30));
  item->SetSubject("Trip\r\nto Ghent");
  item->SetCategories("Leave;Trips ; ");
  item->SetBody("one\ntwo\rthree\r\n");
  item->SetStart(At(7, 1, 15));
  EXPECT_EQ(item->End(), At(7, 1, 15, 30)) << "an appointment that is moved keeps its length";
  item->SetEnd(At(7, 3, 8));
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
  EXPECT_EQ(saved->Start(), At(7, 1));
  EXPECT_EQ(saved->End(), At(7, 4));
  EXPECT_EQ(saved->LastModificationTime(), now_);
  EXPECT_EQ(items->Add({})->MessageClass(), "IPM.Appointment");
}

TEST_F(EmbeddedSaving, WhatIsSetStaysWithItsObjectUntilItIsSaved) {
  folder_->Add(Lunch());
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
  folder_->Add(Lunch());
  const auto item = ById("lunch");
  Date before = item->LastModificationTime();
  for (const char* subject : {"a", "b", "c"}) {
    item->SetSubject(subject);
    item->Save();
    EXPECT_GT(item->LastModificationTime(), before);
    before = item->LastModificationTime();
  }
  folder_->SetWriter(&writer_);
  item->SetSubject("c");
  item->Save();
  EXPECT_EQ(item->LastModificationTime(), before);
  EXPECT_EQ(writer_.written, Texts{}) << "a save without a change was written";
}

TEST_F(EmbeddedSaving, ACalendarThatRefusesKeepsMemoryAsItWasAndTellsNobody) {
  folder_->Add(Lunch());
  folder_->SetWriter(&writer_);
  writer_.refuses = true;
  const auto items = Items();
  items->Connect(&log_);
  const auto item = ById("lunch");
  item->SetSubject("Dinner");
  EXPECT_THROW(item->Save(), Error);
  EXPECT_THROW(item->Delete(), Error);
  const auto fresh = items->Add({});
  EXPECT_THROW(fresh->Save(), Error);
  EXPECT_EQ(log_.Take(), Texts{});
  EXPECT_EQ(folder_->AllItems().size(), 1U);
  EXPECT_EQ(ById("lunch")->Subject(), "Lunch");

  writer_.refuses = false;
  EXPECT_EQ(item->Subject(), "Dinner") << "what was set was lost";
  item->Save();
  fresh->Save();
  EXPECT_EQ(writer_.written, (Texts{"change Dinner", "new "}));
}

TEST_F(EmbeddedSaving, TimesThatCannotBeAreRefused) {
  folder_->Add(Lunch());
  folder_->Add(Weekly());
  const auto item = ById("lunch");
  item->SetEnd(At(3, 5, 11));
  EXPECT_THROW(item->Save(), Error);
  EXPECT_THROW(item->SetStart(Date(1e9)), Error);
  for (const auto& set : std::initializer_list<std::function<void(OutlookItem&)>>{
           [](OutlookItem& one) { one.SetStart(At(3, 6)); },
           [](OutlookItem& one) { one.SetEnd(At(3, 6)); },
           [](OutlookItem& one) { one.SetAllDayEvent(true); }}) {
    const auto weekly = ById("weekly");
    set(*weekly);
    EXPECT_THROW(weekly->Save(), Error);
  }
  EXPECT_EQ(ById("weekly")->Start(), At(3, 5, 12));
}

TEST_F(EmbeddedSaving, AnOccurrenceSavesAndDeletesItsWholeAppointment) {
  folder_->Add(Weekly());
  const auto items = Items()->Restrict("[Start] <= '12/31/2026' AND [End] > '3/8/2026'");
  items->IncludeRecurrences(true);
  const auto occurrence = items->GetFirst();
  occurrence->SetSubject("Standup");
  occurrence->SetStart(At(3, 12, 12));
  occurrence->Save();
  EXPECT_EQ(occurrence->Start(), At(3, 12, 12));
  EXPECT_EQ(ById("weekly")->Subject(), "Standup");
  EXPECT_EQ(ById("weekly")->Start(), At(3, 5, 12));
  occurrence->Delete();
  EXPECT_EQ(items->GetFirst(), nullptr);
  EXPECT_THROW(occurrence->Delete(), Error);
  EXPECT_THROW(occurrence->Save(), Error);
}

TEST_F(EmbeddedSaving, EventsReachEveryConnectedCollectionAndSurviveWhatSinksDo) {
  folder_->Add(Lunch());
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
    throw Error(errors::CalendarFailed, "a sink that fails");
  };
  item->SetSubject("d");
  item->Save();
  EXPECT_EQ(log_.Take(), (Texts{"change d", "remove"}));
}

TEST_F(EmbeddedSaving, PostedEventsAreDroppedWithTheirCollection) {
  std::deque<std::function<void()>> posted;
  options_.post = [&](std::function<void()> call) { posted.push_back(std::move(call)); };
  EmbeddedOutlook outlook(store_, locale_, options_);
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

TEST_F(EmbeddedSaving, ReplacedItemsAreToldByWhatBecameOfThem) {
  const DateWindow year{At(1, 1), At(12, 31)};
  folder_->Replace({Lunch(), Weekly()}, year);
  const auto items = Items();
  items->Connect(&log_);
  const Date before = ById("lunch")->LastModificationTime();
  CalendarItem dinner = Lunch();
  dinner.fields.subject = "Dinner";
  CalendarItem extra = Lunch();
  extra.entryId = "extra";
  folder_->Replace({extra, dinner}, year);
  EXPECT_EQ(log_.Take(), (Texts{"add Lunch", "change Dinner", "remove"}));
  EXPECT_GT(ById("lunch")->LastModificationTime(), before);
  folder_->Replace({extra, dinner}, year);
  EXPECT_EQ(log_.Take(), Texts{});

  std::vector<CalendarItem> many;
  for (int i = 0; i < 60; ++i) {
    many.push_back(Lunch());
    many.back().entryId = std::to_string(i);
  }
  folder_->Replace(many, year);
  EXPECT_EQ(log_.Take(), Texts{"remove"});
}

TEST_F(EmbeddedSaving, AnUnsavedRecordIsWrittenByItsFirstSave) {
  folder_->Replace({Lunch()}, {At(1, 1), At(12, 31)});
  folder_->SetWriter(&writer_);
  CalendarItem record = Lunch();
  record.entryId.clear();
  record.fields.subject = "Record";
  folder_->AddUnsaved(record);
  const auto item = Items()->Find("[Start]>='12/31/2010' AND [Subject]='Record'");
  ASSERT_NE(item, nullptr);
  const std::string before = item->EntryID();
  EXPECT_EQ(writer_.written, Texts{});
  folder_->Replace({Lunch()}, {At(1, 1), At(12, 31)});
  EXPECT_NE(Items()->Find("[Subject]='Record'"), nullptr) << "reading again lost the record";

  item->SetBody("list");
  item->Save();
  EXPECT_EQ(writer_.written, Texts{"new Record"});
  const auto again = ById(before);
  again->SetBody("longer list");
  again->Save();
  EXPECT_EQ(writer_.written, (Texts{"new Record", "change Record"}));
  folder_->Replace({Lunch()}, {At(1, 1), At(12, 31)});
  EXPECT_EQ(Items()->Find("[Subject]='Record'"), nullptr) << "a saved record is like any other";
}

TEST_F(EmbeddedSaving, AnUnsavedRecordCanBeOfferedAgainUnderItsOldIdentifier) {
  folder_->SetWriter(&writer_);
  CalendarItem record = Lunch();
  for (int round = 0; round < 2; ++round) {
    folder_->AddUnsaved(record);
    folder_->AddUnsaved(record);
    EXPECT_EQ(folder_->AllItems().size(), 1U);
    const auto item = Items()->Find("[Subject]='Lunch'");
    item->SetBody("list");
    item->Save();
    Items()->Find("[Subject]='Lunch'")->Delete();
  }
  EXPECT_EQ(writer_.written, (Texts{"new Lunch", "delete Lunch", "new Lunch", "delete Lunch"}));
}

TEST_F(EmbeddedSaving, AMeetingItemOfAMailFolderLeadsToTheAppointmentAsItStandsNow) {
  folder_->Add(Lunch());
  CalendarItem meeting = Lunch();
  meeting.entryId = "invitation";
  meeting.itemClass = outlook::ClassMeetingRequest;
  meeting.appointment = std::make_shared<CalendarItem>(Lunch());
  inbox_->Add(meeting);
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
  folder_->Add(Lunch());
  EXPECT_THROW(ById("lunch")->Display(true), Error);
}

}  // namespace
}  // namespace velkor
