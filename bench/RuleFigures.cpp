// bench/RuleFigures.cpp: recurrence rules: twice the reach, and a long past.
#include <string>

#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "calendar/ics/read/IcsParser.h"
#include "calendar/ics/read/IcsRule.h"

namespace velkor {
namespace {

constexpr double ReachLimit = 2.2;
constexpr double PastLimit = 1.5;
constexpr int Rounds = 61;

WallSeconds At(std::string_view text) {
  return ReadTimeText(text).value_or(IcsTimeText{}).wall;
}

/// Reads the rule and finds its starts from 2026 to the end of a year, so many times.
double SecondsToExpand(std::string_view rule, std::string_view first, std::string_view to,
                       int times) {
  static const IcsZone floating{IcsZone::Floating{}};
  constexpr std::size_t Most = 1'000'000;
  const IcsTime start{false, At(first), &floating};
  return SecondsOf([&] {
    for (int i = 0; i < times; ++i) {
      IcsRule expansion(rule, start);
      benchmark::DoNotOptimize(expansion.StartsIn(At("20260101"), At(to), Most).starts.data());
    }
  });
}

/// Reads a calendar of so many events with the rule, and its occurrences of three years.
double SecondsToRead(const std::string& rule, const std::string& first, int events) {
  std::string text = "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n";
  for (int i = 0; i < events; ++i) {
    text += "BEGIN:VEVENT\r\nUID:" + std::to_string(i) + "\r\nDTSTART:" + first +
            "\r\nRRULE:" + rule + "\r\nEND:VEVENT\r\n";
  }
  text += "END:VCALENDAR\r\n";
  IcsLimits limits;
  limits.itemOccurrences = limits.occurrences = 10'000'000;
  const DateWindow years{Date::FromYmd(2026, 1, 1), Date::FromYmd(2029, 1, 1)};
  return SecondsOf(
      [&] { benchmark::DoNotOptimize(ParseIcs(text, "rules.ics", years, limits).items.data()); });
}

struct Rule {
  const char* text;
  /// How often it is expanded, or read, in one round, for some milliseconds.
  int times;
};

void RegisterReach(const Rule& rule) {
  RegisterFigure("rules: twice the periods, " + std::string(rule.text), Rounds,
                 [rule](benchmark::State& state) {
                   const auto expand = [&](const char* to) {
                     return SecondsToExpand(rule.text, "20250101T090000", to, rule.times);
                   };
                   Compare(
                       state, ReachLimit, [&] { return expand("20290101"); },
                       [&] { return expand("20320101"); });
                 });
}

void RegisterPast(const Rule& rule) {
  RegisterFigure("rules: begun in 1970, not 2025, " + std::string(rule.text), Rounds,
                 [rule](benchmark::State& state) {
                   const auto read = [&](const char* first) {
                     return SecondsToRead(rule.text, first, rule.times);
                   };
                   Compare(
                       state, PastLimit, [&] { return read("20250101T090000"); },
                       [&] { return read("19700101T090000"); });
                 });
}

}  // namespace

void RegisterRuleFigures() {
  for (const Rule& rule :
       {Rule{"FREQ=YEARLY;BYDAY=-1SU;BYMONTH=3,10", 2000}, Rule{"FREQ=MONTHLY;INTERVAL=2", 2000},
        Rule{"FREQ=WEEKLY;BYDAY=MO,WE,FR;BYSETPOS=1,-1", 200}, Rule{"FREQ=DAILY", 300},
        Rule{"FREQ=HOURLY;INTERVAL=7;BYDAY=MO", 200}, Rule{"FREQ=MINUTELY;BYHOUR=9", 10},
        Rule{"FREQ=SECONDLY;BYMONTH=2;BYMONTHDAY=30", 2000}}) {
    RegisterReach(rule);
  }
  for (const Rule& rule :
       {Rule{"FREQ=SECONDLY;INTERVAL=10000", 2}, Rule{"FREQ=MINUTELY;BYHOUR=9;BYDAY=MO", 2},
        Rule{"FREQ=DAILY;COUNT=25000", 20}, Rule{"FREQ=WEEKLY;INTERVAL=2;COUNT=2000", 200},
        Rule{"FREQ=WEEKLY;BYDAY=MO,FR;BYSETPOS=-1;COUNT=9000", 100},
        Rule{"FREQ=MONTHLY;BYDAY=2TU;COUNT=1000", 300}, Rule{"FREQ=YEARLY;COUNT=1000", 500},
        Rule{"FREQ=HOURLY;BYDAY=MO,TU;COUNT=999999", 2},
        Rule{"FREQ=HOURLY;INTERVAL=77;BYDAY=MO;COUNT=999999", 200}}) {
    RegisterPast(rule);
  }
}

}  // namespace velkor
