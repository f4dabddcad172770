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
  const DateFields fields = date.Fields();
  if (fields.year != span.YearOfMonth(fields.month)) return {span.MonthIndexOf(date), 0};
  const int column = fields.day + columns.RowDayOffset[span.RowOfMonth(fields.month)];
  return {fields.month, static_cast<std::int16_t>(column)};
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
