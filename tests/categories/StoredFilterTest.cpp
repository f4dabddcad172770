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

TEST(StoredFilter, OneThatIsStoredInPartFiltersNothing) {
  struct : MemorySettings {
    void Save(std::string_view application, std::string_view section, std::string_view key,
              std::string_view value) override {
      readOnly = !Values().empty();
      MemorySettings::Save(application, section, key, value);
    }
  } settings;
  EXPECT_THROW(SaveFilter(settings, "Team", "Work", true), Error);
  EXPECT_EQ(LoadFilter(settings, "Team", ", ").GetCategoryFilter(), "");
}

}  // namespace
}  // namespace velkor
