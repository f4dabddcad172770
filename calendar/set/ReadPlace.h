// calendar/set/ReadPlace.h: reads one calendar of a set from where it lies, or from its last good
// copy.
#pragma once

#include <string>
#include <vector>

#include "calendar/ics/read/IcsParser.h"
#include "calendar/set/CalendarSet.h"

namespace velkor {

struct PlaceFolders {
  /// As PrivateDataFolder gives it.
  std::string data = {};
  /// Where the last good copies of files are kept; empty: nowhere.
  std::string copies = {};
};

/// @param cacheFolder  as PrivateCacheFolder gives it
std::string CopiesFolderOf(const std::string& cacheFolder);

/// Reads a calendar of a set, a background one with ten years more on either side of the window. A
/// file that was read is copied, so that its appointments do not vanish when its drive is away or
/// another program broke it: then the copy is read, and `trouble` says why. Throws Error when there
/// is none, too.
ParsedCalendar ReadPlace(const SetSource& source, const PlaceFolders& folders,
                         const DateWindow& window);

/// The calendars of a set whose appointments a year shows, each place once.
std::vector<const SetSource*> ShownSources(const CalendarSet& set);

}  // namespace velkor
