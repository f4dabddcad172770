// model/CategoryTable.cpp: the category names with their colours, and which one colours an event.
#include "model/CategoryTable.h"

#include <limits>

#include "support/values/Error.h"
#include "support/values/Text.h"

namespace velkor {

CategoryTable::CategoryTable(std::vector<Category> categories)
    : categories_(std::move(categories)) {
  if (categories_.size() > std::numeric_limits<std::int16_t>::max()) {
    throw Error(errors::Overflow, "There are too many categories");
  }
  std::int16_t index = 0;
  for (const Category& category : categories_) indexByName_.emplace(category.name, ++index);
}

std::int16_t CategoryTable::CatIndexOf(std::string_view categories, std::string_view separator,
                                       bool hideNonCategoryItems) const {
  const bool none = hideNonCategoryItems || categories_.empty();
  std::int16_t result = none ? std::int16_t{-1} : static_cast<std::int16_t>(categories_.size());
  ForEachPiece(categories, separator, [&](std::string_view piece) {
    const auto found = indexByName_.find(Trim(piece));
    if (found == indexByName_.end()) return true;
    result = found->second;
    return false;
  });
  return result;
}

}  // namespace velkor
