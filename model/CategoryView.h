// model/CategoryView.h: shows the categories on show to those who change them.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/CategoryTable.h"

namespace velkor {

/// Implemented by the control, which outlives everything that it hands itself to.
class CategoryView {
 public:
  virtual ~CategoryView() = default;
  virtual const CategoryTable& Categories() const = 0;
  /// Names the colour record that the categories are kept in.
  virtual const std::string& TitleOfCategories() const = 0;
  /// A property of the control: the last category takes no events but its own.
  virtual bool HideNonCategoryItems() const = 0;
  /// Whether the categories are those of the calendar. When they could not be read at start-up they
  /// are read again; a failure is told, and what is on show must not be saved over them.
  virtual bool AreCategoriesKnown() = 0;
  /// Replaces the categories: every event finds its own anew, and the year is laid out and drawn.
  virtual void ChangeCategories(std::vector<Category> categories) = 0;

  /// Whether an event on show carries a category of this name.
  virtual bool IsCarried(std::string_view category) const = 0;
  /// The events on show that carry a category carry another one instead.
  virtual void RenameOnShow(std::string_view from, std::string_view to) = 0;
};

}  // namespace velkor
