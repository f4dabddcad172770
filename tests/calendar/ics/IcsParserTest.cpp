// tests/calendar/ics/IcsParserTest.cpp: what well-formed calendars show. Runs in the zone of St.
// John's, half an hour off the others (UTC-3:30, in summer UTC-2:30).
#include "calendar/ics/read/IcsParser.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/calendar/ics/IcsCase.h"

namespace velkor {
namespace {

using Texts = std::vector<std::string>;

TEST(IcsParser, AllDayEventsKeepTheirDatesInEveryZone) {
  const CalendarItem item =
      OnlyItem("SUMMARY:Leave\nDTSTART;VALUE=DATE:20260702\nDTEND;VALUE=DATE:20260705\n");
  EXPECT_EQ(Words(item.start, item.end), "2026-07-02 00:00 to 2026-07-05 00:00");
  EXPECT_TRUE(item.fields.allDay);
  EXPECT_FALSE(item.recurring);
  EXPECT_EQ(SpanOf("DTSTART;VALUE=DATE;TZID=Asia/Tokyo:20260101\n"),
            "2026-01-01 00:00 to 2026-01-02 00:00");
  EXPECT_EQ(SpanOf("DTSTART:20260101\nDURATION:P2D\n"), "2026-01-01 00:00 to 2026-01-03 00:00");
}

TEST(IcsParser, TimedEventsShowLocalWallClockTime) {
  EXPECT_EQ(SpanOf("DTSTART:20260115T120000Z\nDTEND:20260115T133000Z\n"),
            "2026-01-15 08:30 to 2026-01-15 10:00");
  EXPECT_EQ(SpanOf("DTSTART:20260715T120000Z\nDURATION:PT1H30M\n"),
            "2026-07-15 09:30 to 2026-07-15 11:00");
  EXPECT_EQ(SpanOf("DTSTART:20260715T120000\nDTEND:20260716T010000\n"),
            "2026-07-15 12:00 to 2026-07-16 01:00");
  EXPECT_EQ(SpanOf("DTSTART;TZID=Europe/Berlin:20260715T120000\nDTEND:20260715T110000Z\n"),
            "2026-07-15 07:30 to 2026-07-15 08:30");
  EXPECT_FALSE(OnlyItem("DTSTART:20260715T120000Z\n").fields.allDay);
}

TEST(IcsParser, RulesRepeatOnTheClockOfTheirZone) {
  // 9:30 in Tokyo is nine in the evening, in summer ten.
  const CalendarItem item = OnlyItem(
      "DTSTART;TZID=Asia/Tokyo:20200115T093000\nDTEND;TZID=Asia/Tokyo:20200115T103000\n"
      "RRULE:FREQ=MONTHLY;INTERVAL=3\n");
  EXPECT_TRUE(item.recurring);
  EXPECT_EQ(Words(item.start), "2020-01-14 21:00");
  EXPECT_EQ(StartsOf(item), (Texts{"2026-01-14 21:00", "2026-04-14 22:00", "2026-07-14 22:00",
                                   "2026-10-14 22:00"}));
  // A night keeps its hours across the change of the clock on 8 March.
  const CalendarItem night = OnlyItem(
      "DTSTART;TZID=America/St_Johns:20260306T220000\nDTEND;TZID=America/St_Johns:20260307T060000\n"
      "RRULE:FREQ=DAILY;COUNT=3\n");
  ASSERT_EQ(night.occurrences.size(), 3U);
  EXPECT_EQ(Words(night.occurrences[1].start, night.occurrences[1].end),
            "2026-03-07 22:00 to 2026-03-08 06:00");
}

TEST(IcsParser, RulesEndByCountOrUntil) {
  const auto starts = [](const std::string& rule) {
    return StartsOf(OnlyItem("DTSTART;VALUE=DATE:20251229\nRRULE:" + rule + "\n"));
  };
  const Texts two{"2026-01-05 00:00", "2026-01-12 00:00"};
  EXPECT_EQ(starts("FREQ=WEEKLY;COUNT=3"), two);
  EXPECT_EQ(starts("FREQ=WEEKLY;UNTIL=20260112"), two);
  EXPECT_EQ(starts("UNTIL=20260112T045959Z;FREQ=WEEKLY"), two);
  EXPECT_EQ(StartsOf(OnlyItem("DTSTART;TZID=Asia/Tokyo:20260105T090000\n"
                              "RRULE:FREQ=DAILY;UNTIL=20260106T000000Z\n")),
            (Texts{"2026-01-04 20:30", "2026-01-05 20:30"}));
  // An occurrence that begins before the window and reaches into it.
  EXPECT_EQ(StartsOf(OnlyItem("DTSTART;VALUE=DATE:20191230\nDTEND;VALUE=DATE:20200105\n"
                              "RRULE:FREQ=YEARLY;UNTIL=20260101\n")),
            (Texts{"2025-12-30 00:00"}));
}

TEST(IcsParser, TheFirstStartCountsEvenWhenTheRuleDoesNotGiveIt) {
  EXPECT_EQ(StartsOf(OnlyItem("DTSTART;VALUE=DATE:20260101\n"
                              "RRULE:FREQ=WEEKLY;BYDAY=MO;COUNT=3\n")),
            (Texts{"2026-01-01 00:00", "2026-01-05 00:00", "2026-01-12 00:00"}));
}

TEST(IcsParser, IdentifiersStayTheSameAndTellItemsApart) {
  const std::string text = Calendar(
      Event("UID:a\nSUMMARY:1\nDTSTART:20260101\n") +
      Event("UID:a\nSUMMARY:2\nDTSTART:20260102\n") +
      Event("UID:a\nSUMMARY:2\nDTSTART:20260102\n") + Event("SUMMARY:3\nDTSTART:20260103\n") +
      Event("SUMMARY:3\nDTSTART:20260103\n") + Event("UID:\nSUMMARY:4\nDTSTART:20260103\n"));
  const auto identifiers = [](const ParsedCalendar& calendar) {
    Texts ids;
    for (const CalendarItem& item : calendar.items) ids.push_back(item.entryId);
    return ids;
  };
  const Texts ids = identifiers(Parse(text));
  ASSERT_EQ(ids.size(), 6U);
  EXPECT_EQ(ids, identifiers(Parse(text)));
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), 6U);
  EXPECT_EQ(ids[0].find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_EQ(ids[0].size(), 32U);
  // The identifier of a UID stays when the event changes.
  EXPECT_EQ(ids[0], OnlyItem("UID:a\nSUMMARY:new\nDTSTART:20270101\n").entryId);
  // A change of an event that does not recur stands for it.
  const std::string change = "UID:a\nRECURRENCE-ID:20260201T100000\nDTSTART:20260202\n";
  EXPECT_EQ(identifiers(Parse(Calendar(Event("UID:a\nDTSTART:20260201T100000\n") + Event(change)))),
            Texts{ids[0]});
  EXPECT_EQ(ParseIcs(Calendar(""), "folder/Team Year.ICS", Year(2026)).name, "Team Year");
}

}  // namespace
}  // namespace velkor
