// hosts/yearplan/window/CalendarRows.h: what the pane tells of the calendars of a set.
#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

#include "calendar/set/SetCalendar.h"
#include "hosts/yearplan/window/CalendarRow.h"

namespace velkor {

class WindowSync;

/// In the set's order.
/// @param refused  how many edits of a calendar its server has refused
std::vector<CalendarRow> RowsOf(const SetCalendar& calendar, const WindowSync& sync,
                                const std::function<std::size_t(const std::string&)>& refused);

}  // namespace velkor
