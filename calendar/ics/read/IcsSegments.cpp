// calendar/ics/read/IcsSegments.cpp: which change counts for an occurrence, and where it moves it.
#include "calendar/ics/read/IcsSegments.h"

#include <algorithm>

#include "values/Date.h"

namespace velkor {
namespace {

/// What a zone's clock shows then; a date is the same on every clock.
WallSeconds WallOn(const IcsZone& zone, const IcsTime& time) {
  if (time.isDate || time.zone == &zone) return time.wall;
  return zone.FromUtc(time.zone->ToUtc(time.wall));
}

WallSeconds MidnightOf(WallSeconds wall) {
  return Date::FromSeconds(wall).Midnight().Seconds();
}

/// The occurrence that a RECURRENCE-ID names, in the form in which the series gives it.
IcsTime NamedBy(const IcsTime& id, const IcsTime& first) {
  if (first.isDate) return {true, MidnightOf(id.wall), first.zone};
  if (id.isDate) return {false, id.wall + first.wall - MidnightOf(first.wall), first.zone};
  return id;
}

}  // namespace

IcsSegments::IcsSegments(const IcsEvent& master, const std::vector<const IcsEvent*>& changed)
    : master_(master) {
  segments_.push_back({FirstWall, &master, master.start});
  for (const IcsEvent* event : changed) {
    if (!event->thisAndFuture) continue;
    const IcsTime named = NamedBy(*event->recurrenceId, master.start);
    segments_.push_back({WallOn(*master.start.zone, named), event, named});
  }
  std::stable_sort(segments_.begin() + 1, segments_.end(),
                   [](const Segment& a, const Segment& b) { return a.from < b.from; });
}

const IcsSegments::Segment& IcsSegments::SegmentAt(const IcsTime& start) const {
  const WallSeconds wall = WallOn(*master_.start.zone, start);
  const auto next =
      std::upper_bound(segments_.begin() + 1, segments_.end(), wall,
                       [](WallSeconds at, const Segment& one) { return at < one.from; });
  return *(next - 1);
}

std::optional<IcsTime> IcsSegments::Moved(const IcsTime& start) const {
  const Segment& segment = SegmentAt(start);
  if (segment.event == &master_) return start;
  IcsTime moved = segment.event->start;
  const IcsZone& clock = start.isDate || moved.isDate ? *master_.start.zone : *moved.zone;
  moved.wall += WallOn(clock, start) - WallOn(clock, segment.named);
  if (!IsInCalendar(moved.wall)) return std::nullopt;
  if (moved.isDate) moved.wall = MidnightOf(moved.wall);
  return moved;
}

std::vector<IcsSegments::Stretch> IcsSegments::Reach(WallSeconds from, WallSeconds to,
                                                     WallSeconds longest) const {
  // Clocks of two zones differ by a good day at most.
  constexpr WallSeconds Slack = 2 * SecondsPerDay;
  // What lies closer together is looked for at once.
  constexpr WallSeconds Near = 366 * SecondsPerDay;
  std::vector<Stretch> reach;
  for (std::size_t i = 0; i < segments_.size(); ++i) {
    const Segment& segment = segments_[i];
    if (segment.event->cancelled) continue;
    const WallSeconds shift = segment.event->start.Local() - segment.named.Local();
    const WallSeconds last = i + 1 < segments_.size() ? segments_[i + 1].from - 1 : LastWall;
    const WallSeconds begin = std::max(segment.from, from - longest - shift - Slack);
    const WallSeconds end = std::min(last, to - shift + Slack);
    if (begin > end) continue;
    if (!reach.empty() && begin - reach.back().second < Near) {
      reach.back().second = end;
    } else {
      reach.emplace_back(begin, end);
    }
  }
  return reach;
}

}  // namespace velkor
