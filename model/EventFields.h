// model/EventFields.h: derives an event's position and category from its dates and texts.
#pragma once

#include <string>

#include "model/CalEvent.h"
#include "model/CategoryTable.h"
#include "span/DisplaySpan.h"

namespace velkor {

/// What the derived fields of an event depend on; every loader derives them through it.
struct EventFields {
  DisplaySpan span;
  MonthColumns columns;
  const CategoryTable& categories;
  std::string separator = ", ";
  bool hideNonCategoryItems = false;

  /// Sets CatIndex, StartDay, EndDay, StartMonth, EndMonth and Band of an event whose dates are
  /// valid.
  void Derive(CalEvent& event) const;
};

}  // namespace velkor
