// model/EventView.h: the events on show, as those see them who bring in or take out some.
#pragma once

#include <functional>

namespace velkor {

class CategoryFilter;
class EventCollection;
struct EventFields;

/// Implemented by the control, which outlives everything that it hands itself to.
class EventView {
 public:
  virtual ~EventView() = default;
  virtual const EventCollection& Events() const = 0;
  /// What fills the derived fields of an event of the displayed year.
  virtual EventFields Fields() const = 0;
  virtual const CategoryFilter& Filter() const = 0;
  /// Lets `change` alter the events, then lays the year out and draws it.
  virtual void ChangeEvents(const std::function<void(EventCollection&)>& change) = 0;
  /// Replaces the events by those of the cache file, lays the year out and draws it.
  virtual void ReloadEvents() = 0;
  /// Writes the cache file from the events; a failure starts a forced refresh.
  virtual void RewriteCache() = 0;
  /// Reads the categories from the calendar's colour record again; others than those on show are
  /// laid out and drawn.
  /// @return false when they could not be read, which the user was told
  virtual bool ReloadCategories() = 0;
};

}  // namespace velkor
