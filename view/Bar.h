// view/Bar.h: the columns that an event covers in each row, the one rule behind every bar.
#pragma once

#include <algorithm>
#include <cstdint>

#include "model/CalEvent.h"
#include "span/DisplaySpan.h"

namespace velkor {

/// A stretch of one row within its month: columns First + 1 to Last.
struct Segment {
  int row = 0;
  int first = 0;
  int last = 0;
};

/// One bar of the drawn year.
struct Bar {
  /// Index in the event collection.
  std::uint32_t event = 0;
  /// From 2; a bar keeps it through all rows.
  std::int32_t band = 0;
  std::int16_t row = 0;
  std::int16_t first = 0;
  std::int16_t last = 0;
};

/// What the bar rule depends on besides the event.
struct BarRule {
  DisplaySpan span;
  MonthColumns columns;
  /// Events that end during a day cover that day too, and one of no length covers its day.
  bool allEvents = false;
};

/// True for an event of which some day may lie in the span: not wholly before it or after it, and
/// not ended before it began.
inline bool TouchesSpan(const CalEvent& event) {
  return event.EndMonth >= 1 && event.StartMonth <= 12 && event.EndDate >= event.StartDate;
}

/// The row in which an event that touches the span begins to be drawn.
inline int StartRowOf(const CalEvent& event, const DisplaySpan& span) {
  return event.StartMonth >= 1 ? span.RowOfMonth(event.StartMonth) : 1;
}

/// Calls `visit(Segment)` for each row in which an event covers a column, from its start row down.
template <typename Visit>
void ForEachSegment(const CalEvent& event, const BarRule& rule, Visit&& visit) {
  const int startRow = StartRowOf(event, rule.span);
  const int endRow = event.EndMonth <= 12 ? rule.span.RowOfMonth(event.EndMonth) : MonthRows;
  const bool isMoment = event.StartDate == event.EndDate;
  const bool coversLastDay = rule.allEvents && (HasTimeOfDay(event.EndDate) || isMoment);
  for (int row = startRow; row <= std::min(endRow, MonthRows); ++row) {
    const int month = rule.span.MonthOfRow(row);
    const int first =
        month == event.StartMonth ? event.StartDay - 1 : rule.columns.RowDayOffset[row];
    const bool ends = month == event.EndMonth;
    int last = ends ? event.EndDay : rule.columns.RowLastColumn[row];
    if (ends && coversLastDay) ++last;
    if (first != last) visit(Segment{row, first, last});
  }
}

}  // namespace velkor
