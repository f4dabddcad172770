// model/EventFields.cpp: derives an event's position and category from its dates and texts.
#include "model/EventFields.h"

namespace velkor {

void EventFields::Derive(CalEvent& event) const {
  const auto start = columns.CellOf(event.StartDate);
  event.StartMonth = start ? span.MonthOfRow(start->row) : span.MonthIndexOf(event.StartDate);
  event.StartDay = static_cast<std::int16_t>(start ? start->column : 0);
  // The end is exclusive: an event that ends at midnight covers the day before.
  const auto end = columns.CellOf(event.EndDate);
  event.EndMonth = end ? span.MonthOfRow(end->row) : span.MonthIndexOf(event.EndDate);
  event.EndDay = static_cast<std::int16_t>(end ? end->column - 1 : 0);
  event.CatIndex = categories.CatIndexOf(event.Categories, separator, hideNonCategoryItems);
  event.Band = 0;
}

}  // namespace velkor
