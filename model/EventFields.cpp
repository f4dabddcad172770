// model/EventFields.cpp: derives an event's position and category from its dates and texts.
#include "model/EventFields.h"

namespace velkor {
namespace {

struct Position {
  std::int32_t month;
  /// 0 outside the span.
  std::int16_t column;
};

Position PositionOf(Date date, const DisplaySpan& span, const MonthColumns& columns) {
  const std::int64_t day = date.DayNumber();
  const auto& firstDay = columns.RowFirstDay;
  if (day < firstDay[1] || day >= firstDay[MonthRows + 1]) return {span.MonthIndexOf(date), 0};
  // No month is longer than 31 days, so the guess is the row or the one before it.
  int row = 1 + static_cast<int>((day - firstDay[1]) / 31);
  if (day >= firstDay[row + 1]) ++row;
  const int column = static_cast<int>(day - firstDay[row]) + 1 + columns.RowDayOffset[row];
  return {span.MonthOfRow(row), static_cast<std::int16_t>(column)};
}

}  // namespace

void EventFields::Derive(CalEvent& event) const {
  const Position start = PositionOf(event.StartDate, span, columns);
  event.StartMonth = start.month;
  event.StartDay = start.column;
  const Position end = PositionOf(event.EndDate, span, columns);
  event.EndMonth = end.month;
  // The end is exclusive: an event that ends at midnight covers the day before.
  const bool endsInSpan = end.column != 0;
  event.EndDay = static_cast<std::int16_t>(endsInSpan ? end.column - 1 : 0);
  event.CatIndex = categories.CatIndexOf(event.Categories, separator, hideNonCategoryItems);
  event.Band = 0;
}

}  // namespace velkor
