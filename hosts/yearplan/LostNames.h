// hosts/yearplan/LostNames.h: category names that were saved as question marks.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

class CalendarFolder;

/// Versions that kept their texts in code page 1252 saved the first colours of a calendar with "?"
/// for every letter that the page lacks. Such a list is used as it stands, and changed by nobody
/// but its user.
/// @return a sentence about the names of a title's list that stand for categories of the calendar
///         so; empty when there are none
std::string RemarkOnLostNames(const CalendarFolder& folder, std::string_view titleName);

}  // namespace velkor
