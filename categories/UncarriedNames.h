// categories/UncarriedNames.h: the names of a filter that no event carries.
#pragma once

#include <iosfwd>
#include <string>
#include <string_view>
#include <vector>

#include "model/EventCollection.h"
#include "span/CategoryFilter.h"

namespace velkor {

/// A name that nothing carries was likely misspelt, which a filter itself never tells.
class UncarriedNames {
 public:
  /// The filter outlives this.
  explicit UncarriedNames(const CategoryFilter& filter)
      : filter_(filter), names_(filter.CategoryFilterList()) {}

  /// Strikes out the names that these events carry.
  void Look(const EventCollection& events);
  /// A line for each name that is left.
  /// @param years  what the events are of, as in "the year"
  void Report(std::ostream& messages, std::string_view years) const;

 private:
  const CategoryFilter& filter_;
  std::vector<std::string> names_;
};

}  // namespace velkor
