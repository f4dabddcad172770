// calendar/ics/read/IcsRuleParts.h: what a recurrence rule says, part by part.
#pragma once

#include <array>
#include <bitset>
#include <cstdint>
#include <optional>
#include <set>
#include <string>
#include <string_view>

#include "calendar/ics/read/IcsValues.h"

namespace velkor {

/// Places in a row that are counted from its start (1) or from its end (-1), up to 366 of them.
class Ordinals {
 public:
  void Add(int place) {
    (place > 0 ? fromStart_ : fromEnd_).set(Index(place > 0 ? place : -place));
  }
  bool IsEmpty() const { return fromStart_.none() && fromEnd_.none(); }
  /// @param place, length  1 <= place <= length <= 366
  bool Has(int place, int length) const {
    return fromStart_.test(Index(place)) || fromEnd_.test(Index(length - place + 1));
  }

 private:
  static std::size_t Index(int place) { return static_cast<std::size_t>(place); }

  std::bitset<367> fromStart_;
  std::bitset<367> fromEnd_;
};

/// From the shortest to the longest.
enum class RuleFrequency { Secondly, Minutely, Hourly, Daily, Weekly, Monthly, Yearly };

/// A recurrence rule (RFC 5545 section 3.3.10). A list that is empty leaves all free.
struct RuleParts {
  RuleFrequency frequency = RuleFrequency::Daily;
  std::int64_t interval = 1;
  std::optional<std::int64_t> count;
  std::optional<IcsTimeText> until;
  /// 0 is Monday.
  int weekStart = 0;
  /// Bit n stands for the value n.
  std::bitset<60> seconds;
  std::bitset<60> minutes;
  std::bitset<24> hours;
  std::bitset<13> months;
  Ordinals monthDays;
  Ordinals yearDays;
  Ordinals weeks;
  /// By weekday from Monday: each one, or the n-th of its month or year.
  std::bitset<7> weekdays;
  std::array<Ordinals, 7> numberedWeekdays;
  /// BYSETPOS.
  std::set<int> places;

  bool NumbersWeekdays() const;
  bool HasWeekdays() const { return weekdays.any() || NumbersWeekdays(); }
};

/// What reading a rule came to.
struct RuleReading {
  /// None when the rule cannot be used; `problem` then says why ("has no FREQ").
  std::optional<RuleParts> parts;
  std::string problem;
  /// What was passed over, in such words, too; empty for nothing.
  std::string passedOver;
};

/// @param text  an RRULE value as it stands
RuleReading ReadRule(std::string_view text);

}  // namespace velkor
