// calendar/ics/write/IcsEditor.h: adds, changes and deletes appointments in the text of a calendar
// file. The bytes are edited by hand, since the file is not only ours: other programs keep it, and
// people look at what changed in it. So a save touches the lines that it is about and not one byte
// else. A library that reads a file into objects and writes them out again folds all lines anew,
// orders parameters and properties its own way, gives every line one kind of end and every text
// one encoding, and drops what it does not know: lines that break the rules, properties and time
// zones of other programs, a component without its END.
#pragma once

#include <string>
#include <string_view>

#include "calendar/CalendarItem.h"
#include "calendar/ics/read/IcsLimits.h"

namespace velkor {

struct IcsEdit {
  /// The whole file.
  std::string bytes;
  /// The appointment as the file now says; without the occurrences of a recurring one.
  CalendarItem item;
  /// Appointments that were not touched may be known by other identifiers now, or read otherwise.
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

/// A category and the one that takes its place.
struct IcsCategoryChange {
  std::string_view from;
  std::string_view to;
};

/// Changes the category of every appointment that carries it, and of every changed occurrence that
/// does by itself; identifiers stay as they are. Work grows with the text, however many there are.
/// @param now  local time of saving
/// @return the text; the same where nothing carries it
std::string ReplaceCategoryInIcs(std::string_view bytes, const std::string& name,
                                 const IcsCategoryChange& change, Date now,
                                 const IcsLimits& limits = {});

/// Takes an appointment out with its changed occurrences and older revisions.
IcsEdit DeleteFromIcs(std::string_view bytes, const std::string& name, const std::string& entryId,
                      const IcsLimits& limits = {});

}  // namespace velkor
