// tests/categories/StoredFilterTest.cpp: the filter of each planner title, stored and read back.
#include "categories/StoredFilter.h"

#include <gtest/gtest.h>

#include "platform/headless/MemorySettings.h"

namespace velkor {
namespace {

TEST(StoredFilter, EachTitleFindsItsOwnFilterAgain) {
  MemorySettings settings;
  const std::string names = "\"Holiday\"; R&D, 🏖; O'Brien";
  SaveFilter(settings, "Team", names, true);
  SaveFilter(settings, "", "Work", false);
  EXPECT_EQ(settings.Values(), (std::map<MemorySettings::Key, std::string>{
                                   {{"Year Planner", "Filtering Team", "Active"}, names},
                                   {{"Year Planner", "Filtering Team", "UsingAND"}, "True"},
                                   {{"Year Planner", "Filtering ", "Active"}, "Work"},
                                   {{"Year Planner", "Filtering ", "UsingAND"}, "False"}}));
  const CategoryFilter filter = LoadFilter(settings, "Team", "; ");
  EXPECT_EQ(filter.GetCategoryFilter(), names);
  EXPECT_EQ(filter.ToolTip(), "Active Filter: \"Holiday\" AND R&D, 🏖 AND O'Brien");
  EXPECT_FALSE(LoadFilter(settings, "", "; ").GetFilterMode());
  EXPECT_EQ(LoadFilter(settings, "team", "; ").GetCategoryFilter(), "");
}

TEST(StoredFilter, OnlyExactWordsMeanNoFilterAndAllMode) {
  struct Case {
    std::string active, mode, text;
    bool matchAll;
  };
  for (const Case& c : {Case{"", "True", "", true}, Case{"False", "true", "", false},
                        Case{"false", "-1", "false", false}, Case{"True", "", "True", false}}) {
    MemorySettings settings;
    settings.Save("Year Planner", "Filtering T", "Active", c.active);
    settings.Save("Year Planner", "Filtering T", "UsingAND", c.mode);
    const CategoryFilter filter = LoadFilter(settings, "T", ", ");
    EXPECT_EQ(filter.GetCategoryFilter(), c.text) << c.active;
    EXPECT_EQ(filter.GetFilterMode(), c.matchAll) << c.mode;
  }
}

}  // namespace
}  // namespace velkor
