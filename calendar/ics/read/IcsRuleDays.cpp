// calendar/ics/read/IcsRuleDays.cpp: works out the days of each kind of year.
#include "calendar/ics/read/IcsRuleDays.h"

#include <algorithm>

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
  int newYear = 0;
  bool leap = false;
  bool leapBefore = false;
  bool leapAfter = false;

  /// Of three years in a row one at most is a leap year.
  std::size_t Index() const {
    return static_cast<std::size_t>(newYear * 4 + (leap ? 1 : leapBefore ? 2 : leapAfter ? 3 : 0));
  }
  int Length() const { return leap ? 366 : 365; }
};

namespace {

/// Numbers the weeks of a year; its first and last days may lie in one of the year before or
/// after.
class Weeks {
 public:
  template <typename Shape>
  Weeks(const Shape& shape, int weekStart) {
    const auto weekOne = [&](int newYear) {
      return newYear + FirstWeek(((shape.newYear + newYear - weekStart) % 7 + 14) % 7);
    };
    const int lengthBefore = shape.leapBefore ? 366 : 365;
    const int lengthAfter = shape.leapAfter ? 366 : 365;
    before_ = weekOne(-lengthBefore);
    here_ = weekOne(0);
    next_ = weekOne(shape.Length());
    afterNext_ = weekOne(shape.Length() + lengthAfter);
  }

  /// @param dayOfYear  from 0
  bool Has(const Ordinals& numbers, int dayOfYear) const {
    const auto within = [&](int from, int to) {
      return numbers.Has((dayOfYear - from) / 7 + 1, (to - from) / 7);
    };
    if (dayOfYear < here_) return within(before_, here_);
    return dayOfYear < next_ ? within(here_, next_) : within(next_, afterNext_);
  }

 private:
  /// Where week 1 begins, in the year before, this year and the two after it.
  int before_;
  int here_;
  int next_;
  int afterNext_;
};

/// Leaves out the days of a month, from 0, for which a test says no.
template <typename Test>
std::uint32_t Filtered(std::uint32_t days, Test&& test) {
  for (std::uint32_t left = days; left != 0; left &= left - 1) {
    const int day = std::countr_zero(left);
    if (!test(day)) days &= ~(std::uint32_t{1} << day);
  }
  return days;
}

}  // namespace

RuleDays::RuleDays(const RuleParts& parts, DayNumber first)
    : parts_(WithDaysOf(parts, first)),
      anyWeekday_(!parts_.HasWeekdays()),
      // Periods shorter than a month have each weekday at most once.
      numbersWeekdays_(parts_.NumbersWeekdays() && parts_.frequency >= RuleFrequency::Monthly),
      areAlikeEachWeek_(parts_.months.none() && parts_.monthDays.IsEmpty() &&
                        parts_.yearDays.IsEmpty() && parts_.weeks.IsEmpty() && !numbersWeekdays_) {
  for (std::size_t weekday = 0; weekday < 7 && !numbersWeekdays_; ++weekday) {
    if (!parts_.numberedWeekdays[weekday].IsEmpty()) parts_.weekdays.set(weekday);
  }
}

/// The days of a month, from 0, whose weekdays the rule names.
std::uint32_t RuleDays::WeekdaysIn(int monthBegin, int monthLength, const YearShape& shape) {
  const int firstWeekday = (shape.newYear + monthBegin) % 7;
  const auto named = static_cast<std::uint32_t>(parts_.weekdays.to_ulong());
  const std::uint32_t week = (named >> firstWeekday | named << (7 - firstWeekday)) & 0x7F;
  const std::uint32_t days = week | week << 7 | week << 14 | week << 21 | week << 28;
  if (!numbersWeekdays_) return days;
  if (parts_.frequency == RuleFrequency::Yearly && parts_.months.none()) {
    return days | NumberedWeekdaysIn(firstWeekday, monthLength, monthBegin, shape.Length());
  }
  std::uint32_t& known =
      numberedInMonth_.at(static_cast<std::size_t>(firstWeekday * 4 + monthLength - 28));
  if (known == 0) known = NumberedWeekdaysIn(firstWeekday, monthLength, 0, monthLength);
  return days | known;
}

