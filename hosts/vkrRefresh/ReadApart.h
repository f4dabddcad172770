// hosts/vkrRefresh/ReadApart.h: reads the calendars of a set in processes of their own, so that one
// that crashes, hangs or takes all memory keeps no other from being read.
#pragma once

#include <string>
#include <vector>

#include "calendar/CalendarFolder.h"
#include "calendar/set/CalendarSet.h"
#include "hosts/ProcessLimits.h"

namespace velkor {

/// What ReadPlace gives of each source, or why it gives nothing, as IcsAnswer encodes it. Each
/// takes the time allowed at most, a file half of it; once twice the time has gone by, a second
/// each.
std::vector<std::string> ReadApart(const std::vector<const SetSource*>& sources,
                                   const DateWindow& window, const ProcessLimits& limits);

}  // namespace velkor
