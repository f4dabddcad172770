// calendar/ics/read/IcsRuleDays.h: the days that a recurrence rule leaves, whatever its interval.
#pragma once

#include <array>
#include <bit>
#include <chrono>
#include <cstdint>
#include <optional>

#include "calendar/ics/read/IcsRuleParts.h"

namespace velkor {

/// Whole days since 30 December 1899, as Date::DayNumber counts them.
using DayNumber = std::int64_t;

/// The rest that is not below 0, and the quotient that goes with it. @param divisor  above 0
constexpr std::int64_t FloorMod(std::int64_t value, std::int64_t divisor) {
  const std::int64_t rest = value % divisor;
  return rest < 0 ? rest + divisor : rest;
}
constexpr std::int64_t FloorDiv(std::int64_t value, std::int64_t divisor) {
  return (value - FloorMod(value, divisor)) / divisor;
}

constexpr DayNumber DayOf(WallSeconds wall) {
  return FloorDiv(wall, SecondsPerDay);
}
constexpr std::chrono::sys_days ToSysDays(DayNumber day) {
  // From the epoch of Date to that of the system's clock.
  return std::chrono::sys_days{std::chrono::days{day - 25569}};
}
constexpr DayNumber ToDayNumber(std::chrono::sys_days day) {
  return day.time_since_epoch().count() + 25569;
}
/// 0 is Monday.
constexpr int WeekdayOf(DayNumber day) {
  return static_cast<int>(std::chrono::weekday{ToSysDays(day)}.iso_encoding()) - 1;
}

/// The rule's days, those of its positions and times not considered: every part that names days
/// leaves out those that it does not name. Years of one kind have the same days, so each of the
/// 28 kinds at most is worked out once.
class RuleDays {
 public:
  /// @param first  gives what the rule does not say: a weekly rule without a weekday has that of
  ///               the first day
  RuleDays(const RuleParts& parts, DayNumber first);

  /// True when no day is left out.
  bool AreAll() const { return areAlikeEachWeek_ && anyWeekday_; }
  /// True when each week has the same days.
  bool AreAlikeEachWeek() const { return areAlikeEachWeek_; }

  /// How many lie in [from, to).
  std::int64_t Count(DayNumber from, DayNumber to);

  /// Calls `visit(day)` for those in [from, to), in order, until a call returns false.
  /// @return false when a call did
  template <typename Visit>
  bool ForEach(DayNumber from, DayNumber to, Visit&& visit) {
    for (DayNumber day = from; day < to;) {
      const MonthPiece piece = PieceFrom(day, to);
      for (std::uint32_t left = piece.days; left != 0; left &= left - 1) {
        if (!visit(day + std::countr_zero(left))) return false;
      }
      day = piece.end;
    }
    return true;
  }

 private:
  /// Bit n of a month is set when its day n + 1 is one of the rule.
  struct Year {
    std::array<std::uint32_t, 12> months{};
    int days = 0;
  };
  /// Bit n stands for the n-th day from where the piece begins.
  struct MonthPiece {
    DayNumber end;
    std::uint32_t days;
  };
  /// What tells one kind of year from another.
  struct YearShape;

  const Year& In(std::chrono::year year);
  /// From `day` to the end of its month, `to` at the latest.
  MonthPiece PieceFrom(DayNumber day, DayNumber to);
  std::int64_t CountByYears(DayNumber from, DayNumber to);
  Year WorkOut(const YearShape& shape);
  std::uint32_t WeekdaysIn(int monthBegin, int monthLength, const YearShape& shape);
  std::uint32_t NumberedWeekdaysIn(int firstWeekday, int monthLength, int before, int length) const;

  RuleParts parts_;
  bool anyWeekday_;
  bool numbersWeekdays_;
  bool areAlikeEachWeek_;
  std::array<std::optional<Year>, 28> years_;
  /// Numbered weekdays of a month by its first weekday and its length; 0 until worked out.
  std::array<std::uint32_t, 28> numberedInMonth_{};
};

}  // namespace velkor
