// span/CategoryFilter.cpp: filter state and the filter test.
#include "span/CategoryFilter.h"

#include <cstddef>
#include <cstdint>

#include "values/Text.h"

namespace velkor {
namespace {

/// Counts down as names are met, each the first time only. Few names take no memory.
class NamesToMeet {
 public:
  explicit NamesToMeet(std::size_t count) : left_(count), many_(count > FewNames ? count : 0) {}

  /// @return whether all have been met
  bool Meet(std::size_t index) {
    if (!Mark(index)) --left_;
    return left_ == 0;
  }

 private:
  static constexpr std::size_t FewNames = 64;

  /// @return whether it was marked already
  bool Mark(std::size_t index) {
    if (!many_.empty()) {
      const bool marked = many_[index];
      many_[index] = true;
      return marked;
    }
    const std::uint64_t bit = std::uint64_t{1} << index;
    const bool marked = (few_ & bit) != 0;
    few_ |= bit;
    return marked;
  }

  std::size_t left_;
  std::uint64_t few_ = 0;
  std::vector<bool> many_;
};

}  // namespace

std::string CategorySeparator(std::string_view listSeparator) {
  return std::string(listSeparator) + " ";
}

void CategoryFilter::SetCategoryFilter(std::string text) {
  entries_ = Split(text, separator_);
  names_ = NameSet(entries_);
  display_ = text;
  text_ = std::move(text);
}

void CategoryFilter::SetFilterMode(bool matchAll) {
  matchAll_ = matchAll;
  display_ = Replace(text_, separator_, matchAll ? " AND " : " OR ");
}

std::string CategoryFilter::ToolTip() const {
  return text_.empty() ? "Click to define a filter" : "Active Filter: " + GetCategoryFilterText();
}

bool CategoryFilter::HasAny(std::string_view categories) const {
  return !ForEachPiece(categories, separator_, [&](std::string_view piece) {
    return names_.IndexOf(Trim(piece)) == names_.Count();
  });
}

bool CategoryFilter::HasAll(std::string_view categories) const {
  // Each name takes a piece of its own, so a text with too little room for them holds not all.
  if (categories.size() < (names_.Count() - 1) * separator_.size()) return false;
  NamesToMeet names(names_.Count());
  return !ForEachPiece(categories, separator_, [&](std::string_view piece) {
    const std::size_t index = names_.IndexOf(Trim(piece));
    return index == names_.Count() || !names.Meet(index);
  });
}

bool CategoryFilter::IsFilteredOut(std::string_view categories) const {
  if (text_.empty()) return false;
  if (categories.empty()) return true;
  return matchAll_ ? !HasAll(categories) : !HasAny(categories);
}

}  // namespace velkor
