// view/span/CategoryFilter.cpp: filter state and the filter test.
#include "view/span/CategoryFilter.h"

#include <algorithm>

#include "support/values/Text.h"

namespace velkor {

std::string CategorySeparator(std::string_view listSeparator) {
  return std::string(listSeparator) + " ";
}

void CategoryFilter::SetCategoryFilter(std::string text) {
  entries_ = Split(text, separator_);
  display_ = text;
  text_ = std::move(text);
}

void CategoryFilter::SetFilterMode(bool matchAll) {
  matchAll_ = matchAll;
  display_ = Replace(text_, separator_, matchAll ? " AND " : " OR ");
}

std::string CategoryFilter::ToolTip() const {
  return text_.empty() ? "Click to define a filter" : "Active Filter: " + display_;
}

bool CategoryFilter::HasPiece(std::string_view categories, std::string_view entry) const {
  return !ForEachPiece(categories, separator_,
                       [&](std::string_view piece) { return Trim(piece) != entry; });
}

bool CategoryFilter::IsFilteredOut(std::string_view categories) const {
  if (text_.empty()) return false;
  if (categories.empty()) return true;
  const auto carried = [&](const std::string& entry) { return HasPiece(categories, entry); };
  if (matchAll_) return !std::all_of(entries_.begin(), entries_.end(), carried);
  return ForEachPiece(categories, separator_, [&](std::string_view piece) {
    return std::find(entries_.begin(), entries_.end(), Trim(piece)) == entries_.end();
  });
}

}  // namespace velkor
