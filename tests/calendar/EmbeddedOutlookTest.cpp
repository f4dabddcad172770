// tests/calendar/EmbeddedOutlookTest.cpp: folders, order, occurrences and loading.
#include "calendar/EmbeddedOutlook.h"

#include "tests/model/CalendarInMemory.h"
#include "values/Error.h"

namespace velkor {
namespace {

CalendarItem Single(const std::string& subject, Date start, Date end) {
  CalendarItem item = SampleItem(subject, start, end);
  item.fields.subject = subject;
  return item;
}

Date Day(int month, int day, int hour = 0) {
  return Date::FromFields({2026, month, day, hour, 0, 0});
}

/// One hour at 9:00 on the 5th of each month of the window.
CalendarItem Monthly(const DateWindow& window) {
  CalendarItem item = Single("Monthly", At(2020, 1, 5, 9), At(2020, 1, 5, 10));
  item.recurring = true;
  for (int month = 1; month <= 240; ++month) {
    const Date start = At(2020, month, 5, 9);
    const Date end = At(2020, month, 5, 10);
    if (start <= window.to && end >= window.from) item.occurrences.push_back({start, end, -1});
  }
  return item;
}

class EmbeddedOutlookTest : public CalendarInMemory {
 protected:
  std::unique_ptr<OutlookItems> Items() {
    return embedded_.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar)->Items();
  }
  static std::vector<std::string> Subjects(OutlookItems& items) {
    std::vector<std::string> subjects;
    for (auto item = items.GetFirst(); item; item = items.GetNext()) {
      subjects.push_back(item->Subject());
    }
    return subjects;
  }
};

using Names = std::vector<std::string>;

TEST_F(EmbeddedOutlookTest, FoldersAreFoundByPathByIdentifierAndByDefault) {
  root_.AddFolder("Inbox", "inbox", outlook::ItemTypeMail);
  const auto session = embedded_.GetNamespace("MAPI");
  const auto walked = session->Folder("mailbox")->Folder("Calendar");
  EXPECT_EQ(walked->EntryID(), "calendar");
  EXPECT_EQ(walked->DefaultItemType(), outlook::ItemTypeAppointment);
  EXPECT_EQ(session->Folder("Mailbox")->Folder("Inbox")->DefaultItemType(), outlook::ItemTypeMail);
  EXPECT_EQ(session->GetDefaultFolder(outlook::FolderCalendar)->EntryID(), "calendar");
  EXPECT_EQ(session->GetFolderFromID("calendar", walked->StoreID())->Name(), "Calendar");
  EXPECT_EQ(session->Folder("Calendar"), nullptr);
  EXPECT_EQ(walked->Folder("Calendar"), nullptr);
  EXPECT_THROW(session->GetFolderFromID("calendar", "store 2"), Error);
  EXPECT_THROW(session->GetFolderFromID("f9", walked->StoreID()), Error);
  EXPECT_THROW(session->GetDefaultFolder(6), Error);
  EXPECT_THROW(embedded_.GetNamespace("LDAP"), Error);
  store_.SetDefaultCalendar(nullptr);
  EXPECT_EQ(session->GetDefaultFolder(outlook::FolderCalendar), nullptr);
}

TEST_F(EmbeddedOutlookTest, SortGoesByStartAndKeepsTheFolderOrderOfEqualStarts) {
  calendar_.Add(Single("late", Day(3, 1), Day(3, 2)));
  calendar_.Add(Single("first", Day(2, 1), Day(2, 2)));
  calendar_.Add(Single("second", Day(2, 1), Day(2, 1)));
  const auto items = Items();
  EXPECT_EQ(Subjects(*items), (Names{"late", "first", "second"}));
  items->Sort("[Start]");
  EXPECT_EQ(Subjects(*items), (Names{"first", "second", "late"}));
  EXPECT_THROW(items->Sort("[Colour]"), Error);
}

TEST_F(EmbeddedOutlookTest, ARecurringItemCountsOnceUnlessRecurrencesAreIncluded) {
  calendar_.Add(Monthly({Day(1, 1), Day(12, 31)}));
  calendar_.Add(Single("single", Day(3, 5), Day(3, 6)));

  EXPECT_EQ(Items()->GetFirst()->Start(), At(2020, 1, 5, 9));
  const auto items = Items()->Restrict("[Start] <= '4/30/2026' AND [End] > '2/28/2026'");
  items->Sort("[Start]");
  EXPECT_EQ(Subjects(*items), (Names{"single"}));
  EXPECT_EQ(Subjects(*items->Restrict("[Subject]='Monthly'")), Names());
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
  calendar_.Add(item);
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
  int loads = 0;
  calendar_.SetLoader([&](const DateWindow& window) {
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

TEST_F(EmbeddedOutlookTest, AnItemStaysUsableAfterItsFolderWasLoadedAgain) {
  calendar_.Add(Single("kept", Day(1, 1), Day(1, 2)));
  const auto items = Items();
  const auto item = items->GetFirst();
  calendar_.Replace({Single("new", Day(1, 1), Day(1, 2))}, {Day(1, 1), Day(12, 31)});
  EXPECT_EQ(item->Subject(), "kept");
  EXPECT_EQ(items->GetNext(), nullptr);
  EXPECT_EQ(items->GetFirst()->Subject(), "new");
}

}  // namespace
}  // namespace velkor
