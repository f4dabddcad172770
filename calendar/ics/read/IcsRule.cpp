// calendar/ics/read/IcsRule.cpp: the starts of a recurrence rule, period by period. This is our own
// code and not libical's, since that gives other days than RFC 5545 for whole families of rules
// without a word (a yearly rule by BYMONTHDAY alone, BYDAY with BYMONTHDAY, WKST with an interval,
// unsorted times), searches through thousands of years within one call, and goes through all that
// lies before the window.
#include "calendar/ics/read/IcsRule.h"

#include <algorithm>
#include <array>
#include <optional>

#include "calendar/ics/read/IcsRuleDays.h"
#include "calendar/ics/read/IcsRuleParts.h"
#include "calendar/ics/read/IcsRuleTimes.h"
#include "values/Date.h"

namespace velkor {
namespace {

/// The last start that UNTIL allows.
class UntilBound {
 public:
  UntilBound(const std::optional<IcsTimeText>& until, const IcsTime& first) : first_(first) {
    if (!until) return;
    if (until->isDate || first.isDate) {
      last_ = (DayOf(until->wall) + 1) * SecondsPerDay - 1;
    } else if (until->isUtc) {
      utc_ = until->wall;
      last_ = until->wall + Slack;
    } else {
      last_ = until->wall;
    }
  }

  /// None allowed lies after it.
  WallSeconds Last() const { return last_; }
  /// @param wall  at most Last()
  bool Allows(WallSeconds wall) const {
    if (!utc_ || wall < *utc_ - Slack) return true;
    // Both sides as local time, since the start is in its own zone.
    static const IcsZone utc{IcsZone::Utc{}};
    return first_.zone->ToLocal(wall) <= utc.ToLocal(*utc_);
  }

 private:
  /// Clocks of two zones differ by a good day at most.
  static constexpr WallSeconds Slack = 2 * SecondsPerDay;

  const IcsTime& first_;
  WallSeconds last_ = LastWall;
  std::optional<WallSeconds> utc_;
};

}  // namespace

/// Walks through one rule.
class IcsRule::Walk {
 public:
  Walk(const RuleParts& parts, const IcsTime& first)
      : parts_(parts),
        first_(first.wall),
        firstDay_(DayOf(first.wall)),
        days_(parts, firstDay_),
        times_(parts, first),
        until_(parts.until, first),
        firstPeriod_(PeriodOf(firstDay_)) {
    if (parts.count) left_ = *parts.count - 1;
  }

  RuleStarts StartsIn(WallSeconds from, WallSeconds to, std::size_t most) {
    from_ = std::max({from, first_ + 1, FirstWall});
    to_ = std::min({to, LastWall, until_.Last()});
    most_ = most;
    found_ = {};
    const bool picks = !parts_.places.empty() && parts_.frequency > RuleFrequency::Daily;
    if (from_ <= to_) picks ? WalkPicked() : WalkDays();
    return std::move(found_);
  }

 private:
  struct Days {
    DayNumber begin;
    DayNumber end;
  };

  /// Weeks, months or years on end, from some beginning.
  std::int64_t PeriodOf(DayNumber day) const {
    if (parts_.frequency == RuleFrequency::Weekly) {
      // Day 2 was a Monday.
      return FloorDiv(day - 2 - parts_.weekStart, 7);
    }
    const std::chrono::year_month_day date{ToSysDays(day)};
    const auto year = static_cast<int>(date.year());
    if (parts_.frequency == RuleFrequency::Yearly) return year;
    return year * 12 + static_cast<int>(static_cast<unsigned>(date.month())) - 1;
  }

  Days DaysOf(std::int64_t period) const {
    using namespace std::chrono;
    if (parts_.frequency == RuleFrequency::Weekly) {
      const DayNumber begin = period * 7 + 2 + parts_.weekStart;
      return {begin, begin + 7};
    }
    const bool yearly = parts_.frequency == RuleFrequency::Yearly;
    const auto begins = [&](std::int64_t index) {
      const year_month month = year{0} / January + months{yearly ? index * 12 : index};
      return ToDayNumber(month / 1);
    };
    return {begins(period), begins(period + 1)};
  }

  /// The first period of the rule at `period` or after it.
  std::int64_t NextPeriod(std::int64_t period) const {
    const std::int64_t distance = std::max<std::int64_t>(period - firstPeriod_, 0);
    return firstPeriod_ + (distance + parts_.interval - 1) / parts_.interval * parts_.interval;
  }

