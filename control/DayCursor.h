// control/DayCursor.h: the day that the keyboard points at, and which of its events.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <vector>

#include "platform/Elements.h"
#include "values/Date.h"
#include "view/YearGrid.h"

namespace velkor {

/// Indices of the events of a day's cell, from the top band down.
std::vector<std::size_t> EventsOfDay(const YearGrid& grid, GridCell cell);

/// A day of the span; without one until a key is used.
class DayCursor {
 public:
  /// The grid outlives this.
  explicit DayCursor(const YearGrid& grid) : grid_(grid) {}

  bool IsShown() const { return date_.has_value(); }
  /// Only when IsShown.
  Date Day() const { return *date_; }
  std::optional<GridCell> Cell() const;

  /// Puts it on a day of the span.
  void MoveTo(Date day);
  /// Moves by an arrow, Home or End, never out of the span; the first key only shows it, on
  /// `today` or the span's first day.
  /// @return false for another key
  bool Move(Key key, Date today);
  /// After the span changed: the same month and day, or the last one that the month has.
  void SpanChanged();

  /// Indices of the day's events, from the top band down.
  std::vector<std::size_t> Events() const;
  /// Position among these of the chosen one, from 0: the first, until another is chosen. It stays
  /// chosen when the events are loaded again.
  std::size_t PositionIn(const std::vector<std::size_t>& events) const;
  std::optional<std::size_t> ChosenEvent() const;
  /// Whether an event was chosen since the cursor came to its day.
  bool HasChosen() const { return !chosenId_.empty(); }
  /// Chooses the day's next event, after the last one the first.
  void ChooseNext();
  /// Chooses an event of the day by its index.
  void Choose(std::size_t event);

 private:
  const YearGrid& grid_;
  std::optional<Date> date_;
  /// EventID and start of the chosen event; empty for the first one.
  std::string chosenId_;
  Date chosenStart_;
};

}  // namespace velkor
