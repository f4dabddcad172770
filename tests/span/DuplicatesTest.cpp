// tests/span/DuplicatesTest.cpp: ranges without a pair, and lists that are long.
#include "span/Duplicates.h"

#include <gtest/gtest.h>

#include <algorithm>

#include "values/Text.h"

namespace velkor {
namespace {

using List = std::vector<std::string>;

bool InOrder(const List& list) {
  return std::is_sorted(list.begin(), list.end(), [](const std::string& a, const std::string& b) {
    return CompareText(a, b) < 0;
  });
}

TEST(Duplicates, NothingHappensToAnEmptyRange) {
  List list;
  Duplicates::SortStrings(list, 0, -1);
  list = {"b", "a"};
  Duplicates::SortStrings(list, 1, 1);
  Duplicates::SortStrings(list, 1, 0);
  EXPECT_EQ(list, (List{"b", "a"}));
}

TEST(Duplicates, LongListsOfAdverseOrderAreSortedOnAShortStack) {
  List equal(100'000, "Same");
  Duplicates::SortStrings(equal, 0, static_cast<int>(equal.size()) - 1);
  EXPECT_TRUE(InOrder(equal));

  // Each partition takes off little more than one entry.
  constexpr int Half = 3000;
  List pipe;
  for (int i = 0; i < 2 * Half; ++i) {
    pipe.push_back(std::to_string(100'000 + std::min(i, 2 * Half - 1 - i)));
  }
  Duplicates::SortStrings(pipe, 0, 2 * Half - 1);
  EXPECT_TRUE(InOrder(pipe));
}

}  // namespace
}  // namespace velkor
