// calendar/ics/read/IcsOccurrences.h: from events of a file to items with their occurrences.
#pragma once

#include <cstddef>
#include <optional>
#include <set>
#include <string>
#include <unordered_map>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsEvent.h"
#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/read/IcsSegments.h"

namespace velkor {

/// Counts what begins in each year, up to a bound.
class YearCounts {
 public:
  explicit YearCounts(std::size_t most) : most_(most) {}
  std::size_t Room(int year) const;
  /// There is room.
  void Add(int year) { ++counts_[year]; }

 private:
  std::size_t most_;
  std::unordered_map<int, std::size_t> counts_;
};

/// Makes items of one file; their occurrences share one bound for each year.
class IcsItemBuilder {
 public:
  IcsItemBuilder(const DateWindow& window, const IcsLimits& limits, Diagnostics& diagnostics)
      : from_(window.from.Seconds()),
        to_(window.to.Seconds()),
        limits_(limits),
        diagnostics_(diagnostics),
        occurrences_(limits.occurrences) {}

  /// The item of an appointment. Of a recurring one with its changed occurrences, at most one for
  /// each RECURRENCE-ID; a cancelled one only takes the occurrence away, or this and all later.
  CalendarItem Item(const IcsEvent& main, const std::vector<const IcsEvent*>& changed,
                    std::string entryId);
  /// The item without its occurrences.
  CalendarItem Bare(const IcsEvent& main, const std::vector<const IcsEvent*>& changed,
                    std::string entryId);

 private:
  struct Span {
    WallSeconds start;
    WallSeconds end;
  };
  /// An occurrence and the event that it has its texts from.
  struct Place {
    Span span;
    const IcsEvent* event;
  };
  struct RemovedDates;
  struct Series;

  void Expand(CalendarItem& item, const IcsEvent& master,
              const std::vector<const IcsEvent*>& changed);
  Span FirstSpan(const IcsEvent& event);
  /// Reports a cut once for all occurrences of an event.
  void CutAtLastYear(Span& span, const IcsEvent& event);
  bool Touches(const Span& span) const { return span.start <= to_ && span.end >= from_; }
  void Report(const IcsEvent& master, const IcsRuleText& rule,
              const std::vector<std::string>& remarks);
  /// Starts that its rules add, on its own clock.
  std::vector<WallSeconds> RuleStartsOf(const IcsEvent& master,
                                        const std::vector<IcsSegments::Stretch>& reach);
  /// Adds those of its starts and added dates that its exception rules take away.
  /// @param starts  of its rules, in any order
  void TakeAwayByRules(const IcsEvent& master, std::vector<WallSeconds> starts,
                       RemovedDates& removed);
  Span SpanOf(const IcsTime& start, const IcsEvent& event, const IcsAddedDate* own,
              WallSeconds firstLength);
  std::optional<Place> PlaceAt(const IcsTime& start, const IcsAddedDate* own, const Series& series);
  std::vector<Place> Places(const Series& series, const std::vector<WallSeconds>& ruleStarts);
  static void AddOccurrences(CalendarItem& item, const IcsEvent& master,
                             const std::vector<Place>& places);

  WallSeconds from_;
  WallSeconds to_;
  const IcsLimits& limits_;
  Diagnostics& diagnostics_;
  YearCounts occurrences_;
  /// The item at hand has occurrences for which there was no room among those of all items.
  bool lacksRoom_ = false;
  const IcsEvent* lastCut_ = nullptr;
};

/// What a RECURRENCE-ID names: the day for an all-day master or a date, else the local second.
struct OccurrenceKey {
  bool isDay = false;
  WallSeconds value = 0;

  friend auto operator<=>(const OccurrenceKey&, const OccurrenceKey&) = default;
};
OccurrenceKey KeyOf(const IcsTime& named, const IcsEvent& master);

/// Which of these keys are occurrences that the start, the rules and the added dates of a recurring
/// event give.
std::set<OccurrenceKey> OccurringAt(const std::set<OccurrenceKey>& keys, const IcsEvent& master);

}  // namespace velkor