/// @param before, length  days of the period that the numbers count in before the month, and all
std::uint32_t RuleDays::NumberedWeekdaysIn(int firstWeekday, int monthLength, int before,
                                           int length) const {
  std::uint32_t days = 0;
  for (int weekday = 0; weekday < 7; ++weekday) {
    const Ordinals& numbers = parts_.numberedWeekdays[static_cast<std::size_t>(weekday)];
    if (numbers.IsEmpty()) continue;
    for (int day = (weekday - firstWeekday + 7) % 7; day < monthLength; day += 7) {
      const int at = before + day;
      const int number = at / 7 + 1;
      if (numbers.Has(number, number + (length - 1 - at) / 7)) days |= std::uint32_t{1} << day;
    }
  }
  return days;
}

RuleDays::Year RuleDays::WorkOut(const YearShape& shape) {
  static constexpr std::array<int, 12> Lengths{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  std::optional<Weeks> weeks;
  if (!parts_.weeks.IsEmpty()) weeks.emplace(shape, parts_.weekStart);
  Year result;
  int monthBegin = 0;
  for (std::size_t month = 0; month < Lengths.size(); ++month) {
    const int length = Lengths[month] + (month == 1 && shape.leap ? 1 : 0);
    std::uint32_t days = ~std::uint32_t{0} >> (32 - length);
    if (parts_.months.any() && !parts_.months.test(month + 1)) days = 0;
    if (!anyWeekday_) days &= WeekdaysIn(monthBegin, length, shape);
    if (!parts_.monthDays.IsEmpty()) {
      days = Filtered(days, [&](int day) { return parts_.monthDays.Has(day + 1, length); });
    }
    if (!parts_.yearDays.IsEmpty()) {
      days = Filtered(
          days, [&](int day) { return parts_.yearDays.Has(monthBegin + day + 1, shape.Length()); });
    }
    if (weeks) {
      days = Filtered(days, [&](int day) { return weeks->Has(parts_.weeks, monthBegin + day); });
    }
    result.months[month] = days;
    result.days += std::popcount(days);
    monthBegin += length;
  }
  return result;
}

const RuleDays::Year& RuleDays::In(year y) {
  // What makes no difference to the rule makes no kind of its own.
  YearShape shape;
  shape.leap = y.is_leap();
  if (!anyWeekday_ || !parts_.weeks.IsEmpty()) shape.newYear = WeekdayOf(FirstDayOf(y));
  if (!parts_.weeks.IsEmpty()) {
    shape.leapBefore = (y - std::chrono::years{1}).is_leap();
    shape.leapAfter = (y + std::chrono::years{1}).is_leap();
  }
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
  if (AreAll()) return std::max<std::int64_t>(to - from, 0);
  if (!areAlikeEachWeek_) return CountByYears(from, to);
  const std::int64_t weeks = std::max<std::int64_t>(to - from, 0) / 7;
  return weeks * static_cast<std::int64_t>(parts_.weekdays.count()) +
         CountByYears(from + weeks * 7, to);
}

std::int64_t RuleDays::CountByYears(DayNumber from, DayNumber to) {
  std::int64_t count = 0;
  const auto countMonths = [&](DayNumber begin, DayNumber end) {
    while (begin < end) {
      const MonthPiece piece = PieceFrom(begin, end);
      count += std::popcount(piece.days);
      begin = piece.end;
    }
  };
  year y = std::chrono::year_month_day{ToSysDays(from)}.year();
  if (FirstDayOf(y) < from) ++y;
  DayNumber newYear = FirstDayOf(y);
  countMonths(from, std::min(newYear, to));
  for (; newYear + 366 <= to; ++y) {
    count += In(y).days;
    newYear += y.is_leap() ? 366 : 365;
  }
  countMonths(newYear, to);
  return count;
}

}  // namespace velkor
