// tests/refresh/RefreshYearTest.cpp: a calendar's year into the cache file, and what can go wrong.
#include "refresh/RefreshYear.h"

#include <gmock/gmock.h>

#include "model/CacheRecord.h"
#include "model/ColourRecord.h"
#include "tests/model/CalendarInMemory.h"
#include "tests/model/RefreshDoubles.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class RefreshYearTest : public CalendarInMemory {
 protected:
  RefreshYearTest() { seams_.files.contents[request_.paths.cacheFile] = "old"; }

  RefreshAnswer Refresh(const std::function<bool()>& proceed = {},
                        const std::function<void()>& open = {}) {
    return RefreshYear(request_, embedded_, seams_.files, seams_.locale, proceed, open);
  }
  std::string CacheBytes() { return seams_.files.Read(request_.paths.cacheFile).value_or("none"); }
  std::vector<CalEvent> Cached() {
    const std::string bytes = CacheBytes();
    CacheRecordReader reader(bytes, seams_.locale);
    std::vector<CalEvent> events;
    for (CalEvent event; reader.Next(event);) events.push_back(event);
    EXPECT_EQ(reader.Remaining(), 0U);
    return events;
  }
  std::vector<std::string> Subjects() {
    std::vector<std::string> subjects;
    for (const CalEvent& event : Cached()) subjects.push_back(event.Subject);
    return subjects;
  }
  /// The result, after checking that the cache file is the old one and no file is held.
  int FailedWith(const RefreshAnswer& answer) {
    EXPECT_EQ(CacheBytes(), "old");
    EXPECT_THAT(seams_.files.Held(), IsEmpty());
    return static_cast<int>(answer.result);
  }

  RefreshRequest request_{{2005, 7}, {"/temp/c.tmp", "/temp/~c.tmp"}, "calendar", "store"};
};

TEST_F(RefreshYearTest, WritesWhatTouchesTheSpanInOrderOfStart) {
  EXPECT_EQ(Refresh().result, SynchResult::CacheWritten);
  EXPECT_EQ(CacheBytes(), "");
  calendar_.Add(SampleItem("after", At(2006, 7, 1), At(2006, 7, 2)));
  calendar_.Add(SampleItem("last day", At(2006, 6, 30, 23), At(2006, 7, 1)));
  calendar_.Add(SampleItem("before", At(2005, 6, 30), At(2005, 7, 1)));
  calendar_.Add(SampleItem("across", At(2005, 6, 1), At(2005, 7, 1, 1)));
  CalendarItem trip = SampleItem("Trip – Zürich", At(2005, 12, 24, 9, 30), At(2005, 12, 26));
  trip.fields.categories = {"Leave", "Key Customer"};
  calendar_.Add(trip);
  const RefreshAnswer answer = Refresh();
  EXPECT_EQ(answer.result, SynchResult::CacheWritten);
  EXPECT_EQ(answer.error, 0);
  EXPECT_EQ(answer.count, 3U);
  ASSERT_THAT(Subjects(),
              ElementsAre("Subject of across", "Subject of Trip – Zürich", "Subject of last day"));
  const CalEvent event = Cached()[1];
  EXPECT_EQ(event.EventID, "Trip – Zürich");
  EXPECT_EQ(event.Categories, "Leave, Key Customer");
  EXPECT_EQ(event.StartDate, At(2005, 12, 24, 9, 30));
  EXPECT_EQ(event.EndDate, At(2005, 12, 26));
  EXPECT_FALSE(seams_.files.Exists(request_.paths.workFile));
  EXPECT_THAT(seams_.files.Held(), IsEmpty());
}

TEST_F(RefreshYearTest, TheCalendarIsOpenedOnceNobodyElseCanWrite) {
  bool isStopped = false;
  const auto open = [&] {
    EXPECT_THAT(seams_.files.Held(), testing::ElementsAre(request_.paths.workFile));
    if (isStopped) request_.folderId = "not opened";
  };
  const auto proceed = [&] { return !isStopped; };
  calendar_.Add(SampleItem("a", At(2005, 12, 24), At(2005, 12, 26)));
  EXPECT_EQ(Refresh(proceed, open).count, 1U);
  seams_.files.contents[request_.paths.cacheFile] = "old";
  isStopped = true;
  EXPECT_EQ(FailedWith(Refresh(proceed, open)), 6) << "stopped, it may have opened nothing";
  EXPECT_EQ(FailedWith(Refresh({}, [] { throw Error(5, "no calendar"); })), 7);
}

