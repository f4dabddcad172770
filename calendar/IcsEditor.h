// calendar/IcsEditor.h: the text of a calendar file with one appointment added, changed or deleted.
#pragma once

#include <string>
#include <string_view>

#include "calendar/CalendarItem.h"
#include "calendar/IcsLimits.h"

namespace velkor {

struct IcsEdit {
  /// The whole file.
  std::string bytes;
  /// The appointment as the file now says; without the occurrences of a recurring one.
  CalendarItem item;
  /// Appointments that were not touched are known by other identifiers now.
  bool movesOthers = false;
};

/// Each function changes the bytes of one appointment's components and no others. `name` is the
/// file's, for messages. Throws Error (CalendarFailed) when the text holds no calendar, when the
/// appointment is not in it, or when it cannot be written so that it reads as it should.

/// Adds an appointment at the end of the last calendar.
/// @param uid  of the new appointment, unique in the world, ASCII
IcsEdit AddToIcs(std::string_view bytes, const std::string& name, const CalendarItem& item,
                 bool reminder, const std::string& uid, const IcsLimits& limits = {});

/// Makes a change to the appointment with this identifier, whatever else it holds by now.
/// @param after  the appointment with the change made and its time of saving
IcsEdit ChangeInIcs(std::string_view bytes, const std::string& name, const CalendarItem& after,
                    const ItemChange& change, const IcsLimits& limits = {});

/// Takes an appointment out with its changed occurrences and older revisions.
IcsEdit DeleteFromIcs(std::string_view bytes, const std::string& name, const std::string& entryId,
                      const IcsLimits& limits = {});

}  // namespace velkor
