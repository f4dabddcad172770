// tests/calendar/ics/IcsFaultsTest.cpp: broken calendars show what they hold and say what is wrong.
#include <gmock/gmock.h>

#include "calendar/ics/read/IcsAnswer.h"
#include "tests/calendar/ics/IcsCase.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using Texts = std::vector<std::string>;

Texts SubjectsOf(const ParsedCalendar& calendar) {
  Texts subjects;
  for (const CalendarItem& item : calendar.items) subjects.push_back(item.fields.subject);
  return subjects;
}

/// The calendar as it comes out of the answer of the reading process.
ParsedCalendar Answered(std::string_view text, const DateWindow& window) {
  return DecodeAnswer(EncodeAnswer(ParseIcs(text, "team.ics", window)));
}

TEST(IcsFaults, AYearOutOfRangeOnTheLocalClockHarmsOneEventAlone) {
  // Local time is some hours behind UTC, Tokyo hours ahead of it, Pago Pago further behind.
  const std::string good = Event("SUMMARY:good\nDTSTART:20260101\n");
  const DateWindow all{Date::FromYmd(100, 1, 1), Date::FromYmd(9999, 12, 31)};
  for (const char* start : {":01000101T000000Z", ";TZID=Asia/Tokyo:01000101T000000",
                            ";TZID=Pacific/Pago_Pago:99991231T230000"}) {
    for (const char* more : {"", "DTEND:99991231T235959Z\n", "RRULE:FREQ=DAILY;COUNT=3\n"}) {
      const ParsedCalendar calendar = Answered(
          Calendar(Event("SUMMARY:bad\nDTSTART" + std::string(start) + "\n" + more) + good), all);
      EXPECT_EQ(SubjectsOf(calendar), Texts{"good"}) << start << more;
      ASSERT_EQ(calendar.diagnostics.size(), 1U) << start << more;
      EXPECT_THAT(calendar.diagnostics[0].text, HasSubstr("the event \"bad\" is left out"));
    }
  }
  const ParsedCalendar changed = Answered(
      Calendar(Event("UID:a\nSUMMARY:a\nDTSTART:01000102T000000\nRRULE:FREQ=DAILY;COUNT=3\n"
                     "RDATE:01000101T000000Z\n") +
               Event("UID:a\nRECURRENCE-ID:01000103T000000\nDTSTART:01000101T000000Z\n")),
      all);
  EXPECT_EQ(changed.items.at(0).occurrences.size(), 3U);
  EXPECT_EQ(changed.diagnostics.size(), 2U);
}

TEST(IcsFaults, WhatEndsAfterTheLastYearIsCutThereAndReportedOnce) {
  for (const char* zone : {"", "Z"}) {
    const std::string start = "SUMMARY:a\nDTSTART:99991201T000000" + std::string(zone) + "\n";
    const std::string rule = "RDATE:99991210T000000,99991215T000000\n";
    for (const std::string& lines :
         {start + "DURATION:P9999999W\n" + rule, start + "DURATION:P22D\n" + rule,
          start + "DTEND:99991223T000000" + zone + "\n" + rule,
          "DTSTART:20260101T000000\nRDATE;VALUE=PERIOD:99991220T000000" + std::string(zone) +
              "/P9999999W\n"}) {
      const ParsedCalendar calendar = Answered(
          Calendar(Event(lines)), {Date::FromYmd(9999, 1, 1), Date::FromYmd(9999, 12, 31)});
      const auto& occurrences = calendar.items.at(0).occurrences;
      EXPECT_EQ(Words(occurrences.back().end), "9999-12-31 23:59:59") << lines;
      EXPECT_EQ(calendar.diagnostics.size(), 1U) << lines;
    }
  }
}