TEST_F(RefreshYearTest, WritesEachOccurrenceOfTheSpanWithItsOwnFields) {
  CalendarItem weekly = SampleItem("Weekly", At(2005, 6, 29, 9), At(2005, 6, 29, 10));
  weekly.recurring = true;
  weekly.changed.push_back({.subject = "Moved", .categories = {}, .location = {}, .body = {}});
  for (int week = 0; week < 3; ++week) {
    weekly.occurrences.push_back(
        {At(2005, 6, 29 + 7 * week, 9), At(2005, 6, 29 + 7 * week, 10), week == 2 ? 0 : -1});
  }
  calendar_.Add(weekly);
  EXPECT_EQ(Refresh().count, 2U);
  EXPECT_THAT(Subjects(), ElementsAre("Subject of Weekly", "Moved"));
  EXPECT_EQ(Cached()[0].EventID, Cached()[1].EventID);
}

TEST_F(RefreshYearTest, AMeetingItemBringsItsAppointmentAndOtherItemsBringNothing) {
  CalendarItem meeting = SampleItem("Invitation", At(2006, 1, 5), At(2006, 1, 6));
  meeting.itemClass = outlook::ClassMeetingRequest;
  meeting.appointment =
      std::make_shared<CalendarItem>(SampleItem("Budget", At(2006, 1, 7), At(2006, 1, 8)));
  calendar_.Add(meeting);
  meeting.appointment = nullptr;
  calendar_.Add(meeting);
  CalendarItem note = SampleItem("Note", At(2006, 1, 5), At(2006, 1, 6));
  note.itemClass = 44;
  calendar_.Add(note);
  EXPECT_EQ(Refresh().count, 1U);
  ASSERT_THAT(Subjects(), ElementsAre("Subject of Budget"));
  EXPECT_EQ(Cached()[0].StartDate, At(2006, 1, 7));
}

TEST_F(RefreshYearTest, ColourRecordsStayOut) {
  request_.span = {2011, 1};
  EXPECT_EQ(colour_record::HiddenInstant(), At(2011, 1, 1, 1, 30));
  for (const char* subject :
       {"PLEASE IGNORE - Velkor Category Colours: Team",
        "PLEASE IGNORE - Velkor Category Colours: ",
        "Please Ignore - Holds Category Colours for the Year Planner", "Please ignore"}) {
    calendar_.Add(SampleRecord(subject, ""));
  }
  Refresh();
  EXPECT_THAT(Subjects(), ElementsAre("Please ignore"));
}

TEST_F(RefreshYearTest, EachFailureHasItsResultAndLeavesTheOldFile) {
  calendar_.Add(SampleItem("a", At(2006, 1, 5), At(2006, 1, 6)));
  MemoryFiles::Failures& fail = seams_.files.fail;

  fail.open.insert(request_.paths.workFile);
  EXPECT_EQ(FailedWith(Refresh()), 2);
  fail = {};
  fail.replace.insert(request_.paths.cacheFile);
  EXPECT_EQ(FailedWith(Refresh()), 3);
  fail = {};
  fail.writeAfter = 5;
  const RefreshAnswer full = Refresh();
  EXPECT_EQ(FailedWith(full), 8);
  EXPECT_EQ(full.error, errors::DeviceInputOutput);
  fail = {};

  request_.folderId = "gone";
  const RefreshAnswer gone = Refresh();
  EXPECT_EQ(FailedWith(gone), 7);
  EXPECT_EQ(gone.error, errors::CalendarFailed);
  EXPECT_NE(gone.description, "");
  request_.folderId = "calendar";

  NoOutlook outlook;
  const RefreshAnswer loggedOff = RefreshYear(request_, outlook, seams_.files, seams_.locale);
  EXPECT_EQ(FailedWith(loggedOff), 5);
  EXPECT_EQ(loggedOff.error, 1234);

  EXPECT_EQ(FailedWith(Refresh([] { return false; })), 6);
  EXPECT_EQ(Refresh([] { return true; }).result, SynchResult::CacheWritten);

  seams_.files.contents[request_.paths.cacheFile] = "old";
  calendar_.SetLoader([](const DateWindow&) -> std::vector<CalendarItem> {
    throw Error(1234, "line 7 of team.ics");
  });
  const RefreshAnswer unread = Refresh();
  EXPECT_EQ(FailedWith(unread), 7);
  EXPECT_EQ(unread.error, 1234);
  EXPECT_EQ(unread.description, "line 7 of team.ics");
}

TEST_F(RefreshYearTest, AStopIsHeardBeforeALargeCalendarIsReadToItsEnd) {
  for (int i = 0; i < 5000; ++i) {
    calendar_.Add(SampleItem("appointment " + std::to_string(i), At(2006, 1, 5), At(2006, 1, 6)));
  }
  int asked = 0;
  const RefreshAnswer answer = Refresh([&] { return ++asked < 2; });
  EXPECT_EQ(FailedWith(answer), 6);
  EXPECT_LT(answer.count, 5000U);
}

}  // namespace
}  // namespace velkor
