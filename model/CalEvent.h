// model/CalEvent.h: one appointment as the planner sees it.
#pragma once

#include <cstdint>
#include <string>

#include "values/Date.h"

namespace velkor {

/// One occurrence of an appointment. CatIndex and the days and months are derived when it is
/// loaded and stand for as long as the display span does; Band is set by the layout. Nothing sets
/// Recurring and RowSpan.
struct CalEvent {
  /// Identifies the appointment; all its occurrences share it.
  std::string EventID;
  std::string Subject;
  /// Names joined by the list separator and one blank.
  std::string Categories;
  Date StartDate;
  /// Exclusive.
  Date EndDate;
  /// Position of its category in the category table, from 1; -1: not shown.
  std::int16_t CatIndex = -1;
  bool Recurring = false;
  /// Grid column of the first day; 0 when it lies outside the span.
  std::int16_t StartDay = 0;
  /// Grid column of the last day less 1; 0 when it lies outside the span.
  std::int16_t EndDay = 0;
  /// DisplaySpan::MonthIndexOf of the two dates.
  std::int32_t StartMonth = 0;
  std::int32_t EndMonth = 0;
  /// Band within its rows, from 2; 0: not placed.
  std::int32_t Band = 0;
  std::int16_t RowSpan = 0;
};

}  // namespace velkor