  /// Visits the pieces of [begin, end) that lie in the rule's periods, until a call returns false.
  template <typename Visit>
  void ForEachPiece(DayNumber begin, DayNumber end, Visit&& visit) {
    if (begin >= end) return;
    if (parts_.interval == 1 || parts_.frequency <= RuleFrequency::Daily) {
      visit(begin, end);
      return;
    }
    const std::int64_t last = PeriodOf(end - 1);
    for (auto period = NextPeriod(PeriodOf(begin)); period <= last; period += parts_.interval) {
      const Days days = DaysOf(period);
      if (!visit(std::max(begin, days.begin), std::min(end, days.end))) return;
    }
  }

  void WalkDays() {
    const DayNumber begin = DayOf(from_);
    if (left_) CountDaysUntil(begin);
    wanted_ = left_;
    ForEachPiece(begin, DayOf(to_) + 1, [&](DayNumber from, DayNumber to) {
      return days_.ForEach(from, to, [&](DayNumber day) {
        const WallSeconds midnight = day * SecondsPerDay;
        if (from_ == to_) {
          if (!times_.Contain(day, from_ - midnight)) return true;
          // COUNT leaves the whole day.
          if (!wanted_ || *wanted_ >= times_.CountOn(day)) return Take(from_);
        }
        const RuleTimes::List& times = times_.On(day);
        auto time = std::lower_bound(times.begin(), times.end(), from_ - midnight);
        if (wanted_) *wanted_ -= time - std::upper_bound(times.begin(), time, first_ - midnight);
        for (; time != times.end(); ++time) {
          if (!Take(midnight + *time)) return false;
        }
        return true;
      });
    });
  }

  /// Takes what lies before a day off what COUNT leaves.
  void CountDaysUntil(DayNumber before) {
    if (before <= firstDay_) return;
    if (!countedTo_) {
      ForEachPiece(firstDay_, firstDay_ + 1, [&](DayNumber from, DayNumber to) {
        return days_.ForEach(from, to, [&](DayNumber day) {
          const RuleTimes::List& times = times_.On(day);
          *left_ -= times.end() -
                    std::upper_bound(times.begin(), times.end(), first_ - day * SecondsPerDay);
          return true;
        });
      });
    }
    DayNumber begin = countedTo_.value_or(firstDay_ + 1);
    countedTo_ = before;
    if (parts_.frequency == RuleFrequency::Weekly && days_.AreAlikeEachWeek()) {
      const std::int64_t cycle = parts_.interval * 7;
      const std::int64_t cycles = (before - begin) / cycle;
      *left_ -= cycles * CountInDays(0, 7);
      begin += cycles * cycle;
    }
    ForEachPiece(begin, before, [&](DayNumber from, DayNumber to) {
      *left_ -= CountInDays(from, to);
      return *left_ > 0;
    });
  }

  std::int64_t CountInDays(DayNumber from, DayNumber to) {
    if (times_.AreAlike()) {
      const std::int64_t days = days_.Count(from, to);
      return days == 0 ? 0 : days * times_.CountOn(from);
    }
    if (days_.AreAll() && times_.AreAllRepetitions()) return times_.CountAllRepetitions(from, to);
    const std::int64_t cycle = 7 * times_.WeeksUntilAlike();
    const std::int64_t cycles = days_.AreAlikeEachWeek() ? (to - from) / cycle : 0;
    if (cycles == 0) return CountDayByDay(from, to);
    const DayNumber rest = from + cycles * cycle;
    return cycles * CountDayByDay(from, from + cycle) + CountDayByDay(rest, to);
  }

  std::int64_t CountDayByDay(DayNumber from, DayNumber to) {
    std::int64_t count = 0;
    days_.ForEach(from, to, [&](DayNumber day) {
      count += times_.CountOn(day);
      // Nothing more is wanted then.
      return count < *left_;
    });
    return count;
  }

  void WalkPicked() {
    const std::int64_t begin = NextPeriod(PeriodOf(DayOf(from_)));
    const std::int64_t last = PeriodOf(DayOf(to_));
    if (left_) CountPickedUntil(begin);
    wanted_ = left_;
    for (std::int64_t period = begin; period <= last; period += parts_.interval) {
      for (const WallSeconds wall : PickedIn(period)) {
        if (!Take(wall)) return;
      }
    }
  }

