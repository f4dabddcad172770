// tests/calendar/EmbeddedOutlookTest.cpp: folders, restriction, order, occurrences and search.
#include "calendar/EmbeddedOutlook.h"

#include <gtest/gtest.h>

#include "platform/headless/FixedLocale.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

CalendarItem Single(const std::string& subject, Date start, Date end) {
  CalendarItem item;
  item.entryId = "id of " + subject;
  item.fields.subject = subject;
  item.start = start;
  item.end = end;
  return item;
}

Date Day(int month, int day, int hour = 0) {
  return Date::FromFields({2026, month, day, hour, 0, 0});
}

/// One hour at 9:00 on the 5th of each month of the window.
CalendarItem Monthly(const DateWindow& window) {
  CalendarItem item = Single("Monthly", Date::FromFields({2020, 1, 5, 9, 0, 0}),
                             Date::FromFields({2020, 1, 5, 10, 0, 0}));
  item.recurring = true;
  for (int month = 1; month <= 240; ++month) {
    const Date start = Date::FromFields({2020, month, 5, 9, 0, 0});
    const Date end = Date::FromFields({2020, month, 5, 10, 0, 0});
    if (start <= window.to && end >= window.from) item.occurrences.push_back({start, end, -1});
  }
  return item;
}

class EmbeddedOutlookTest : public testing::Test {
 protected:
  std::unique_ptr<OutlookItems> Items() {
    return outlook_.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar)->Items();
  }
  static std::vector<std::string> Subjects(OutlookItems& items) {
    std::vector<std::string> subjects;
    for (auto item = items.GetFirst(); item; item = items.GetNext()) {
      subjects.push_back(item->Subject());
    }
    return subjects;
  }
  CalendarFolder& AddCalendar() {
    CalendarFolder& root = store_.AddFolder("Personal Folders", "f0", outlook::ItemTypeMail);
    CalendarFolder& calendar = root.AddFolder("Team", "f1", outlook::ItemTypeAppointment);
    root.AddFolder("Inbox", "f2", outlook::ItemTypeMail);
    store_.SetDefaultCalendar(&calendar);
    return calendar;
  }

  CalendarStore store_{"store 1"};
  FixedLocale locale_;
  EmbeddedOutlook outlook_{store_, locale_, {"Ann", ";", "11.0"}};
};

using Names = std::vector<std::string>;

TEST_F(EmbeddedOutlookTest, FoldersAreFoundByPathByIdentifierAndByDefault) {
  const auto session = outlook_.GetNamespace("MAPI");
  EXPECT_EQ(session->GetDefaultFolder(outlook::FolderCalendar), nullptr);
  AddCalendar();
  const auto walked = session->Folder("personal folders")->Folder("Team");
  EXPECT_EQ(walked->EntryID(), "f1");
  EXPECT_EQ(walked->DefaultItemType(), outlook::ItemTypeAppointment);
  EXPECT_EQ(session->Folder("Personal Folders")->Folder("Inbox")->DefaultItemType(),
            outlook::ItemTypeMail);
  EXPECT_EQ(session->GetDefaultFolder(outlook::FolderCalendar)->EntryID(), "f1");
  EXPECT_EQ(session->GetFolderFromID("f1", walked->StoreID())->Name(), "Team");
  EXPECT_EQ(session->Folder("Team"), nullptr);
  EXPECT_EQ(walked->Folder("Team"), nullptr);
  EXPECT_THROW(session->GetFolderFromID("f1", "store 2"), Error);
  EXPECT_THROW(session->GetFolderFromID("f9", walked->StoreID()), Error);
  EXPECT_THROW(session->GetDefaultFolder(6), Error);
  EXPECT_THROW(outlook_.GetNamespace("LDAP"), Error);
}

