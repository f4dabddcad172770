// hosts/yearplan/OfferedColours.h: the first colours of a calendar as an unsaved item of its
// folder.
#pragma once

#include <memory>
#include <string_view>

namespace velkor {

class CalendarFolder;
class LocaleApi;
class OutlookApplication;
class OutlookFolder;

/// Throws what the calendar throws.
std::unique_ptr<OutlookFolder> DefaultCalendarOf(OutlookApplication& outlook);

/// Puts a colour record of a planner title with the calendar's first colours into the folder,
/// unless there is one. It is written with the first change to it.
/// @param outlook    over the folder's store, whose default calendar it is
/// @param separator  what joins the names of a Categories text
void OfferFirstColours(CalendarFolder& folder, OutlookApplication& outlook, LocaleApi& locale,
                       std::string_view titleName, std::string_view separator);

}  // namespace velkor
