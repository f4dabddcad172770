// tests/model/CategoryTableTest.cpp: which category colours an event.
#include "model/CategoryTable.h"

#include <gtest/gtest.h>

#include "tests/model/SampleEvents.h"

namespace velkor {
namespace {

TEST(CategoryTable, TheFirstOfTheEventsOwnNamesThatItKnowsDecides) {
  const struct {
    const char* categories;
    const char* separator;
    int shown;
    int hidden;
  } cases[] = {
      {"Unknown, Key Customer", ", ", 2, 2},
      {"leave, Leave", ", ", 3, 3},
      {"LEAVE", ", ", 4, -1},
      {"Other", ", ", 4, 4},
      {"  Leave  ,  Key Customer", ", ", 1, 1},
      {"\tLeave", ", ", 4, -1},
      {"Leave; Key Customer", ", ", 4, -1},
      {"Unknown; Key Customer", "; ", 2, 2},
  };
  const CategoryTable table = SampleCategories();
  for (const auto& [categories, separator, shown, hidden] : cases) {
    EXPECT_EQ(table.CatIndexOf(categories, separator, false), shown) << categories;
    EXPECT_EQ(table.CatIndexOf(categories, separator, true), hidden) << categories;
  }
}

TEST(CategoryTable, OfTwoEntriesOfOneNameTheFirstCounts) {
  const CategoryTable table({{"a", {}}, {"b", {}}, {"b", {}}, {"Other", {}}});
  EXPECT_EQ(table.CatIndexOf("b", ", ", false), 2);
}

TEST(CategoryTable, AnEmptyOneShowsNothingAndTheLastIndexIs32767) {
  EXPECT_EQ(CategoryTable().CatIndexOf("Leave", ", ", false), -1);
  const CategoryTable full(std::vector<Category>(32767, {"n", {}}));
  EXPECT_EQ(full.CatIndexOf("unknown", ", ", false), 32767);
}

}  // namespace
}  // namespace velkor
