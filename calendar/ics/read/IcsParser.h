// calendar/ics/read/IcsParser.h: turns iCalendar text into the items of one calendar.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsLimits.h"

namespace velkor {

struct ParsedCalendar {
  /// The calendar's own name, else the file's without folder and ".ics".
  std::string name;
  /// In the order of the file; times are local wall-clock times of the system's zone.
  std::vector<CalendarItem> items;
  std::vector<Diagnostic> diagnostics;
  /// Why an earlier copy was read in place of the calendar; empty for none.
  std::string trouble = {};
};

/// Reads all calendars of a text as one. Recurring items get those occurrences that touch `window`.
/// Identifiers are 32 hexadecimal digits, the same for the same text. The work grows as n log n,
/// recurrence rules within their limits.
/// @param name  of the file, for messages
/// Throws Error (CalendarFailed) for a text that is too large or holds no calendar.
ParsedCalendar ParseIcs(std::string_view bytes, const std::string& name, const DateWindow& window,
                        const IcsLimits& limits = {});

/// Reads a file as ParseIcs does, in this process, once what a stopped save left of it is finished.
/// Throws Error (CalendarFailed) that names the file for whatever keeps it from being read, want of
/// memory too.
/// @param path  UTF-8
ParsedCalendar ParseIcsFile(const std::string& path, const DateWindow& window);

}  // namespace velkor
