// calendar/IcsRule.cpp: recurrence rules by libical, kept from running away.
#include "calendar/IcsRule.h"

#include <libical/ical.h>

#include <algorithm>
#include <chrono>
#include <ctime>
#include <memory>
#include <optional>

#include "support/values/Date.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

struct Rule {
  icalrecurrencetype parts;
  /// 0 for none.
  std::size_t count = 0;
  std::optional<IcsTimeText> until;
};

WallSeconds FromIcalTime(const icaltimetype& time) {
  const DateFields day{time.year, time.month, time.day, 0, 0, 0};
  const WallSeconds clock = time.is_date ? 0 : time.hour * 3600 + time.minute * 60 + time.second;
  return Date::FromFields(day).Seconds() + clock;
}

template <std::size_t N>
std::size_t Size(const short (&list)[N]) {
  return static_cast<std::size_t>(std::find(list, list + N, ICAL_RECURRENCE_ARRAY_MAX) - list);
}

template <std::size_t N>
bool Has(const short (&list)[N], int value) {
  const short* end = list + Size(list);
  return std::find(list, end, value) != end;
}

template <std::size_t N>
bool Allows(const short (&list)[N], int value) {
  return Size(list) == 0 || Has(list, value);
}

/// As Allows, for values that may also count from the end, -1 being the last of `length`.
template <std::size_t N>
bool AllowsFromBothEnds(const short (&list)[N], int value, int length) {
  return Size(list) == 0 || Has(list, value) || Has(list, value - length - 1);
}

void Clear(short* list) {
  *list = ICAL_RECURRENCE_ARRAY_MAX;
}

/// A part's number; none when it has more than nine digits or is no number above 0.
std::optional<std::size_t> Number(std::string_view value) {
  const auto number = ParseInteger(value);
  if (!number || *number < 1 || *number > 999'999'999) return std::nullopt;
  return static_cast<std::size_t>(*number);
}

/// Reads the rule; UNTIL and COUNT are kept apart from what libical sees.
std::optional<Rule> Parse(std::string_view text, std::string& problem) {
  constexpr std::size_t Longest = 4096;
  Rule rule;
  std::string rest;
  if (text.size() > Longest) {
    problem = "is too long";
    return std::nullopt;
  }
  for (std::string_view parts = Trim(text); !parts.empty();) {
    const std::string_view part = TakePart(parts, ';');
    std::string_view value = part;
    const std::string_view name = TakePart(value, '=');
    const auto count = Number(value);
    if (SameName(name, "UNTIL")) {
      rule.until = ReadTimeText(value);
      if (!rule.until) problem = "has an UNTIL that is no time";
    } else if (SameName(name, "COUNT")) {
      rule.count = count.value_or(0);
      if (!count) problem = "has a COUNT that is no number above 0";
    } else if (SameName(name, "RSCALE") || SameName(name, "SKIP")) {
      problem = "counts by another calendar system";
    } else if (SameName(name, "INTERVAL") && (!count || *count > 32767)) {
      problem = "has an INTERVAL outside 1 to 32767";
    } else if (!part.empty()) {
      rest.append(rest.empty() ? "" : ";").append(part);
    }
    if (!problem.empty()) return std::nullopt;
  }
  icalerror_clear_errno();
  rule.parts = icalrecurrencetype_from_string(rest.c_str());
  if (rule.parts.freq == ICAL_NO_RECURRENCE || icalerrno != ICAL_NO_ERROR) {
    problem = "is no recurrence rule";
    return std::nullopt;
  }
  return rule;
}

/// What is too much to search through, or has no meaning.
std::string Refusal(const icalrecurrencetype& parts) {
  constexpr std::size_t MostTimesOfDay = 1440;
  const auto timesOf = [](std::size_t size) { return std::max<std::size_t>(size, 1); };
  const bool picksTimes = Size(parts.by_hour) + Size(parts.by_minute) + Size(parts.by_second) > 0;
  const bool picksPositions = Size(parts.by_set_pos) > 0;
  if (timesOf(Size(parts.by_hour)) * timesOf(Size(parts.by_minute)) *
          timesOf(Size(parts.by_second)) >
      MostTimesOfDay) {
    return "has too many times a day";
  }
  if (picksPositions && (picksTimes || parts.freq <= ICAL_WEEKLY_RECURRENCE)) {
    return "picks positions in a week or a day, which is not supported";
  }
  if (Size(parts.by_week_no) > 0 && parts.freq != ICAL_YEARLY_RECURRENCE) {
    return "has BYWEEKNO but is not yearly";
  }
  return {};
}

