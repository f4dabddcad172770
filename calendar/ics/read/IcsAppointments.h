// calendar/ics/read/IcsAppointments.h: which events of a file belong together, and their
// identifiers.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsEvent.h"

namespace velkor {

/// One appointment that is shown; numbers are indices into the events of the file.
struct IcsAppointment {
  std::string entryId;
  std::size_t main = 0;
  /// Of a recurring one: its changed occurrences, the cancelled ones too.
  std::vector<std::size_t> changed;
  /// Events that are not shown since this appointment stands for them: older revisions.
  std::vector<std::size_t> hidden;
  /// Another appointment, or one that is cancelled, has the same UID.
  bool sharesUid = false;
};

/// The appointments in the order of the file. An identifier is 32 hexadecimal digits: the one that
/// the event names itself, else one made from the UID, else, when that is taken or missing, from
/// the text of the event.
/// @param bytes  the file that the events' components stand in
std::vector<IcsAppointment> GroupIcsEvents(std::string_view bytes,
                                           const std::vector<IcsEvent>& events,
                                           Diagnostics& diagnostics);

/// The identifier of an appointment that is known by its UID.
std::string EntryIdOfUid(std::string_view uid);

/// A hash of all that an appointment shows and when; the same for the same.
std::string ContentMarkOf(const IcsEvent& main, const std::vector<const IcsEvent*>& changed);

}  // namespace velkor
