// calendar/ics/write/IcsNewEvent.h: writes the text of an event that no file has yet.
#pragma once

#include <string>

#include "calendar/CalendarItem.h"
#include "calendar/ics/read/IcsDocument.h"

namespace velkor {

/// A VEVENT in the encoding of the file, its lines folded. Times are written in UTC, dates as such.
/// @param document  where it is to stand
std::string NewEvent(const IcsDocument& document, const CalendarItem& item, bool reminder,
                     const std::string& uid, const std::string& lineEnd);

}  // namespace velkor
