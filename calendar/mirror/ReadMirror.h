// calendar/mirror/ReadMirror.h: the items of a mirror with the edits that wait to be sent.
#pragma once

#include <string>

#include "calendar/CalendarFolder.h"
#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/read/IcsParser.h"

namespace velkor {

/// Reads all objects as one calendar, whose bounds hold over all of them, object by object: what is
/// wrong with one is a diagnostic that names its file, and harms no other. An item is known by the
/// name of its object; a further appointment in one object as NAME-ID, for reading only. A folder
/// that is not there is an empty calendar. Finishes what a stopped save left. Throws Error
/// (CalendarFailed) for a folder that cannot be read, and for want of memory.
/// @param folder  of a Mirror
ParsedCalendar ReadMirror(const std::string& folder, const DateWindow& window,
                          const IcsLimits& limits = {});

}  // namespace velkor
