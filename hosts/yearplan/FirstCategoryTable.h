// hosts/yearplan/FirstCategoryTable.h: a category table for a calendar that holds no colours yet.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "model/CategoryTable.h"

namespace velkor {

/// The most frequent categories of a calendar, at most 14, each with a colour that people with any
/// kind of colour vision can tell from the others; "Other" is the last entry.
/// @param categoryTexts  the Categories text of each event
/// @param separator      what joins the names in it
CategoryTable MakeFirstCategoryTable(const std::vector<std::string>& categoryTexts,
                                     std::string_view separator);

}  // namespace velkor
