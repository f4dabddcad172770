// view/span/Duplicates.h: sorting of string lists.
#pragma once

#include <string>
#include <vector>

namespace velkor::Duplicates {

/// Sorts entries `low` to `high` (both included, within the list) in place, in case-insensitive
/// text order. Entries that differ in case alone may change places.
void SortStrings(std::vector<std::string>& list, int low, int high);

}  // namespace velkor::Duplicates