/// Those parts of a rule of at most daily frequency that only leave candidates out. libical would
/// look for the next match through thousands of years inside one call, so the candidates are
/// tested here, one step each.
class CandidateFilter {
 public:
  /// Takes the parts out of `parts`.
  explicit CandidateFilter(icalrecurrencetype& parts)
      : all_(parts), active_(parts.freq <= ICAL_DAILY_RECURRENCE) {
    if (!active_) return;
    Clear(parts.by_month);
    Clear(parts.by_month_day);
    Clear(parts.by_year_day);
    Clear(parts.by_day);
    if (parts.freq <= ICAL_HOURLY_RECURRENCE) Clear(parts.by_hour);
    if (parts.freq <= ICAL_MINUTELY_RECURRENCE) Clear(parts.by_minute);
    if (parts.freq <= ICAL_SECONDLY_RECURRENCE) Clear(parts.by_second);
  }

  bool Passes(const icaltimetype& time) const {
    if (!active_) return true;
    return Allows(all_.by_month, time.month) &&
           AllowsFromBothEnds(all_.by_month_day, time.day,
                              icaltime_days_in_month(time.month, time.year)) &&
           AllowsFromBothEnds(all_.by_year_day, icaltime_day_of_year(time),
                              icaltime_days_in_year(time.year)) &&
           AllowsWeekday(icaltime_day_of_week(time)) && Allows(all_.by_hour, time.hour) &&
           Allows(all_.by_minute, time.minute) && Allows(all_.by_second, time.second);
  }

 private:
  bool AllowsWeekday(int weekday) const {
    const std::size_t size = Size(all_.by_day);
    return size == 0 || std::any_of(all_.by_day, all_.by_day + size, [&](short day) {
             return static_cast<int>(icalrecurrencetype_day_day_of_week(day)) == weekday;
           });
  }

  icalrecurrencetype all_;
  bool active_;
};

/// The last start at or before `from` of a rule that repeats every so many hours, minutes or
/// seconds. libical itself does not keep such intervals in step when it starts later.
WallSeconds InStep(WallSeconds from, WallSeconds first, const icalrecurrencetype& parts) {
  const WallSeconds unit = parts.freq == ICAL_HOURLY_RECURRENCE     ? 3600
                           : parts.freq == ICAL_MINUTELY_RECURRENCE ? 60
                                                                    : 1;
  return from - (from - first) % (unit * parts.interval);
}

struct FreeIterator {
  void operator()(icalrecur_iterator* iterator) const { icalrecur_iterator_free(iterator); }
};

bool IsPast(const IcsTimeText& until, const IcsTime& first, WallSeconds wall) {
  if (until.isDate || first.isDate)
    return Date::FromSeconds(wall).DayNumber() > Date::FromSeconds(until.wall).DayNumber();
  // Both sides as local time, since UNTIL is in UTC as a rule and the start in its own zone.
  static const IcsZone utc{IcsZone::Utc{}};
  if (until.isUtc) return first.zone->ToLocal(wall) > utc.ToLocal(until.wall);
  return wall > until.wall;
}

/// Steps that a year of looking for a match takes: what the library goes through before it gives
/// one, measured in candidates of a plain rule. A rule from days down gives every candidate.
std::size_t SearchSteps(const icalrecurrencetype& parts) {
  const auto interval = static_cast<std::size_t>(std::max<int>(parts.interval, 1));
  const std::size_t months = Size(parts.by_month);
  const std::size_t monthDays = Size(parts.by_month_day);
  const std::size_t weekdays = Size(parts.by_day);
  const std::size_t weeks = Size(parts.by_week_no);
  const std::size_t yearDays = Size(parts.by_year_day);
  const bool plain = months + monthDays + weekdays + weeks + yearDays == 0;
  std::size_t steps = 0;
  if (parts.freq == ICAL_WEEKLY_RECURRENCE) {
    steps = 53;
  } else if (parts.freq == ICAL_MONTHLY_RECURRENCE) {
    steps = 12 * (plain ? 1 : 12 + 2 * monthDays + 4 * weekdays);
  } else if (parts.freq == ICAL_YEARLY_RECURRENCE) {
    const std::size_t parted = months > 0 ? months : monthDays > 0 ? 12 : 1;
    steps = plain ? 1
                  : 20 + parted * (2 + 2 * monthDays + 4 * weekdays) + 2 * weeks * (weekdays + 1) +
                        2 * yearDays;
  }
  return (steps + interval - 1) / interval;
}

std::chrono::nanoseconds ProcessorTime() {
  timespec time{};
  clock_gettime(CLOCK_THREAD_CPUTIME_ID, &time);
  return std::chrono::seconds(time.tv_sec) + std::chrono::nanoseconds(time.tv_nsec);
}

