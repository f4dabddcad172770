// calendar/ics/read/IcsRuleTimes.h: the times of a day at which a recurrence rule's starts lie.
#pragma once

#include <bitset>
#include <cstdint>
#include <numeric>
#include <optional>
#include <vector>

#include "calendar/ics/read/IcsRuleDays.h"
#include "calendar/ics/read/IcsRuleParts.h"

namespace velkor {

/// A rule from days down repeats every so many days, hours, minutes or seconds, which do not
/// always fall on the same times of each day. One of weeks, months or years has the same times on
/// all its days.
class RuleTimes {
 public:
  /// Seconds from midnight, ascending.
  using List = std::vector<std::int32_t>;

  /// @param first  gives what the rule does not say, and where its intervals begin
  RuleTimes(const RuleParts& parts, const IcsTime& first);

  /// The times on one day, which stay until the next call.
  const List& On(DayNumber day);
  /// Whether one of them is this one, found without working out the others.
  /// @param time  seconds from midnight
  bool Contain(DayNumber day, std::int64_t time) const;
  /// How many there are on one day.
  std::int64_t CountOn(DayNumber day);
  /// True when they are the same on each day.
  bool AreAlike() const { return unitsPerDay_ % interval_ == 0; }
  /// After so many weeks the same times come on the same weekdays again.
  std::int64_t WeeksUntilAlike() const { return interval_ / std::gcd(interval_, 7 * unitsPerDay_); }
  /// True when all repetitions count: none falls on an hour, minute or second that is left out.
  bool AreAllRepetitions() const { return hours_.all() && minutes_.all() && seconds_.all(); }
  /// The times on all days in [from, to) together, when all repetitions count.
  std::int64_t CountAllRepetitions(DayNumber from, DayNumber to) const;

 private:
  std::int64_t FirstUnitOn(DayNumber day) const;
  void WorkOut(DayNumber day);
  template <typename Visit>
  void ForEachUnit(std::int64_t first, std::int64_t step, Visit&& visit) const;

  /// Seconds of a day, an hour, a minute or one: what the interval counts.
  std::int64_t unit_;
  std::int64_t unitsPerDay_;
  std::int64_t interval_;
  std::int64_t firstUnit_;
  /// Those on which a repetition may fall.
  std::bitset<24> hours_;
  std::bitset<60> minutes_;
  std::bitset<60> seconds_;
  /// The starts within a repetition's unit, in seconds from where it begins.
  List inUnit_;
  List times_;
  /// The day that they are of.
  std::optional<DayNumber> known_;
  /// How many units of a day fall on each remainder of the interval; empty until asked for.
  std::vector<std::int32_t> unitsByRemainder_;
};

/// Places that BYSETPOS picks among so many, from 0, ascending.
std::vector<std::int64_t> PickedPlaces(const std::set<int>& places, std::int64_t count);

}  // namespace velkor
