// hosts/yearplan/FirstColours.h: the colours of a calendar that holds none yet, and their record.
#pragma once

#include <string>
#include <string_view>

#include "model/CategoryTable.h"

namespace velkor {

class CalendarFolder;

/// A first category table of the categories that a folder's items name and a colour list can keep.
/// @param separator  what joins the names of a Categories text
CategoryTable FirstColoursOf(const CalendarFolder& folder, std::string_view separator);

/// Puts a colour record of a planner title with those colours into the folder, unless there is one
/// of that title or in the older form. It is written with the first change to it.
void OfferFirstColours(CalendarFolder& folder, std::string_view titleName,
                       std::string_view separator);

}  // namespace velkor
