// tests/view/span/CategoryFilterTest.cpp: what a filter hides in both modes.
#include "view/span/CategoryFilter.h"

#include <gmock/gmock.h>

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

CategoryFilter FilterOf(const std::string& text, bool matchAll, const std::string& list = ",") {
  CategoryFilter filter(CategorySeparator(list));
  filter.SetCategoryFilter(text);
  filter.SetFilterMode(matchAll);
  return filter;
}

TEST(CategoryFilter, HidesByAnyOrByAllOfItsNames) {
  struct Case {
    std::string filter, categories;
    bool hiddenByAny, hiddenByAll;
  };
  const Case cases[] = {{"", "", false, false},
                        {"", "Work", false, false},
                        {"Work", "", true, true},
                        {"Work", " ", true, true},
                        {"Work", "Work", false, false},
                        {"Work", "work", true, true},
                        {"Work", "  Work  ", false, false},
                        {"Work", "Homework", true, true},
                        {"Work", "Home,Work", true, true},
                        {"Work", "Home, Work", false, false},
                        {"Work, Home", "Home", false, true},
                        {"Work, Home", "Home, Other, Work", false, false},
                        {"Work, Home", "Other", true, true},
                        {"Work, ", "Work", false, true},
                        {"Work, ", "Work, ", false, false},
                        // The filter's own names are not trimmed.
                        {" Work", "Work", true, true},
                        {" Work", " Work", true, true}};
  for (const Case& c : cases) {
    EXPECT_EQ(FilterOf(c.filter, false).IsFilteredOut(c.categories), c.hiddenByAny)
        << "any of [" << c.filter << "] for [" << c.categories << "]";
    EXPECT_EQ(FilterOf(c.filter, true).IsFilteredOut(c.categories), c.hiddenByAll)
        << "all of [" << c.filter << "] for [" << c.categories << "]";
  }
}

TEST(CategoryFilter, TheModeJoinsTheNamesForShowing) {
  CategoryFilter filter(CategorySeparator(";"));
  EXPECT_EQ(filter.ToolTip(), "Click to define a filter");
  filter.SetCategoryFilter("Work; Home, sweet");
  EXPECT_EQ(filter.GetCategoryFilterText(), "Work; Home, sweet");
  EXPECT_THAT(filter.CategoryFilterList(), ElementsAre("Work", "Home, sweet"));
  filter.SetFilterMode(true);
  EXPECT_EQ(filter.GetCategoryFilterText(), "Work AND Home, sweet");
  filter.SetFilterMode(false);
  EXPECT_EQ(filter.ToolTip(), "Active Filter: Work OR Home, sweet");
  EXPECT_EQ(filter.GetCategoryFilter(), "Work; Home, sweet");
  filter.SetCategoryFilter("");
  EXPECT_THAT(filter.CategoryFilterList(), IsEmpty());
  EXPECT_EQ(filter.GetCategoryFilterText(), "");
}

}  // namespace
}  // namespace velkor
