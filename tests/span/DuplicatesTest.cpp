// tests/span/DuplicatesTest.cpp: the sort's exact outcome, ties included.
#include "span/Duplicates.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

#include "values/Text.h"

namespace velkor {
namespace {

using List = std::vector<std::string>;

/// The quicksort as the text-books have it, with the middle entry as pivot.
void PlainQuicksort(List& list, int low, int high) {
  int left = low;
  int right = high;
  const std::string pivot = list[(low + high) / 2];
  do {
    while (CompareText(list[left], pivot) < 0) left = left + 1;
    while (CompareText(list[right], pivot) > 0) right = right - 1;
    if (left <= right) {
      list[left].swap(list[right]);
      left = left + 1;
      right = right - 1;
    }
  } while (left <= right);
  if (low < right) PlainQuicksort(list, low, right);
  if (left < high) PlainQuicksort(list, left, high);
}

bool InOrder(const List& list) {
  return std::is_sorted(list.begin(), list.end(), [](const std::string& a, const std::string& b) {
    return CompareText(a, b) < 0;
  });
}

TEST(Duplicates, TiesFallAsTheQuicksortLeavesThem) {
  std::mt19937 random(20050418);
  for (int run = 0; run < 3000; ++run) {
    List list(1 + random() % 40);
    for (std::string& text : list) {
      for (unsigned length = random() % 4; length > 0; --length) text += "aAbBzZ"[random() % 6];
    }
    const int size = static_cast<int>(list.size());
    const int low = run % 2 == 0 ? 0 : static_cast<int>(random() % list.size());
    const int high = run % 2 == 0 ? size - 1 : low + static_cast<int>(random() % (size - low));
    List expected = list;
    PlainQuicksort(expected, low, high);
    Duplicates::SortStrings(list, low, high);
    ASSERT_EQ(list, expected);
  }
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
