// model/YearSource.h: gives the export the years that it asks for.
#pragma once

#include <functional>
#include <memory>
#include <optional>
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
  /// is no such year. A year without a cache file is refreshed first. The displayed year stays what
  /// it is. Throws Error, which names a year that cannot be refreshed or read.
  /// @param goesOn  asked while it waits
  /// @return no collection when that answered false
  virtual std::optional<EventCollection> EventsOf(int viewYear,
                                                  const std::function<bool()>& goesOn) = 0;
  /// The item behind an EventID. Throws Error when there is none.
  virtual std::unique_ptr<OutlookItem> ItemOf(std::string_view eventId) = 0;
  /// Stops tmrBackground, before several years are read.
  virtual void BeginReadingYears() = 0;
  /// Loads the displayed year again and lets tmrBackground run.
  virtual void EndReadingYears() = 0;
};

}  // namespace velkor