constexpr std::string_view RepeatsTooOften = "repeats too often and is followed only in part";

}  // namespace

RuleStarts RuleExpander::Expand(std::string_view text, const IcsTime& first, WallSeconds from,
                                WallSeconds to) {
  if (steps_ >= limits_.allRuleSteps || time_ >= limits_.allRulesTime) {
    return {{}, "is not followed, since the rules of this file take too long"};
  }
  const auto started = ProcessorTime();
  RuleStarts result = Follow(text, first, from, to);
  time_ += ProcessorTime() - started;
  return result;
}

RuleStarts RuleExpander::Follow(std::string_view text, const IcsTime& first, WallSeconds from,
                                WallSeconds to) {
  // Reading a rule and making its iterator.
  constexpr std::size_t SetupSteps = 25;
  // The library looks no further, and through so many years for the first match, wherever it
  // begins.
  constexpr int LastSearchedYear = 2582;
  constexpr std::size_t SearchedYears = 2500;
  const auto started = ProcessorTime();
  steps_ += SetupSteps;
  RuleStarts result;
  std::optional<Rule> rule = Parse(text, result.problem);
  if (!rule) return result;
  result.problem = Refusal(rule->parts);
  if (!result.problem.empty()) return result;

  const CandidateFilter filter(rule->parts);
  const bool skips = rule->count == 0 && from > first.wall + SecondsPerDay;
  const bool withinDay = rule->parts.freq < ICAL_DAILY_RECURRENCE;
  const WallSeconds origin =
      skips && withinDay ? InStep(from, first.wall, rule->parts) : first.wall;
  const std::size_t searchSteps = SearchSteps(rule->parts);
  const WallSeconds lastSearched =
      std::max(origin, Date::FromYmd(LastSearchedYear, 12, 31).Seconds());
  const auto stepsBetween = [&](WallSeconds a, WallSeconds b) {
    const WallSeconds days = std::max<WallSeconds>(b - a, 0) / SecondsPerDay;
    return static_cast<std::size_t>(days) * searchSteps / 365;
  };
  if (SearchedYears * searchSteps > limits_.ruleSearchSteps) {
    result.problem = "has too many parts to search through";
    return result;
  }
  const auto begin = [&] {
    return std::unique_ptr<icalrecur_iterator, FreeIterator>(
        icalrecur_iterator_new(rule->parts, ToIcalTime(origin, first.isDate)));
  };
  auto iterator = begin();
  if (!iterator) {
    steps_ += SearchedYears * searchSteps;
    result.problem = "is no recurrence rule";
    return result;
  }
  std::size_t steps = 0;
  WallSeconds searched = origin;
  const auto next = [&] {
    const icaltimetype time = icalrecur_iterator_next(iterator.get());
    const bool ends = icaltime_is_null_time(time) || time.year > 9999;
    const WallSeconds wall = ends ? lastSearched : FromIcalTime(time);
    steps += 1 + stepsBetween(searched, wall);
    searched = wall;
    return time;
  };
  if (skips && !withinDay) {
    constexpr std::size_t PlainSearchSteps = 12;
    if (searchSteps > PlainSearchSteps) {
      // The iterator has gone through everything up to its first match, which counts twice since
      // only a new one gives the right ones after set_start.
      next();
      steps *= 2;
      iterator = begin();
    }
    icalrecur_iterator_set_start(iterator.get(), ToIcalTime(from, first.isDate));
    // It goes there by intervals.
    steps += static_cast<std::size_t>((from - first.wall) / (366 * SecondsPerDay));
    searched = from;
  }

  // The first start is an occurrence whether the rule gives it or not (RFC 5545 section 3.8.5.3).
  std::size_t counted = 1;
  for (std::size_t turn = 0; rule->count == 0 || counted < rule->count; ++turn) {
    constexpr std::size_t TurnsBetweenLooks = 256;
    if (steps >= limits_.ruleSteps || (turn % TurnsBetweenLooks == TurnsBetweenLooks - 1 &&
                                       ProcessorTime() - started > limits_.ruleTime)) {
      result.problem = RepeatsTooOften;
      break;
    }
    const icaltimetype time = next();
    if (icaltime_is_null_time(time) || time.year > 9999) break;
    const WallSeconds wall = searched;
    if (wall > to || (rule->until && IsPast(*rule->until, first, wall))) break;
    if (wall <= first.wall || !filter.Passes(time)) continue;
    ++counted;
    if (wall < from) continue;
    // The first start takes one place.
    if (result.starts.size() + 1 >= limits_.itemOccurrences) {
      result.problem = RepeatsTooOften;
      break;
    }
    result.starts.push_back(wall);
  }
  steps_ += steps;
  return result;
}

}  // namespace velkor
