// calendar/IcsRule.cpp: the starts of a recurrence rule, period by period. This is our own code and
// not libical's, since that gives other days than RFC 5545 for whole families of rules without a
// word (a yearly rule by BYMONTHDAY alone, BYDAY with BYMONTHDAY, WKST with an interval, unsorted
// times), searches through thousands of years within one call, and goes through all that lies
// before the window.
#include "calendar/IcsRule.h"

#include <algorithm>
#include <array>
#include <optional>

#include "calendar/IcsRuleDays.h"
#include "calendar/IcsRuleParts.h"
#include "calendar/IcsRuleTimes.h"
#include "support/values/Date.h"

namespace velkor {
namespace {

constexpr DayNumber DayOf(WallSeconds wall) {
  return (wall - (wall % SecondsPerDay + SecondsPerDay) % SecondsPerDay) / SecondsPerDay;
}

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

/// Walks through one rule.
class RuleWalk {
 public:
  RuleWalk(const RuleParts& parts, const IcsTime& first, WallSeconds from, WallSeconds to,
           std::size_t most)
      : parts_(parts),
        first_(first.wall),
        firstDay_(DayOf(first.wall)),
        days_(parts, firstDay_),
        times_(parts, first),
        until_(parts.until, first),
        from_(std::max({from, first.wall + 1, FirstWall})),
        to_(std::min({to, LastWall, until_.Last()})),
        most_(most) {
    firstPeriod_ = PeriodOf(firstDay_);
  }

  /// @return false when there are more than wanted
  bool Walk() {
    if (from_ > to_) return true;
    const bool picks = !parts_.places.empty() && parts_.frequency > RuleFrequency::Daily;
    if (parts_.count) left_ = *parts_.count - 1;
    if (picks) {
      WalkPicked();
    } else {
      WalkDays();
    }
    return !tooMany_;
  }

  std::vector<WallSeconds> TakeStarts() { return std::move(starts_); }

 private:
  struct Days {
    DayNumber begin;
    DayNumber end;
  };

  /// Weeks, months or years on end, from some beginning.
  std::int64_t PeriodOf(DayNumber day) const {
    if (parts_.frequency == RuleFrequency::Weekly) {
      // Day 2 was a Monday.
      const DayNumber sinceWeekStart = day - 2 - parts_.weekStart;
      return (sinceWeekStart - (sinceWeekStart % 7 + 7) % 7) / 7;
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
    if (left_ && begin > firstDay_) *left_ -= CountAfterFirst(begin);
    ForEachPiece(begin, DayOf(to_) + 1, [&](DayNumber from, DayNumber to) {
      return days_.ForEach(from, to, [&](DayNumber day) {
        for (const std::int32_t time : times_.On(day)) {
          if (!Take(day * SecondsPerDay + time)) return false;
        }
        return true;
      });
    });
  }

  /// How many starts after the first one lie before a day after that one's.
  std::int64_t CountAfterFirst(DayNumber before) {
    std::int64_t count = 0;
    ForEachPiece(firstDay_, firstDay_ + 1, [&](DayNumber from, DayNumber to) {
      return days_.ForEach(from, to, [&](DayNumber day) {
        const RuleTimes::List& times = times_.On(day);
        count += times.end() -
                 std::upper_bound(times.begin(), times.end(), first_ - day * SecondsPerDay);
        return true;
      });
    });
    DayNumber begin = firstDay_ + 1;
    if (parts_.frequency == RuleFrequency::Weekly && days_.AreAlikeEachWeek()) {
      const std::int64_t cycle = parts_.interval * 7;
      const std::int64_t cycles = (before - begin) / cycle;
      count += cycles * CountInDays(0, 7);
      begin += cycles * cycle;
    }
    ForEachPiece(begin, before, [&](DayNumber from, DayNumber to) {
      count += CountInDays(from, to);
      // Nothing more is wanted then.
      return count < *left_;
    });
    return count;
  }

  std::int64_t CountInDays(DayNumber from, DayNumber to) {
    if (times_.AreAlike()) {
      const std::int64_t days = days_.Count(from, to);
      return days == 0 ? 0 : days * times_.CountOn(from);
    }
    if (days_.AreAll() && times_.AreAllRepetitions()) return times_.CountAllRepetitions(from, to);
    std::int64_t count = 0;
    days_.ForEach(from, to, [&](DayNumber day) {
      count += times_.CountOn(day);
      return count < *left_;
    });
    return count;
  }

  void WalkPicked() {
    const std::int64_t begin = NextPeriod(PeriodOf(DayOf(from_)));
    const std::int64_t last = PeriodOf(DayOf(to_));
    if (left_ && begin > firstPeriod_) *left_ -= CountPicked(begin);
    for (std::int64_t period = begin; period <= last; period += parts_.interval) {
      for (const WallSeconds wall : PickedIn(period)) {
        if (!Take(wall)) return;
      }
    }
  }

  std::int64_t CountPicked(std::int64_t before) {
    const std::vector<WallSeconds> inFirst = PickedIn(firstPeriod_);
    std::int64_t count = inFirst.end() - std::upper_bound(inFirst.begin(), inFirst.end(), first_);
    const std::int64_t second = firstPeriod_ + parts_.interval;
    if (parts_.frequency == RuleFrequency::Weekly && days_.AreAlikeEachWeek()) {
      return count + (before - second) / parts_.interval * CountPickedIn(firstPeriod_);
    }
    for (std::int64_t period = second; period < before && count < *left_;
         period += parts_.interval) {
      count += CountPickedIn(period);
    }
    return count;
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
    if (wall > to_ || (left_ && *left_ <= 0)) return false;
    if (wall <= first_) return true;
    if (left_) --*left_;
    if (wall < from_) return true;
    if (!until_.Allows(wall)) return false;
    tooMany_ = starts_.size() >= most_;
    if (!tooMany_) starts_.push_back(wall);
    return !tooMany_;
  }

  const RuleParts& parts_;
  WallSeconds first_;
  DayNumber firstDay_;
  std::int64_t firstPeriod_ = 0;
  RuleDays days_;
  RuleTimes times_;
  UntilBound until_;
  WallSeconds from_;
  WallSeconds to_;
  std::size_t most_;
  /// Starts that COUNT leaves.
  std::optional<std::int64_t> left_;
  /// How many BYSETPOS picks in a period of so many days; below 0 until it is known.
  std::array<std::int64_t, 367> pickedOf_ = [] {
    std::array<std::int64_t, 367> unknown;
    unknown.fill(-1);
    return unknown;
  }();
  std::vector<WallSeconds> starts_;
  bool tooMany_ = false;
};

}  // namespace

RuleStarts ExpandRule(std::string_view text, const IcsTime& first, WallSeconds from, WallSeconds to,
                      std::size_t most) {
  RuleReading reading = ReadRule(text);
  RuleStarts result;
  if (!reading.passedOver.empty()) {
    result.remarks.push_back(std::move(reading.passedOver) + "; it is passed over");
  }
  if (!reading.parts) {
    result.remarks.push_back(std::move(reading.problem) + "; it adds no occurrence");
    return result;
  }
  RuleWalk walk(*reading.parts, first, from, to, most);
  const bool whole = walk.Walk();
  result.starts = walk.TakeStarts();
  if (!whole) {
    result.remarks.push_back("gives more than " + std::to_string(most) +
                             " occurrences; the rest are left out");
  }
  return result;
}

}  // namespace velkor
