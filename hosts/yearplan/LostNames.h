// hosts/yearplan/LostNames.h: category names that were saved as question marks.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

class CalendarFolder;

/// A list saved in code page 1252 has "?" for every letter that the page lacks. It is used as it
/// stands, and changed by nobody but its user.
/// @return a sentence about the names of a title's list that stand for categories of the calendar
///         so; empty when there are none
std::string RemarkOnLostNames(const CalendarFolder& folder, std::string_view titleName);

}  // namespace velkor
