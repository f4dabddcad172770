// calendar/ics/read/IcsSegments.h: a series and what stands for "this and all later" of its
// occurrences.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "calendar/ics/read/IcsEvent.h"

namespace velkor {

/// The series cut where changes with RANGE=THISANDFUTURE begin; each segment counts up to the next.
class IcsSegments {
 public:
  /// @param changed  of the series; events outlive this
  IcsSegments(const IcsEvent& master, const std::vector<const IcsEvent*>& changed);

  /// The event that an occurrence has its length and its texts from: the series, or the change
  /// whose RECURRENCE-ID stands last before it.
  /// @param start  as the series gives it
  const IcsEvent& EventAt(const IcsTime& start) const { return *SegmentAt(start).event; }
  /// Where the occurrence is moved: by what the change has moved the one that it names. None
  /// outside the years 100 to 9999.
  std::optional<IcsTime> Moved(const IcsTime& start) const;

  using Stretch = std::pair<WallSeconds, WallSeconds>;
  /// Where occurrences start, on the clock of the series, that are shown between `from` and `to` of
  /// the local clock; ascending, some more than those.
  /// @param longest  seconds that no occurrence exceeds
  std::vector<Stretch> Reach(WallSeconds from, WallSeconds to, WallSeconds longest) const;

 private:
  struct Segment {
    /// On the clock of the series.
    WallSeconds from = 0;
    const IcsEvent* event = nullptr;
    /// The occurrence that the change names, as the series gives it.
    IcsTime named;
  };

  const Segment& SegmentAt(const IcsTime& start) const;

  const IcsEvent& master_;
  /// The first one is the series, from the beginning.
  std::vector<Segment> segments_;
};

}  // namespace velkor
