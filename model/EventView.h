// model/EventView.h: hands the events on show to those who bring in or take out some.
#pragma once

#include <functional>

namespace velkor {

class CategoryFilter;
class EventCollection;
struct EventFields;

/// Given by the control; what it refers to outlives everything that it is handed to.
struct EventView {
  const EventCollection& events;
  const CategoryFilter& filter;
  /// What fills the derived fields of an event of the displayed year.
  std::function<EventFields()> fields;
  /// Has the events altered, then lays the year out and draws it.
  std::function<void(const std::function<void(EventCollection&)>& alter)> change;
  /// Replaces the events by those of the cache file, lays the year out and draws it.
  std::function<void()> reload;
  /// Writes the cache file from the events; a failure starts a forced refresh.
  std::function<void()> rewriteCache;
  /// Reads the categories from the calendar's colour record again; others than those on show are
  /// laid out and drawn.
  /// @return false when they could not be read, which the user was told
  std::function<bool()> reloadCategories;
};

}  // namespace velkor