  /// As CountDaysUntil, for what lies before a period of the rule.
  void CountPickedUntil(std::int64_t before) {
    if (before <= firstPeriod_) return;
    if (!countedTo_) {
      const std::vector<WallSeconds> picked = PickedIn(firstPeriod_);
      *left_ -= picked.end() - std::upper_bound(picked.begin(), picked.end(), first_);
    }
    std::int64_t period = countedTo_.value_or(firstPeriod_ + parts_.interval);
    countedTo_ = before;
    if (parts_.frequency == RuleFrequency::Weekly && days_.AreAlikeEachWeek()) {
      *left_ -= (before - period) / parts_.interval * CountPickedIn(firstPeriod_);
      return;
    }
    for (; *left_ > 0 && period < before; period += parts_.interval) {
      *left_ -= CountPickedIn(period);
    }
  }

  std::int64_t CountPickedIn(std::int64_t period) {
    const Days days = DaysOf(period);
    const std::int64_t count = days_.Count(days.begin, days.end);
    if (count == 0) return 0;
    std::int64_t& picked = pickedOf_.at(static_cast<std::size_t>(count));
    if (picked < 0) {
      const std::int64_t all = count * times_.CountOn(days.begin);
      picked = static_cast<std::int64_t>(PickedPlaces(parts_.places, all).size());
    }
    return picked;
  }

  /// The starts of a period that BYSETPOS picks.
  std::vector<WallSeconds> PickedIn(std::int64_t period) {
    const Days days = DaysOf(period);
    std::vector<DayNumber> all;
    days_.ForEach(days.begin, days.end, [&](DayNumber day) {
      all.push_back(day);
      return true;
    });
    std::vector<WallSeconds> picked;
    if (all.empty()) return picked;
    const RuleTimes::List& times = times_.On(all.front());
    const auto perDay = static_cast<std::int64_t>(times.size());
    for (const std::int64_t place :
         PickedPlaces(parts_.places, static_cast<std::int64_t>(all.size()) * perDay)) {
      picked.push_back(all[static_cast<std::size_t>(place / perDay)] * SecondsPerDay +
                       times[static_cast<std::size_t>(place % perDay)]);
    }
    return picked;
  }

  /// @param wall  after those taken before
  /// @return false when nothing more is wanted
  bool Take(WallSeconds wall) {
    if (wall > to_ || (wanted_ && *wanted_ <= 0)) return false;
    if (wall <= first_) return true;
    if (wanted_) --*wanted_;
    if (wall < from_) return true;
    if (!until_.Allows(wall)) return false;
    found_.areAll = found_.starts.size() < most_;
    if (found_.areAll) found_.starts.push_back(wall);
    return found_.areAll;
  }

  RuleParts parts_;
  WallSeconds first_;
  DayNumber firstDay_;
  RuleDays days_;
  RuleTimes times_;
  UntilBound until_;
  std::int64_t firstPeriod_;
  /// Starts that COUNT leaves from a day on, with BYSETPOS from a period; at first from the first
  /// start.
  std::optional<std::int64_t> left_;
  std::optional<std::int64_t> countedTo_;
  /// How many BYSETPOS picks in a period of so many days; below 0 until it is known.
  std::array<std::int64_t, 367> pickedOf_ = [] {
    std::array<std::int64_t, 367> unknown{};
    unknown.fill(-1);
    return unknown;
  }();

  // Of the window.
  WallSeconds from_ = 0;
  WallSeconds to_ = 0;
  std::size_t most_ = 0;
  std::optional<std::int64_t> wanted_;
  RuleStarts found_;
};

IcsRule::IcsRule(std::string_view text, const IcsTime& first) {
  RuleReading reading = ReadRule(text);
  if (!reading.passedOver.empty()) {
    remarks_.push_back(std::move(reading.passedOver) + "; it is passed over");
  }
  if (reading.parts) {
    walk_ = std::make_unique<Walk>(*reading.parts, first);
  } else {
    remarks_.push_back(std::move(reading.problem) + "; it adds no occurrence");
  }
}

IcsRule::~IcsRule() = default;

RuleStarts IcsRule::StartsIn(WallSeconds from, WallSeconds to, std::size_t most) {
  return walk_ ? walk_->StartsIn(from, to, most) : RuleStarts{};
}

}  // namespace velkor
