// calendar/set/LocalPlaces.h: where on this machine a calendar of a set is read from.
#pragma once

#include <string>

#include "calendar/set/CalendarSet.h"

namespace velkor {

/// File: its path. Address: the folder of its last good copy, with calendar.ics and state.json.
/// Server: the folder of its mirror. The folders of one address or collection are the same for all
/// sets that have it.
/// @param dataFolder  as PrivateDataFolder gives it
std::string LocalPlaceOf(const SetSource& source, const std::string& dataFolder);

/// What is read there: File: its path. Address: the copy. Server: the mirror's folder.
std::string LocalCalendarOf(const SetSource& source, const std::string& dataFolder);

/// The same for two sources of one place: kind, user and location.
std::string PlaceKeyOf(const SetSource& source);

}  // namespace velkor
