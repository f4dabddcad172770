// span/Duplicates.cpp: the quicksort that lists are sorted with.
#include "span/Duplicates.h"

#include <utility>

namespace velkor::Duplicates {

void SortStrings(std::vector<std::string>& list, int low, int high, const TextOrder& order) {
  // The two parts are independent, so the longer one can wait in the loop: the stack stays short
  // whatever the list is.
  while (low < high) {
    const std::string pivot = list[low + (high - low) / 2];
    int left = low;
    int right = high;
    while (left <= right) {
      while (order(list[left], pivot) < 0) ++left;
      while (order(pivot, list[right]) < 0) --right;
      if (left > right) break;
      std::swap(list[left], list[right]);
      ++left;
      --right;
    }
    if (right - low < high - left) {
      SortStrings(list, low, right, order);
      low = left;
    } else {
      SortStrings(list, left, high, order);
      high = right;
    }
  }
}

}  // namespace velkor::Duplicates
