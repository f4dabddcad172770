// calendar/ics/read/IcsRuleTimes.cpp: repetitions within a day, and the times in each.
#include "calendar/ics/read/IcsRuleTimes.h"

#include <algorithm>
#include <utility>

#include "values/Date.h"

namespace velkor {
namespace {

std::int64_t UnitOf(RuleFrequency frequency) {
  switch (frequency) {
    case RuleFrequency::Secondly:
      return 1;
    case RuleFrequency::Minutely:
      return 60;
    case RuleFrequency::Hourly:
      return 3600;
    default:
      return SecondsPerDay;
  }
}

/// What a part names, else the first start's own value.
template <std::size_t N>
std::bitset<N> Or(const std::bitset<N>& named, std::int64_t own) {
  return named.any() ? named : std::bitset<N>().set(static_cast<std::size_t>(own));
}

/// All values of a part that names none.
template <std::size_t N>
std::bitset<N> OrAll(const std::bitset<N>& named) {
  return named.any() ? named : ~std::bitset<N>();
}

/// One of them, for a part that does not come into a repetition.
template <std::size_t N>
constexpr std::bitset<N> Zero{1};

template <std::size_t N>
bool Has(const std::bitset<N>& set, std::int64_t value) {
  return set.test(static_cast<std::size_t>(value));
}

/// The seconds of a unit on such an hour, minute and second.
RuleTimes::List SecondsIn(std::int64_t unit, const std::bitset<24>& hours,
                          const std::bitset<60>& minutes, const std::bitset<60>& seconds) {
  RuleTimes::List found;
  for (int second = 0; second < unit; ++second) {
    if (!Has(hours, second / 3600)) {
      second += 3599;
    } else if (!Has(minutes, second / 60 % 60)) {
      second += 59;
    } else if (Has(seconds, second % 60)) {
      found.push_back(second);
    }
  }
  return found;
}

}  // namespace

std::vector<std::int64_t> PickedPlaces(const std::set<int>& places, std::int64_t count) {
  std::vector<std::int64_t> picked;
  for (const int place : places) {
    const std::int64_t index = place > 0 ? place - 1 : count + place;
    if (index >= 0 && index < count) picked.push_back(index);
  }
  std::sort(picked.begin(), picked.end());
  picked.erase(std::unique(picked.begin(), picked.end()), picked.end());
  return picked;
}

RuleTimes::RuleTimes(const RuleParts& parts, const IcsTime& first)
    : unit_(UnitOf(parts.frequency)),
      unitsPerDay_(SecondsPerDay / unit_),
      interval_(parts.frequency <= RuleFrequency::Daily ? parts.interval : 1),
      firstUnit_(FloorDiv(first.wall, unit_)) {
  const std::int64_t time = FloorMod(first.wall, SecondsPerDay);
  RuleParts used = parts;
  if (first.isDate) {
    // An all-day occurrence begins at midnight, and its rule's times do not count (RFC 5545
    // section 3.3.10).
    used.hours = Zero<24>;
    used.minutes = Zero<60>;
    used.seconds = Zero<60>;
  }
  const RuleFrequency frequency = parts.frequency;
  const bool hourly = frequency == RuleFrequency::Hourly;
  const bool minutely = frequency == RuleFrequency::Minutely;
  const bool secondly = frequency == RuleFrequency::Secondly;
  const bool withinDay = hourly || minutely || secondly;
  hours_ = withinDay ? OrAll(used.hours) : ~std::bitset<24>();
  minutes_ = minutely || secondly ? OrAll(used.minutes) : ~std::bitset<60>();
  seconds_ = secondly ? OrAll(used.seconds) : ~std::bitset<60>();

  const auto hours = withinDay ? Zero<24> : Or(used.hours, time / 3600);
  const auto minutes = minutely || secondly ? Zero<60> : Or(used.minutes, time / 60 % 60);
  const auto seconds = secondly ? Zero<60> : Or(used.seconds, time % 60);
  inUnit_ = SecondsIn(unit_, hours, minutes, seconds);
  if (parts.places.empty() || frequency > RuleFrequency::Daily) return;
  const List all = std::exchange(inUnit_, {});
  for (const std::int64_t place :
       PickedPlaces(parts.places, static_cast<std::int64_t>(all.size()))) {
    inUnit_.push_back(all[static_cast<std::size_t>(place)]);
  }
}

/// The first repetition on a day or after it, in units from the day's beginning.
std::int64_t RuleTimes::FirstUnitOn(DayNumber day) const {
  return FloorMod(firstUnit_ - day * unitsPerDay_, interval_);
}

/// Visits the units of a day that a repetition may fall on, from `first` in such steps; what lies
/// in an hour or a minute that is left out is skipped at once.
template <typename Visit>
void RuleTimes::ForEachUnit(std::int64_t first, std::int64_t step, Visit&& visit) const {
  const auto skip = [&](std::int64_t at, std::int64_t second, std::int64_t length) {
    const std::int64_t distance = (second / length + 1) * length / unit_ - at;
    return at + (distance + step - 1) / step * step;
  };
  for (std::int64_t at = first; at < unitsPerDay_;) {
    const std::int64_t second = at * unit_;
    if (!Has(hours_, second / 3600)) {
      at = skip(at, second, 3600);
    } else if (!Has(minutes_, second / 60 % 60)) {
      at = skip(at, second, 60);
    } else {
      if (Has(seconds_, second % 60)) visit(at);
      at += step;
    }
  }
}

void RuleTimes::WorkOut(DayNumber day) {
  times_.clear();
  if (inUnit_.empty()) return;
  ForEachUnit(FirstUnitOn(day), interval_, [&](std::int64_t at) {
    for (const std::int32_t second : inUnit_) {
      times_.push_back(static_cast<std::int32_t>(at * unit_) + second);
    }
  });
}

const RuleTimes::List& RuleTimes::On(DayNumber day) {
  if (!known_ || (*known_ != day && !AreAlike())) WorkOut(day);
  known_ = day;
  return times_;
}

bool RuleTimes::Contain(DayNumber day, std::int64_t time) const {
  const std::int64_t at = time / unit_;
  const std::int64_t second = at * unit_;
  return FloorMod(at - FirstUnitOn(day), interval_) == 0 && Has(hours_, second / 3600) &&
         Has(minutes_, second / 60 % 60) && Has(seconds_, second % 60) &&
         std::binary_search(inUnit_.begin(), inUnit_.end(), time - second);
}

std::int64_t RuleTimes::CountOn(DayNumber day) {
  if (AreAlike()) return static_cast<std::int64_t>(On(day).size());
  if (unitsByRemainder_.empty()) {
    unitsByRemainder_.resize(static_cast<std::size_t>(std::min(interval_, unitsPerDay_)));
    ForEachUnit(0, 1, [&](std::int64_t at) {
      ++unitsByRemainder_[static_cast<std::size_t>(at % interval_)];
    });
  }
  const auto remainder = static_cast<std::size_t>(FirstUnitOn(day));
  if (remainder >= unitsByRemainder_.size()) return 0;
  return unitsByRemainder_[remainder] * static_cast<std::int64_t>(inUnit_.size());
}

std::int64_t RuleTimes::CountAllRepetitions(DayNumber from, DayNumber to) const {
  const auto before = [&](DayNumber day) {
    return FloorDiv(day * unitsPerDay_ - firstUnit_ + interval_ - 1, interval_);
  };
  return (before(to) - before(from)) * static_cast<std::int64_t>(inUnit_.size());
}

}  // namespace velkor
