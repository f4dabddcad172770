// model/CategoryTable.h: the category names with their colours, and which one colours an event.
#pragma once

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

#include "span/NameSet.h"
#include "values/Colour.h"

namespace velkor {

struct Category {
  std::string name;
  Colour colour;

  friend bool operator==(const Category&, const Category&) = default;
};

/// Categories in their order, counted from 1; the last one takes the events that name none of
/// them.
class CategoryTable {
 public:
  /// What a 16-bit index can count.
  static constexpr std::size_t MostCategories = 32767;

  CategoryTable() = default;
  /// Throws Error (Overflow) for more categories than an index can count.
  explicit CategoryTable(std::vector<Category> categories);

  int Count() const { return static_cast<int>(categories_.size()); }
  /// `index` from 1 to Count.
  const Category& At(int index) const { return categories_[static_cast<std::size_t>(index - 1)]; }
  const std::vector<Category>& All() const { return categories_; }

  /// Index of the first category of this name; 0 for none.
  std::int16_t IndexOf(std::string_view name) const;

  /// The category that colours an event: the first of its own names that the table knows, else
  /// the last category, or -1 when `hideNonCategoryItems` is set or the table is empty.
  /// @param separator  what joins the names of `categories`
  std::int16_t CatIndexOf(std::string_view categories, std::string_view separator,
                          bool hideNonCategoryItems) const;

 private:
  std::vector<Category> categories_;
  NameSet names_;
  /// Index of the first category of each of the names.
  std::vector<std::int16_t> firstOf_;
};

}  // namespace velkor