TEST(IcsFaults, EveryBoundIsReportedAndEverythingElseShown) {
  IcsLimits limits;
  limits.lineLength = 50;
  limits.componentSize = 200;
  limits.components = 4;
  limits.nesting = 2;
  const std::string good = Event("SUMMARY:good\nDTSTART:20260101\n");
  const std::string deep = "BEGIN:X-A\nBEGIN:X-B\nBEGIN:X-C\nEND:X-C\nEND:X-B\nEND:X-A\n";
  const std::string longLine = "DESCRIPTION:" + std::string(100, 'x') + "\n";
  std::string longEvent = "SUMMARY:long\nDTSTART:20260101\n";
  for (int i = 0; i < 10; ++i) longEvent += "COMMENT:0123456789012345\n";
  const ParsedCalendar calendar =
      Parse(Calendar(Event("SUMMARY:deep\nDTSTART:20260101\n" + deep) + Event(longEvent) +
                     Event("SUMMARY:line\nDTSTART:20260101\n" + longLine) + good + good + good),
            limits);
  EXPECT_EQ(SubjectsOf(calendar), (Texts{"deep", "line", "good", "good"}));
  EXPECT_EQ(calendar.diagnostics.size(), 4U);

  limits.fileSize = 100;
  EXPECT_THROW(Parse(Calendar(good + good + good), limits), Error);
  limits = {};
  limits.diagnostics = 2;
  EXPECT_EQ(ReportsOf(Parse(Calendar(good + Event("") + Event("") + Event("")), limits)).back(),
            "team.ics: 1 more problems are not listed");
  limits = {};
  limits.occurrences = 5;
  const std::string daily = Event("DTSTART:20260101\nRRULE:FREQ=DAILY;COUNT=4\n");
  const ParsedCalendar full = Parse(Calendar(daily + daily), limits);
  EXPECT_EQ(full.items[0].occurrences.size() + full.items[1].occurrences.size(), 5U);
  EXPECT_THAT(ReportsOf(full), testing::ElementsAre(HasSubstr("team.ics:7: occurrences of")));
}

TEST(IcsFaults, SeveralRulesOfOneItemShareItsBoundInEachYear) {
  IcsLimits limits;
  limits.itemOccurrences = 5;
  // The last days of the year before fill that one alone.
  const ParsedCalendar each =
      Parse(Calendar(Event("DTSTART:20251201\nDURATION:P40D\nRRULE:FREQ=DAILY\n")), limits);
  EXPECT_EQ(StartsOf(each.items.at(0)).size(), 10U);
  EXPECT_EQ(StartsOf(each.items.at(0)).at(5), "2026-01-01 00:00");
  const std::string start = "DTSTART:20260101T100000\n";
  const std::string rule = "RRULE:FREQ=DAILY;COUNT=5\n";
  const ParsedCalendar same = Parse(Calendar(Event(start + rule + rule + rule)), limits);
  EXPECT_EQ(same.items.at(0).occurrences.size(), 5U);
  EXPECT_TRUE(same.diagnostics.empty());
  for (const char* more : {"RRULE:FREQ=WEEKLY;COUNT=3\nRRULE:FREQ=MONTHLY;COUNT=4\n",
                           "RDATE:20260201T100000,20260202T100000\n"}) {
    const ParsedCalendar calendar = Parse(Calendar(Event(start + rule + more)), limits);
    EXPECT_EQ(calendar.items.at(0).occurrences.size(), 5U);
    EXPECT_EQ(ReportsOf(calendar),
              Texts{"team.ics:3: an event without a subject gives more than 5 occurrences in a "
                    "year; the rest of that year's are left out"});
  }
}

TEST(IcsFaults, WhatIsNoCalendarIsRefused) {
  for (const char* text : {"", "hello", "\xEF\xBB\xBF", "BEGIN:VTODO\nEND:VTODO\n", "\xFF\xFEx"}) {
    EXPECT_EQ(FaultOf([&] { Parse(text); }), "The calendar file team.ics holds no calendar.");
  }
  EXPECT_EQ(FaultOf([] { Parse("BEGIN:VCALENDAR\rVERSION:2.0\n\rEND:VCALENDAR\n"); }),
            "The calendar file team.ics holds no calendar: CR ends some of its lines and LF "
            "others.");
  EXPECT_EQ(FaultOf([] {
              Parse({"\xFF\xFE\0\0B\0\0\0", 8});
            }),
            "The calendar file team.ics is written in UTF-32, which is not read.");
}

}  // namespace
}  // namespace velkor
