// calendar/ics/write/IcsEventEdit.h: makes a change to one event of a file, property by property.
#pragma once

#include <cstddef>
#include <string>

#include "calendar/CalendarItem.h"
#include "calendar/ics/read/IcsDocument.h"

namespace velkor {

/// The text of an event with a change made; what the change does not name stays, byte for byte.
/// @param index  of the event among those of the document; one of the appointment's
/// @param after  the appointment with the change made and its time of saving
std::string EventWithChange(const IcsDocument& document, const IcsAppointment& appointment,
                            std::size_t index, const CalendarItem& after, const ItemChange& change,
                            const IcsLimits& limits);

}  // namespace velkor
