// categories/UncarriedNames.cpp: a filter's names, one by one.
#include "categories/UncarriedNames.h"

#include <algorithm>
#include <ostream>

namespace velkor {

void UncarriedNames::Look(const EventCollection& events) {
  std::erase_if(names_, [&](const std::string& name) {
    CategoryFilter alone(filter_.FilterSeparator());
    alone.SetCategoryFilter(name);
    return std::any_of(events.begin(), events.end(), [&](const CalEvent& event) {
      return !alone.IsFilteredOut(event.Categories);
    });
  });
}

void UncarriedNames::Report(std::ostream& messages, std::string_view years) const {
  for (const std::string& name : names_) {
    messages << "No event of " << years << " has the category \"" << name
             << "\" of the filter; names "
             << "are told apart by case and joined by \"" << filter_.FilterSeparator() << "\"\n";
  }
}

}  // namespace velkor
