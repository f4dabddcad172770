// tests/model/CategoryTableTest.cpp: none, and as many as an index counts.
#include "model/CategoryTable.h"

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(CategoryTable, AnEmptyOneShowsNothingAndTheLastIndexIs32767) {
  EXPECT_EQ(CategoryTable().CatIndexOf("Leave", ", ", false), -1);
  const CategoryTable full(std::vector<Category>(32767, {"n", {}}));
  EXPECT_EQ(full.CatIndexOf("unknown", ", ", false), 32767);
}

}  // namespace
}  // namespace velkor
