// calendar/ics/read/IcsDocument.h: an iCalendar text taken apart into its events and appointments.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/ics/read/IcsEvent.h"
#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/read/IcsScanner.h"
#include "calendar/ics/read/IcsZones.h"

namespace velkor {

/// Which events of a text are taken apart; without a value in either, all of them.
struct IcsSelection {
  /// Those with the UID that the appointment with this identifier is known by; all of them when it
  /// is not known by its UID.
  std::optional<std::string> entryId;
  /// Those with this UID.
  std::optional<std::string> uid;
};

class IcsDocument {
 public:
  /// Events that belong together have one UID, so a selection leaves their identifiers as they are.
  /// @param name  of the file, for messages
  /// @param zones  that this text shares with others; null for zones of its own
  /// Text, limits, diagnostics and zones outlive this. Throws Error (CalendarFailed) for a text
  /// that is too large or holds no calendar.
  IcsDocument(std::string_view bytes, const std::string& name, const IcsLimits& limits,
              Diagnostics& diagnostics, IcsSelection selection = {}, IcsZoneStore* zones = nullptr);
  IcsDocument(const IcsDocument&) = delete;
  IcsDocument& operator=(const IcsDocument&) = delete;

  std::string_view Bytes() const { return bytes_; }
  const IcsScan& Scan() const { return scan_; }
  IcsZones& Zones() { return *zones_; }
  const IcsZone& FloatingZone() const { return zones_->FloatingZone(); }
  const IcsZone& UtcZone() const { return zones_->UtcZone(); }
  const std::vector<IcsEvent>& Events() const { return events_; }
  const std::vector<IcsAppointment>& Appointments() const { return appointments_; }
  /// With the UID filled in that an identifier led to.
  const IcsSelection& Selection() const { return selection_; }
  std::vector<const IcsEvent*> ChangedOf(const IcsAppointment& appointment) const;

 private:
  void ReadEvents(const IcsFile& file);

  std::string_view bytes_;
  IcsScan scan_;
  std::unique_ptr<IcsZoneStore> ownZones_;
  std::unique_ptr<IcsZones> zones_;
  IcsSelection selection_;
  std::vector<IcsEvent> events_;
  std::vector<IcsAppointment> appointments_;
};

}  // namespace velkor
