// span/Duplicates.h: sorting of string lists.
#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <vector>

#include "values/Text.h"

namespace velkor::Duplicates {

/// Below, at or above 0 as the first text stands before, with or after the second one.
using TextOrder = std::function<int(std::string_view, std::string_view)>;

/// Sorts entries `low` to `high` (both included, within the list) in place, in case-insensitive
/// text order unless told otherwise. Entries that stand with one another may change places, always
/// in the same way: lists are shown in the order that this quicksort (pivot in the middle) gives
/// them. Its work grows as n log n but for lists made to defeat it.
void SortStrings(std::vector<std::string>& list, int low, int high,
                 const TextOrder& order = CompareText);

}  // namespace velkor::Duplicates
