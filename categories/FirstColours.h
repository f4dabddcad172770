// categories/FirstColours.h: the colours of a calendar that holds none yet.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "model/CategoryTable.h"

namespace velkor {

class LocaleApi;
class OutlookFolder;

/// The most frequent categories of a calendar, at most 14, each with a colour that people with any
/// kind of colour vision can tell from the others; "Other" is the last entry. Names that a colour
/// list cannot hold are left out.
/// @param categoryTexts  the Categories text of each event
/// @param separator      what joins the names in it
CategoryTable MakeFirstCategoryTable(const std::vector<std::string>& categoryTexts,
                                     std::string_view separator);

/// The Categories text of each item of a folder.
std::vector<std::string> CategoryTextsOf(OutlookFolder& folder);

/// The body of a colour record with the first colours of a folder; none where it has a record of
/// that planner title or one in the older form. Throws what the calendar throws.
/// @param separator  what joins the names of a Categories text
std::optional<std::string> FirstColourList(OutlookFolder& folder, LocaleApi& locale,
                                           std::string_view titleName, std::string_view separator);

}  // namespace velkor
