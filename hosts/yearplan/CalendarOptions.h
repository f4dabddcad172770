// hosts/yearplan/CalendarOptions.h: what a planner of this program tells its calendars.
#pragma once

#include <string>

#include "calendar/set/SetCalendar.h"

namespace velkor {

/// The private data folder is asked for by a set only. Throws Error when that cannot be used.
SetCalendarOptions OptionsFor(const std::string& calendar);

}  // namespace velkor
