// model/CategoryTable.cpp: the category names with their colours, and which one colours an event.
#include "model/CategoryTable.h"

#include <utility>

#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
CategoryTable::CategoryTable(std::vector<Category> categories)
    : categories_(std::move(categories)) {
  if (categories_.size() > MostCategories) {
    throw Error(errors::Overflow, "There are too many categories");
  }
  std::vector<std::string> names;
  for (const Category& category : categories_) names.push_back(category.name);
  names_ = NameSet(std::move(names));
  firstOf_.resize(names_.Count());
  for (int index = Count(); index > 0; --index) {
    firstOf_[names_.IndexOf(At(index).name)] = static_cast<std::int16_t>(index);
  }
}

std::int16_t CategoryTable::IndexOf(std::string_view name) const {
  const std::size_t known = names_.IndexOf(name);
  return known < names_.Count() ? firstOf_[known] : std::int16_t{0};
}

std::int16_t CategoryTable::CatIndexOf(std::string_view categories, std::string_view separator,
                                       bool hideNonCategoryItems) const {
  const bool none = hideNonCategoryItems || categories_.empty();
  std::int16_t result = none ? std::int16_t{-1} : static_cast<std::int16_t>(categories_.size());
  ForEachPiece(categories, separator, [&](std::string_view piece) {
    const std::int16_t index = IndexOf(Trim(piece));
    if (index == 0) return true;
    result = index;
    return false;
  });
  return result;
}

}  // namespace velkor