TEST_F(EmbeddedOutlookTest, RestrictionLeavesOutWhatOnlyTouchesTheSpan) {
  CalendarFolder& calendar = AddCalendar();
  calendar.Add(Single("before", Date::FromYmd(2025, 12, 30), Day(1, 1)));
  calendar.Add(Single("into", Date::FromYmd(2025, 12, 30), Day(1, 1, 1)));
  calendar.Add(Single("last", Day(12, 31, 23), Date::FromYmd(2027, 1, 5)));
  calendar.Add(Single("after", Date::FromYmd(2027, 1, 1), Date::FromYmd(2027, 1, 2)));
  const auto items =
      Items()->Restrict("[Start] <= \"12/31/2026 11:59 PM\" AND [End] > \"1/1/2026 12:00 AM\"");
  EXPECT_EQ(Subjects(*items), (Names{"into", "last"}));
  EXPECT_EQ(Subjects(*items->Restrict("[Subject]='LAST'")), (Names{"last"}));
  EXPECT_THROW(Items()->Restrict("[Subject]='it's'"), Error);
}

TEST_F(EmbeddedOutlookTest, FilterDatesFollowTheLocale) {
  AddCalendar().Add(Single("a", Day(2, 1), Day(2, 2)));
  EXPECT_EQ(Subjects(*Items()->Restrict("[Start]='2/1/2026'")), (Names{"a"}));
  locale_.dates = DatePattern("dd/MM/yyyy", false);
  EXPECT_EQ(Subjects(*Items()->Restrict("[Start]='1/2/2026'")), (Names{"a"}));
  locale_.dates = DatePattern("yyyy-MM-dd", false);
  EXPECT_EQ(Subjects(*Items()->Restrict("[Start]='2026-02-01'")), (Names{"a"}));
}

TEST_F(EmbeddedOutlookTest, SortGoesByStartAndKeepsTheFolderOrderOfEqualStarts) {
  CalendarFolder& calendar = AddCalendar();
  calendar.Add(Single("late", Day(3, 1), Day(3, 2)));
  calendar.Add(Single("first", Day(2, 1), Day(2, 2)));
  calendar.Add(Single("second", Day(2, 1), Day(2, 1)));
  const auto items = Items();
  EXPECT_EQ(Subjects(*items), (Names{"late", "first", "second"}));
  items->Sort("[Start]");
  EXPECT_EQ(Subjects(*items), (Names{"first", "second", "late"}));
  EXPECT_THROW(items->Sort("[Colour]"), Error);
}

TEST_F(EmbeddedOutlookTest, ARecurringItemCountsOnceUnlessRecurrencesAreIncluded) {
  CalendarFolder& calendar = AddCalendar();
  calendar.Add(Monthly({Day(1, 1), Day(12, 31)}));
  calendar.Add(Single("single", Day(3, 5), Day(3, 6)));

  EXPECT_EQ(Items()->GetFirst()->Start(), Date::FromFields({2020, 1, 5, 9, 0, 0}));
  const auto items = Items()->Restrict("[Start] <= '4/30/2026' AND [End] > '2/28/2026'");
  items->Sort("[Start]");
  EXPECT_EQ(Subjects(*items), (Names{"single"}));
  items->IncludeRecurrences(true);
  EXPECT_EQ(Subjects(*items), (Names{"single", "Monthly", "Monthly"}));
  items->GetFirst();
  const auto march = items->GetNext();
  const auto april = items->GetNext();
  EXPECT_EQ(march->EntryID(), april->EntryID());
  EXPECT_TRUE(april->IsRecurring());
  EXPECT_EQ(april->Start(), Day(4, 5, 9));
  EXPECT_EQ(april->End(), Day(4, 5, 10));
  EXPECT_EQ(items->GetNext(), nullptr);
  EXPECT_EQ(items->GetNext(), nullptr);

  const auto unbounded = Items()->Restrict("[Start] <= '4/30/2026'");
  unbounded->IncludeRecurrences(true);
  EXPECT_EQ(Subjects(*unbounded), (Names{"Monthly", "single"}));
}

TEST_F(EmbeddedOutlookTest, AChangedOccurrenceShowsItsOwnFields) {
  CalendarItem item = Monthly({Day(1, 1), Day(3, 31)});
  item.changed.push_back({"Moved", {"Trips"}, "Ghent", "Bring boots\r\nand a map", true});
  item.occurrences[1] = {Day(2, 20), Day(2, 21), 0};
  AddCalendar().Add(item);
  const auto items = Items()->Restrict("[Start] <= '12/31/2026' AND [End] > '1/1/2026'");
  items->IncludeRecurrences(true);
  EXPECT_EQ(Subjects(*items), (Names{"Monthly", "Moved", "Monthly"}));
  const auto moved = items->Find("[Subject]='Moved'");
  EXPECT_EQ(moved->Location(), "Ghent");
  EXPECT_EQ(moved->Body(), "Bring boots\r\nand a map");
  EXPECT_TRUE(moved->AllDayEvent());
  EXPECT_EQ(moved->EntryID(), item.entryId);
}

