// calendar/IcsRuleDays.cpp: works out the days of each kind of year.
#include "calendar/IcsRuleDays.h"

namespace velkor {
namespace {

using std::chrono::January;
using std::chrono::year;

/// The rule with the days of its first start where it names none (RFC 5545 section 3.3.10).
RuleParts WithDaysOf(RuleParts parts, DayNumber first) {
  const std::chrono::year_month_day date{ToSysDays(first)};
  const int day = static_cast<int>(static_cast<unsigned>(date.day()));
  const auto weekday = static_cast<std::size_t>(WeekdayOf(first));
  if (!parts.monthDays.IsEmpty() || !parts.yearDays.IsEmpty() || parts.HasWeekdays()) return parts;
  if (parts.frequency == RuleFrequency::Weekly || !parts.weeks.IsEmpty()) {
    parts.weekdays.set(weekday);
  } else if (parts.frequency == RuleFrequency::Monthly) {
    parts.monthDays.Add(day);
  } else if (parts.frequency == RuleFrequency::Yearly) {
    if (parts.months.none()) parts.months.set(static_cast<unsigned>(date.month()));
    parts.monthDays.Add(day);
  }
  return parts;
}

DayNumber FirstDayOf(year y) {
  return ToDayNumber(y / January / 1);
}

/// The day of a year, from 0, on which its week 1 begins, the first with four days of that year
/// or more; below 0 for one in the year before.
/// @param newYear  days from the beginning of a week to the year's first day
int FirstWeek(int newYear) {
  return newYear <= 3 ? -newYear : 7 - newYear;
}

}  // namespace

struct RuleDays::YearShape {
  /// Weekday of the first day.
  int newYear;
  bool leap;
  bool leapBefore;
  bool leapAfter;

  explicit YearShape(year y)
      : newYear(WeekdayOf(FirstDayOf(y))),
        leap(y.is_leap()),
        leapBefore((y - std::chrono::years{1}).is_leap()),
        leapAfter((y + std::chrono::years{1}).is_leap()) {}

  /// Of three years in a row one at most is a leap year.
  std::size_t Index() const {
    return static_cast<std::size_t>(newYear * 4 + (leap ? 1 : leapBefore ? 2 : leapAfter ? 3 : 0));
  }
  int Length() const { return leap ? 366 : 365; }

  /// A week's number, from 1, in a year of `weeks` weeks.
  struct Week {
    int number;
    int weeks;
  };
  /// The week that a day lies in, which may be one of the year before or after.
  /// @param dayOfYear  from 0
  Week WeekOf(int dayOfYear, int weekStart) const {
    const auto fromWeekStart = [&](int day) { return ((newYear + day - weekStart) % 7 + 14) % 7; };
    const int lengthBefore = leapBefore ? 366 : 365;
    const int lengthAfter = leapAfter ? 366 : 365;
    // Where week 1 begins in the year before, this year, the next one and the one after it.
    const int before = FirstWeek(fromWeekStart(-lengthBefore)) - lengthBefore;
    const int here = FirstWeek(fromWeekStart(0));
    const int next = FirstWeek(fromWeekStart(Length())) + Length();
    const int last = Length() + lengthAfter;
    const int afterNext = FirstWeek(fromWeekStart(last)) + last;
    const auto within = [&](int from, int to) {
      return Week{(dayOfYear - from) / 7 + 1, (to - from) / 7};
    };
    if (dayOfYear < here) return within(before, here);
    return dayOfYear < next ? within(here, next) : within(next, afterNext);
  }
};

RuleDays::RuleDays(const RuleParts& parts, DayNumber first) : parts_(WithDaysOf(parts, first)) {}

bool RuleDays::LimitsMoreThanWeekdays() const {
  return parts_.months.any() || !parts_.monthDays.IsEmpty() || !parts_.yearDays.IsEmpty() ||
         !parts_.weeks.IsEmpty();
}

bool RuleDays::IsWeekdayHere(int weekday, int dayOfMonth, int monthLength, int dayOfYear,
                             int yearLength) const {
  const auto index = static_cast<std::size_t>(weekday);
  const Ordinals& numbers = parts_.numberedWeekdays[index];
  if (parts_.weekdays.test(index)) return true;
  if (numbers.IsEmpty()) return false;
  // Shorter periods have each weekday at most once.
  if (parts_.frequency < RuleFrequency::Monthly) return true;
  const bool inMonth = parts_.frequency == RuleFrequency::Monthly || parts_.months.any();
  const int day = inMonth ? dayOfMonth : dayOfYear;
  const int length = inMonth ? monthLength : yearLength;
  const int number = (day - 1) / 7 + 1;
  return numbers.Has(number, number + (length - day) / 7);
}

RuleDays::Year RuleDays::WorkOut(const YearShape& shape) const {
  static constexpr std::array<int, 12> Lengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  const bool anyWeekday = !parts_.HasWeekdays();
  Year result;
  int monthBegin = 0;
  for (std::size_t month = 0; month < Lengths.size(); ++month) {
    const int length = Lengths[month] + (month == 1 && shape.leap ? 1 : 0);
    const bool skips = parts_.months.any() && !parts_.months.test(month + 1);
    for (int day = 0; day < length && !skips; ++day) {
      const int dayOfYear = monthBegin + day;
      if (!parts_.monthDays.IsEmpty() && !parts_.monthDays.Has(day + 1, length)) continue;
      if (!parts_.yearDays.IsEmpty() && !parts_.yearDays.Has(dayOfYear + 1, shape.Length())) {
        continue;
      }
      const int weekday = (shape.newYear + dayOfYear) % 7;
      if (!anyWeekday && !IsWeekdayHere(weekday, day + 1, length, dayOfYear + 1, shape.Length())) {
        continue;
      }
      if (!parts_.weeks.IsEmpty()) {
        const auto [number, weeks] = shape.WeekOf(dayOfYear, parts_.weekStart);
        if (!parts_.weeks.Has(number, weeks)) continue;
      }
      result.months[month] |= std::uint32_t{1} << static_cast<unsigned>(day);
      ++result.days;
    }
    monthBegin += length;
  }
  return result;
}

const RuleDays::Year& RuleDays::In(year y) {
  const YearShape shape(y);
  std::optional<Year>& known = years_[shape.Index()];
  if (!known) known = WorkOut(shape);
  return *known;
}

RuleDays::MonthPiece RuleDays::PieceFrom(DayNumber day, DayNumber to) {
  const std::chrono::year_month_day date{ToSysDays(day)};
  const std::chrono::year_month month{date.year(), date.month()};
  const DayNumber monthEnd = ToDayNumber((month + std::chrono::months{1}) / 1);
  std::uint32_t days = In(date.year()).months[static_cast<unsigned>(date.month()) - 1] >>
                       (static_cast<unsigned>(date.day()) - 1);
  if (to < monthEnd) days &= (std::uint32_t{1} << (to - day)) - 1;
  return {std::min(monthEnd, to), days};
}

std::int64_t RuleDays::Count(DayNumber from, DayNumber to) {
  std::int64_t count = 0;
  for (DayNumber day = from; day < to;) {
    const std::chrono::year_month_day date{ToSysDays(day)};
    const DayNumber yearEnd = FirstDayOf(date.year() + std::chrono::years{1});
    if (date.month() == January && date.day() == std::chrono::day{1} && yearEnd <= to) {
      count += In(date.year()).days;
      day = yearEnd;
    } else {
      const MonthPiece piece = PieceFrom(day, to);
      count += std::popcount(piece.days);
      day = piece.end;
    }
  }
  return count;
}

}  // namespace velkor
