// categories/StoredFilter.h: the category filter that a planner title keeps between sessions.
#pragma once

#include <string>
#include <string_view>

#include "span/CategoryFilter.h"

namespace velkor {

class Settings;

/// The stored filter of a planner title; none where nothing or "False" is stored.
/// @param separator  what joins the filter's names, as CategorySeparator gives it
CategoryFilter LoadFilter(Settings& settings, std::string_view titleName, std::string separator);

/// Stores a filter; throws what the settings store throws.
/// @param text  names joined by the separator; empty is no filter
void SaveFilter(Settings& settings, std::string_view titleName, std::string_view text,
                bool matchAll);

}  // namespace velkor