TEST_F(EmbeddedOutlookTest, OneLoadServesTheNeighbouringYears) {
  CalendarFolder& calendar = AddCalendar();
  int loads = 0;
  calendar.SetLoader([&](const DateWindow& window) {
    ++loads;
    return std::vector<CalendarItem>{Monthly(window)};
  });
  const auto occurrencesOf = [&](int year) {
    const std::string text = std::to_string(year);
    const auto items = Items()->Restrict("[Start] <= \"12/31/" + text +
                                         " 11:59 PM\" AND [End] > \"1/1/" + text + " 12:00 AM\"");
    items->IncludeRecurrences(true);
    return Subjects(*items).size();
  };
  for (int year : {2026, 2025, 2027, 2026}) EXPECT_EQ(occurrencesOf(year), 12U);
  EXPECT_EQ(loads, 1);
  EXPECT_EQ(occurrencesOf(2029), 12U);
  EXPECT_EQ(occurrencesOf(2026), 12U);
  EXPECT_EQ(loads, 2);
  EXPECT_EQ(occurrencesOf(2300), 0U);
  EXPECT_EQ(occurrencesOf(2026), 12U);
}

TEST_F(EmbeddedOutlookTest, AFailedLoadKeepsWhatWasThere) {
  CalendarFolder& calendar = AddCalendar();
  calendar.Replace({Monthly({Day(1, 1), Day(12, 31)})}, {Day(1, 1), Day(12, 31)});
  calendar.SetLoader([](const DateWindow&) -> std::vector<CalendarItem> {
    throw Error(errors::CalendarFailed, "gone");
  });
  const auto later = Items()->Restrict("[Start] <= '12/31/2028' AND [End] > '1/1/2028'");
  later->IncludeRecurrences(true);
  EXPECT_THROW(later->GetFirst(), Error);
  const auto loaded = Items()->Restrict("[Start] <= '12/31/2026' AND [End] > '1/1/2026'");
  loaded->IncludeRecurrences(true);
  EXPECT_EQ(Subjects(*loaded).size(), 12U);
}

TEST_F(EmbeddedOutlookTest, FindVisitsEveryMatchOnce) {
  CalendarFolder& calendar = AddCalendar();
  const Date hidden = Date::FromFields({2011, 1, 1, 1, 30, 0});
  calendar.Add(Single("record A", hidden, hidden));
  calendar.Add(Single("other", Day(1, 1), Day(1, 2)));
  calendar.Add(Single("record B", hidden, hidden));
  const auto items = Items();
  EXPECT_EQ(items->Find("[Start]>='12/31/2010' AND [End]<'1/2/2011'")->Subject(), "record A");
  EXPECT_EQ(items->FindNext()->Subject(), "record B");
  EXPECT_EQ(items->FindNext(), nullptr);
  EXPECT_EQ(items->Find("[Start]>='12/31/2010' AND [Subject]='none'"), nullptr);
  EXPECT_EQ(items->FindNext(), nullptr);
}

TEST_F(EmbeddedOutlookTest, AnItemStaysUsableAfterItsFolderWasLoadedAgain) {
  CalendarFolder& calendar = AddCalendar();
  calendar.Add(Single("kept", Day(1, 1), Day(1, 2)));
  const auto items = Items();
  const auto item = items->GetFirst();
  calendar.Replace({Single("new", Day(1, 1), Day(1, 2))}, {Day(1, 1), Day(12, 31)});
  EXPECT_EQ(item->Subject(), "kept");
  EXPECT_EQ(items->GetNext(), nullptr);
  EXPECT_EQ(items->GetFirst()->Subject(), "new");
}

}  // namespace
}  // namespace velkor
