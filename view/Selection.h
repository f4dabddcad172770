// view/Selection.h: a range of days in the grid, by the cells of its corners.
#pragma once

#include <tuple>
#include <utility>

#include "span/DisplaySpan.h"
#include "values/Date.h"

namespace velkor {

/// Two corners in either order, both included. The range runs row by row: from one corner to the
/// end of its month, through the months between, to the other corner.
struct Selection {
  GridCell start;
  GridCell end;

  friend bool operator==(const Selection&, const Selection&) = default;
};

/// The same range with the earlier corner as its start.
inline Selection InDateOrder(Selection selection) {
  const auto& [start, end] = selection;
  if (std::tie(end.row, end.column) < std::tie(start.row, start.column)) {
    std::swap(selection.start, selection.end);
  }
  return selection;
}

/// Whether a day is one of the range.
inline bool Contains(const Selection& selection, GridCell day) {
  const auto [start, end] = InDateOrder(selection);
  const auto at = std::tie(day.row, day.column);
  return std::tie(start.row, start.column) <= at && at <= std::tie(end.row, end.column);
}

/// Whole days; `end` is the day after the last one.
struct DateRange {
  Date start;
  Date end;

  friend bool operator==(const DateRange&, const DateRange&) = default;
};

}  // namespace velkor
