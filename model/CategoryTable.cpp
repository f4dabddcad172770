// model/CategoryTable.cpp: the category names with their colours, and which one colours an event.
#include "model/CategoryTable.h"

#include <algorithm>
#include <numeric>

#include "support/values/Error.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

/// Below, at or above 0 in the order of byName_.
int CompareNames(std::string_view a, std::string_view b) {
  if (a.size() != b.size()) return a.size() < b.size() ? -1 : 1;
  return a.compare(b);
}

}  // namespace

CategoryTable::CategoryTable(std::vector<Category> categories)
    : categories_(std::move(categories)) {
  if (categories_.size() > MostCategories) {
    throw Error(errors::Overflow, "There are too many categories");
  }
  byName_.resize(categories_.size());
  std::iota(byName_.begin(), byName_.end(), std::int16_t{1});
  std::sort(byName_.begin(), byName_.end(), [&](std::int16_t a, std::int16_t b) {
    const int order = CompareNames(At(a).name, At(b).name);
    return order != 0 ? order < 0 : a < b;
  });
}

std::int16_t CategoryTable::IndexOf(std::string_view name) const {
  const auto found = std::partition_point(byName_.begin(), byName_.end(), [&](std::int16_t index) {
    return CompareNames(At(index).name, name) < 0;
  });
  return found != byName_.end() && At(*found).name == name ? *found : std::int16_t{0};
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
