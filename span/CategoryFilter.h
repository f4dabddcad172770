// span/CategoryFilter.h: the category filter, and the one test of what it hides.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "span/NameSet.h"

namespace velkor {

/// What joins the names of a Categories text and of a filter: the user's list separator and one
/// blank.
std::string CategorySeparator(std::string_view listSeparator);

/// The filter of one planner. Names are compared exactly, case included.
class CategoryFilter {
 public:
  explicit CategoryFilter(std::string separator = ", ") : separator_(std::move(separator)) {}

  const std::string& FilterSeparator() const { return separator_; }

  /// Takes category names joined by FilterSeparator; an empty text is no filter.
  void SetCategoryFilter(std::string text);
  /// True: an event must carry every name of the filter; false: any one suffices.
  void SetFilterMode(bool matchAll);

  bool GetFilterMode() const { return matchAll_; }
  const std::string& GetCategoryFilter() const { return text_; }
  /// For showing: the names joined by " AND " or " OR ".
  const std::string& GetCategoryFilterText() const { return display_; }
  const std::vector<std::string>& CategoryFilterList() const { return entries_; }
  /// Tool tip of the toolbar's "Filter" button.
  std::string ToolTip() const;

  /// True when an event with this Categories text is to be hidden.
  bool IsFilteredOut(std::string_view categories) const;

 private:
  bool HasAny(std::string_view categories) const;
  bool HasAll(std::string_view categories) const;

  std::string separator_;
  std::string text_;
  std::string display_;
  std::vector<std::string> entries_;
  NameSet names_;
  bool matchAll_ = false;
};

}  // namespace velkor
