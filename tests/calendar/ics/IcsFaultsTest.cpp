// tests/calendar/ics/IcsFaultsTest.cpp: broken calendars show what they hold and say what is wrong.
#include <gmock/gmock.h>

#include <ctime>
#include <functional>

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

/// The only report about an event with these lines, which begin in line 4.
std::string ReportOn(std::string_view eventLines) {
  const Texts reports = ReportsOf(Parse(Calendar(Event(eventLines))));
  return reports.size() == 1 ? reports[0] : std::to_string(reports.size()) + " reports";
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

TEST(IcsFaults, WhatIsWrongWithARuleLeavesTheEventAlone) {
  const auto reported = [](const std::string& line, const std::string& text) {
    const std::string lines = "DTSTART:20260105T100000\nSUMMARY:Foo\n" + line + "\n";
    EXPECT_THAT(ReportOn(lines), HasSubstr("team.ics:6: ")) << ReportOn(lines);
    EXPECT_THAT(ReportOn(lines), HasSubstr(text)) << ReportOn(lines);
    EXPECT_EQ(Words(OnlyItem(lines).start), "2026-01-05 10:00") << line;
  };
  reported("RRULE:FREQ=SOMETIMES", "which is no frequency; it adds no occurrence");
  reported("RRULE:FREQ=SECONDLY", "the rest of that year's are left out");
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

/// Seconds of the processor that reading a good calendar with these components takes.
double TimeOf(const std::string& components) {
  const std::string text = Calendar(components);
  IcsLimits limits;
  limits.itemOccurrences = limits.occurrences = 1'000'000;
  const std::clock_t started = std::clock();
  const ParsedCalendar calendar = Parse(text, limits);
  const std::clock_t ended = std::clock();
  EXPECT_FALSE(calendar.items.empty());
  EXPECT_TRUE(calendar.diagnostics.empty());
  return static_cast<double>(ended - started) / CLOCKS_PER_SEC;
}

/// "20260101T000700" for the seventh minute of 2026.
std::string Minute(int minute) {
  const std::string words = Words(Date::FromFields({2026, 1, 1, 0, minute, 0}));
  const auto part = [&](std::size_t at) { return words.substr(at, 2); };
  std::string text("2026");
  return text.append(part(5)).append(part(8)).append("T").append(part(11)).append(part(14)) + "00";
}

TEST(IcsFaults, WorkDoesNotGrowWithTheSquareOfAnything) {
  const auto list = [](const std::string& head, int count) {
    std::string lines = "DTSTART:20260101T000000\n" + head;
    for (int i = 1; i <= count; ++i) lines += (i > 1 ? ",\n " : "") + Minute(i);
    return Event(lines + "\n");
  };
  const auto sameUid = [](int count) {
    std::string events;
    for (int i = 1; i <= count; ++i) events += Event("UID:m\nDTSTART:" + Minute(i) + "\n");
    return events;
  };
  const auto changes = [](int count) {
    std::string events = Event("UID:m\nDTSTART:20260101T000000\nRRULE:FREQ=MINUTELY;COUNT=99999\n");
    for (int i = 1; i <= count; ++i) {
      const std::string moment = Minute(i);
      events += Event("UID:m\nRECURRENCE-ID:" + moment + "\nDTSTART:" + moment + "\n");
    }
    return events;
  };
  const auto removed = [&](int count) {
    return list("RRULE:FREQ=MINUTELY;COUNT=99999\nEXDATE:", count);
  };
  const auto longParameter = [&](int count) {
    const std::string filler(static_cast<std::size_t>(count) * 10, 'x');
    return list("RDATE;X-A=" + filler + ";TZID=America/St_Johns:", count);
  };
  const auto longZone = [&](int count) {
    const std::string name(static_cast<std::size_t>(count) * 10, 'x');
    return "BEGIN:VTIMEZONE\nTZID:" + name +
           "\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:+0000\nTZOFFSETTO:+0000\n"
           "END:STANDARD\nEND:VTIMEZONE\n" +
           list("RDATE;TZID=" + name + ":", count);
  };
  const std::vector<std::function<std::string(int)>> shapes{sameUid, changes, removed,
                                                            longParameter, longZone};
  for (std::size_t shape = 0; shape < shapes.size(); ++shape) {
    constexpr int Many = 3000;
    constexpr int Times = 8;
    const double small = TimeOf(shapes[shape](Many));
    const double large = TimeOf(shapes[shape](Times * Many));
    // A square would take 64 times as long; what is constant stands for noise.
    EXPECT_LT(large, Times * 3 * small + 0.25) << "shape " << shape;
  }
}

}  // namespace
}  // namespace velkor
