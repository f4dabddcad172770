// view/span/Duplicates.h: sorting of string lists.
#pragma once

#include <string>
#include <vector>

namespace velkor::Duplicates {

/// Sorts entries `low` to `high` (both included, within the list) in place, in case-insensitive
/// text order. Entries that differ in case alone may change places, always in the same way: lists
/// are shown in the order that this quicksort (pivot in the middle) gives them. Its work grows as
/// n log n but for lists made to defeat it.
void SortStrings(std::vector<std::string>& list, int low, int high);

}  // namespace velkor::Duplicates
