// hosts/yearplan/SetColours.h: the colours of bars as a set wants them.
#pragma once

#include "calendar/set/SetCalendar.h"
#include "view/EventColour.h"

namespace velkor {

/// Those of the calendars that the events are of; null where the set wants those of the categories.
/// @param calendar  outlives the answer
EventColour ColoursOf(const SetCalendar& calendar);

}  // namespace velkor
