// calendar/ics/write/IcsWhole.h: takes an appointment out of one calendar file and puts it into
// another with every property that it has.
#pragma once

#include <string>
#include <string_view>

#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/write/IcsEditor.h"

namespace velkor {

/// A calendar, in UTF-8, of this one appointment: its components as they stand, with its changed
/// occurrences, its older revisions and the time zones that they name. Throws Error
/// (CalendarFailed) when the text does not hold it.
/// @param name  of the file, for messages
std::string WholeFromIcs(std::string_view bytes, const std::string& name,
                         const std::string& entryId, const IcsLimits& limits = {});

/// Adds the one appointment of a calendar at the end of the file's last calendar, and the time
/// zones that the file lacks. Lines end as those of the file do, otherwise not a byte is changed,
/// unless the file is not in UTF-8. A file that has the appointment already, just so, stays as it
/// is. Throws Error (CalendarFailed) when `whole` is not one appointment, when the file has another
/// with the same UID, or when the appointment would not read there as it does in `whole`.
IcsEdit AddWholeToIcs(std::string_view bytes, const std::string& name, std::string_view whole,
                      const IcsLimits& limits = {});

}  // namespace velkor
