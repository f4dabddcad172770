// model/YearSource.h: years of the calendar on show, as those read them who take several.
#pragma once

#include <memory>
#include <string_view>

#include "model/CategoryTable.h"
#include "model/EventCollection.h"

namespace velkor {

class CategoryFilter;
class OutlookItem;

/// Implemented by the control, which outlives everything that it hands itself to.
class YearSource {
 public:
  virtual ~YearSource() = default;
  virtual int DisplayedYear() const = 0;
  virtual const CategoryTable& Categories() const = 0;
  virtual const CategoryFilter& Filter() const = 0;
  /// The events of a view year as its cache file has them, their fields derived; none where there
  /// is no cache file, or no such year. The displayed year stays what it is. Throws Error.
  virtual EventCollection EventsOf(int viewYear) = 0;
  /// The item behind an EventID. Throws Error when there is none.
  virtual std::unique_ptr<OutlookItem> ItemOf(std::string_view eventId) = 0;
  /// Stops tmrBackground, before several years are read.
  virtual void BeginReadingYears() = 0;
  /// Loads the displayed year again and lets tmrBackground run.
  virtual void EndReadingYears() = 0;
};

}  // namespace velkor
