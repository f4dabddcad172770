// calendar/ics/write/IcsReadBack.h: reads what was written as the next reader will, before it is
// saved.
#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarItem.h"
#include "calendar/ics/read/IcsDocument.h"

namespace velkor {

/// The appointment as the file says after an edit.
/// @param document   of the text before
/// @param bytes      the text after; `component` is where the event stands in it
/// @param changed    the changed occurrences of a recurring one
/// @param wanted     what was to be written
/// @param name       of the file, for messages
/// Throws Error (CalendarFailed) when the event is not `wanted`, or when it would reach further
/// than its own text.
CalendarItem ReadBack(IcsDocument& document, std::string_view bytes, const IcsComponent& component,
                      const std::vector<const IcsEvent*>& changed, const CalendarItem& wanted,
                      const std::string& name, const IcsLimits& limits);

}  // namespace velkor
