// tests/calendar/IcsParserTest.cpp: what well-formed calendars show. Runs in the zone of St.
// John's, half an hour off the others (UTC-3:30, in summer UTC-2:30).
#include "calendar/IcsParser.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/calendar/IcsCase.h"

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

TEST(IcsParser, ZonesAreFoundUnderAllTheirNames) {
  for (const char* tzid : {"Asia/Tokyo", "/mozilla.org/20070129_1/Asia/Tokyo",
                           "Tokyo Standard Time", "\"Asia/Tokyo\""}) {
    EXPECT_EQ(SpanOf("DTSTART;TZID=" + std::string(tzid) + ":20260101T093000\n"),
              "2025-12-31 21:00 to 2025-12-31 21:00")
        << tzid;
  }
}

constexpr std::string_view OwnZone =
    "BEGIN:VTIMEZONE\nTZID:Office\n"
    "BEGIN:STANDARD\nDTSTART:19701025T030000\nRRULE:FREQ=YEARLY;BYMONTH=10;BYDAY=-1SU\n"
    "TZOFFSETFROM:+0300\nTZOFFSETTO:+0200\nEND:STANDARD\n"
    "BEGIN:DAYLIGHT\nDTSTART:19700329T020000\nRRULE:FREQ=YEARLY;BYMONTH=3;BYDAY=-1SU\n"
    "TZOFFSETFROM:+0200\nTZOFFSETTO:+0300\nEND:DAYLIGHT\nEND:VTIMEZONE\n";

TEST(IcsParser, AZoneThatTheFileDefinesComesFirst) {
  const std::string events = Event("DTSTART;TZID=Office:20260115T120000\n") +
                             Event("DTSTART;TZID=Office:20260715T120000\n");
  // The definition may stand after the event, and in another calendar of the file.
  for (const std::string& text :
       {Calendar(std::string(OwnZone) + events), Calendar(events + std::string(OwnZone)),
        Calendar(OwnZone) + Calendar(events)}) {
    const ParsedCalendar calendar = Parse(text);
    ASSERT_EQ(calendar.items.size(), 2U);
    EXPECT_EQ(Words(calendar.items[0].start), "2026-01-15 06:30");
    EXPECT_EQ(Words(calendar.items[1].start), "2026-07-15 06:30");
    EXPECT_EQ(ReportsOf(calendar), Texts{});
  }
}

TEST(IcsParser, EachCalendarOfAFileHasItsOwnZones) {
  std::string other(OwnZone);
  other.replace(other.find("TZOFFSETTO:+0200"), 16, "TZOFFSETTO:+0500");
  const std::string event = Event("DTSTART;TZID=Office:20260115T120000\n");
  const ParsedCalendar calendar =
      Parse(Calendar(std::string(OwnZone) + event) + Calendar(other + event));
  ASSERT_EQ(calendar.items.size(), 2U);
  EXPECT_EQ(Words(calendar.items[0].start), "2026-01-15 06:30");
  EXPECT_EQ(Words(calendar.items[1].start), "2026-01-15 03:30");
}

TEST(IcsParser, TextsLoseTheirFoldsAndEscapes) {
  const CalendarItem item = OnlyItem(
      "DTSTART;VALUE=DATE:20260101\r\n"
      "SUMMARY;LANGUAGE=\"x:y\":Trip \\, part\\; 1\r\n  \xE2\x80\r\n \x93 Gh\r\n\tent\\nnow\r\n"
      "DESCRIPTION:first\\nsecond\\\\n\\Nthird\r\n"
      "LOCATION:Ghent\\, Belgium\r\n"
      "CATEGORIES:Trips,Sales\\, North\r\nCATEGORIES: Leave ,,\r\n"
      "BEGIN:VALARM\r\nSUMMARY:Alarm\r\nDESCRIPTION:Alarm\r\nEND:VALARM\r\n");
  EXPECT_EQ(item.fields.subject, "Trip , part; 1 – Ghent now");
  EXPECT_EQ(item.fields.body, "first\r\nsecond\\n\r\nthird");
  EXPECT_EQ(item.fields.location, "Ghent, Belgium");
  EXPECT_EQ(item.fields.categories, (Texts{"Trips", "Sales, North", "Leave"}));
}

