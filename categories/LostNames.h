// categories/LostNames.h: category names that were saved as question marks.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

class LocaleApi;
class OutlookFolder;

/// A list saved in code page 1252 has "?" for every letter that the page lacks. It is used as it
/// stands, and changed by nobody but its user. Throws what the calendar throws.
/// @param separator  what joins the names of a Categories text
/// @return a sentence about the names of a title's list that stand for categories of the calendar
///         so; empty when there are none
std::string RemarkOnLostNames(OutlookFolder& folder, LocaleApi& locale, std::string_view titleName,
                              std::string_view separator);

}  // namespace velkor
