// tests/categories/CategoryCase.h: categories on show, kept in a calendar in memory.
#pragma once

#include <string>
#include <utility>
#include <vector>

#include "categories/CategoryCommands.h"
#include "categories/ColourStore.h"
#include "model/CategoryView.h"
#include "tests/model/CalendarCase.h"
#include "values/NameList.h"

namespace velkor {

class ShownCategories : public CategoryView {
 public:
  CategoryTable table;
  std::string title = "Team";
  bool hides = false;
  /// What is asked before a change.
  std::function<bool()> known = [] { return true; };
  std::function<void()> onChange;

  const CategoryTable& Categories() const override { return table; }
  const std::string& TitleOfCategories() const override { return title; }
  bool HideNonCategoryItems() const override { return hides; }
  bool AreCategoriesKnown() override { return known(); }
  void ChangeCategories(std::vector<Category> categories) override {
    table = CategoryTable(std::move(categories));
    if (onChange) onChange();
  }
  bool IsCarried(std::string_view category) const override {
    return HasName(carried, ", ", category);
  }
  void RenameOnShow(std::string_view from, std::string_view to) override {
    carried = WithNameReplaced(carried, ", ", from, to);
  }
  /// By the events on show.
  std::string carried;
};

class CategoryCase : public CalendarCase {
 protected:
  using Names = std::vector<std::string>;

  CategoryCase() { access_.ResolveFolder(""); }

  /// Each category has its index for a colour.
  void List(const Names& names) {
    std::vector<Category> categories;
    for (const std::string& name : names) {
      categories.push_back({name, Colour{static_cast<std::int32_t>(categories.size() + 1)}});
    }
    shown_.table = CategoryTable(std::move(categories));
  }
  Names Listed() const {
    Names names;
    for (const Category& category : shown_.table.All()) names.push_back(category.name);
    return names;
  }
  /// Whether the calendar has what is on show; it must not hold anything else.
  bool IsSaved() {
    if (calendar_.AllItems().empty()) return false;
    EXPECT_EQ(colours_.Fetch(shown_.title).categories, shown_.table.All());
    return true;
  }

  ShownCategories shown_;
  ColourStore colours_{[this] { return access_.ReopenFolder(); }, seams_.locale, messages_};
  CategoryCommands commands_{shown_, colours_, platform_};
};

}  // namespace velkor