TEST(IcsParser, SeveralCalendarsShowAsOneAndOtherComponentsAreSkipped) {
  const std::string tasks =
      "BEGIN:VTODO\nSUMMARY:Task\nEND:VTODO\nBEGIN:VJOURNAL\nEND:VJOURNAL\n"
      "BEGIN:VFREEBUSY\nEND:VFREEBUSY\n";
  const ParsedCalendar calendar = Parse(
      "\xEF\xBB\xBF" +
      Calendar("X-WR-CALNAME:Team\\, North\n" + Event("SUMMARY:a\nDTSTART:20260101\n") + tasks) +
      Calendar(Event("SUMMARY:b\nDTSTART:20260102\n")) + Event("SUMMARY:c\nDTSTART:20260103\n"));
  ASSERT_EQ(calendar.items.size(), 3U);
  EXPECT_EQ(calendar.items[2].fields.subject, "c");
  EXPECT_EQ(calendar.name, "Team, North");
  EXPECT_EQ(ReportsOf(calendar), Texts{});
  EXPECT_EQ(ParseIcs(Calendar(""), "folder/Team Year.ICS", Year(2026)).name, "Team Year");
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

TEST(IcsParser, DatesAreTakenOutAndAddedByDayAndByTime) {
  EXPECT_EQ(StartsOf(OnlyItem("DTSTART:20260101T120000Z\nRRULE:FREQ=DAILY;COUNT=5\n"
                              "EXDATE:20260102T120000Z,20260104T120000Z\n"
                              "EXDATE;VALUE=DATE:20260105\n")),
            (Texts{"2026-01-01 08:30", "2026-01-03 08:30"}));
  EXPECT_EQ(StartsOf(OnlyItem("DTSTART;VALUE=DATE:20260101\nRRULE:FREQ=DAILY;COUNT=3\n"
                              "EXDATE:20260102T000000Z\n")),
            (Texts{"2026-01-01 00:00", "2026-01-03 00:00"}));
  EXPECT_EQ(StartsOf(OnlyItem("DTSTART;VALUE=DATE:20260101\nRRULE:FREQ=DAILY;COUNT=4\n"
                              "EXRULE:FREQ=DAILY;INTERVAL=2;COUNT=2\n")),
            (Texts{"2026-01-02 00:00", "2026-01-04 00:00"}));

  const CalendarItem item = OnlyItem(
      "DTSTART:20260101T100000\nDURATION:PT1H\n"
      "RDATE:20260301T100000,20260201T100000,20260201T100000\n"
      "RDATE;VALUE=PERIOD:20260401T100000/20260401T130000,20260501T100000/PT30M\n");
  EXPECT_TRUE(item.recurring);
  ASSERT_EQ(StartsOf(item), (Texts{"2026-01-01 10:00", "2026-02-01 10:00", "2026-03-01 10:00",
                                   "2026-04-01 10:00", "2026-05-01 10:00"}));
  EXPECT_EQ(Words(item.occurrences[2].end), "2026-03-01 11:00");
  EXPECT_EQ(Words(item.occurrences[3].end), "2026-04-01 13:00");
  EXPECT_EQ(Words(item.occurrences[4].end), "2026-05-01 10:30");
}

TEST(IcsParser, AChangedOccurrenceTakesThePlaceOfTheOneItNames) {
  const ParsedCalendar calendar = Parse(Calendar(
      Event("UID:m\nSUMMARY:Moved\nRECURRENCE-ID:20260108T120000Z\n"
            "DTSTART:20260109T150000Z\nDTEND:20260109T160000Z\nCATEGORIES:Trips\n") +
      Event("UID:m\nSUMMARY:Gone\nSTATUS:CANCELLED\n"
            "RECURRENCE-ID;TZID=America/St_Johns:20260115T083000\nDTSTART:20260115T120000Z\n") +
      Event("UID:m\nSUMMARY:Weekly\nDTSTART:20260101T120000Z\nDTEND:20260101T130000Z\n"
            "RRULE:FREQ=WEEKLY;COUNT=4\n") +
      Event("UID:m\nSUMMARY:Moved once more\nSEQUENCE:2\nRECURRENCE-ID:20260122T120000Z\n"
            "DTSTART:20260122T150000Z\n") +
      Event("UID:m\nSUMMARY:Older\nSEQUENCE:1\nRECURRENCE-ID:20260122T120000Z\n"
            "DTSTART:20260122T160000Z\n")));
  ASSERT_EQ(calendar.items.size(), 1U);
  const CalendarItem& item = calendar.items[0];
  EXPECT_EQ(StartsOf(item), (Texts{"2026-01-01 08:30", "2026-01-09 11:30 Moved",
                                   "2026-01-22 11:30 Moved once more"}));
  EXPECT_EQ(item.changed[0].categories, Texts{"Trips"});
  EXPECT_EQ(Words(item.occurrences[1].end), "2026-01-09 12:30");
  ASSERT_EQ(calendar.diagnostics.size(), 1U);
  EXPECT_EQ(calendar.diagnostics[0].severity, Severity::Note);
}

TEST(IcsParser, ChangesWithoutARecurringEventStandByThemselves) {
  const ParsedCalendar calendar = Parse(
      Calendar(Event("UID:m\nSUMMARY:One\nRECURRENCE-ID:20260108T120000Z\nDTSTART:20260109\n") +
               Event("UID:m\nSUMMARY:Two\nRECURRENCE-ID:20260115T120000Z\nDTSTART:20260116\n") +
               Event("UID:s\nSUMMARY:Plan\nDTSTART:20260201T100000\n") +
               Event("UID:s\nSUMMARY:Change\nRECURRENCE-ID:20260201T100000\n"
                     "DTSTART:20260202T100000\n")));
  ASSERT_EQ(calendar.items.size(), 3U);
  EXPECT_NE(calendar.items[0].entryId, calendar.items[1].entryId);
  EXPECT_FALSE(calendar.items[0].recurring);
  EXPECT_EQ(calendar.items[2].fields.subject, "Change");
  EXPECT_EQ(calendar.items[2].entryId, OnlyItem("UID:s\nDTSTART:20260201T100000\n").entryId);
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
}

TEST(IcsParser, OlderRevisionsAndCancelledEventsAreNotShown) {
  const ParsedCalendar calendar =
      Parse(Calendar(Event("UID:a\nSEQUENCE:1\nSUMMARY:Plan\nDTSTART:20260101\n") +
                     Event("UID:a\nSEQUENCE:3\nSUMMARY:Plan\nDTSTART:20260102\n") +
                     Event("UID:a\nSEQUENCE:2\nSUMMARY:Another\nDTSTART:20260105\n") +
                     Event("UID:b\nSTATUS:CANCELLED\nSUMMARY:Off\nDTSTART:20260102\n")));
  ASSERT_EQ(calendar.items.size(), 2U);
  EXPECT_EQ(Words(calendar.items[0].start), "2026-01-02 00:00");
  EXPECT_EQ(calendar.items[1].fields.subject, "Another");
  EXPECT_EQ(
      ReportsOf(calendar),
      (Texts{"team.ics:3: the event \"Plan\" is an older revision of the one in line 9; it is "
             "not shown",
             "team.ics:21: the event \"Off\" is cancelled; it is not shown"}));
}

TEST(IcsParser, AWholeDayMarkedBySomeProgramsIsAnAllDayEvent) {
  EXPECT_TRUE(OnlyItem("X-MICROSOFT-CDO-ALLDAYEVENT:TRUE\nDTSTART:20260101T000000\n"
                       "DTEND:20260102T000000\n")
                  .fields.allDay);
  EXPECT_FALSE(OnlyItem("X-MICROSOFT-CDO-ALLDAYEVENT:TRUE\nDTSTART:20260101T010000\n"
                        "DTEND:20260102T000000\n")
                   .fields.allDay);
}

}  // namespace
}  // namespace velkor
