// calendar/IcsDocument.h: an iCalendar text taken apart into its events and appointments.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/Diagnostics.h"
#include "calendar/IcsAppointments.h"
#include "calendar/IcsEvent.h"
#include "calendar/IcsLimits.h"
#include "calendar/IcsScanner.h"
#include "calendar/IcsZones.h"

namespace velkor {

class IcsDocument {
 public:
  /// @param name  of the file, for messages
  /// Text, limits and diagnostics outlive this. Throws Error (CalendarFailed) for a text that is
  /// too large or holds no calendar.
  IcsDocument(std::string_view bytes, const std::string& name, const IcsLimits& limits,
              Diagnostics& diagnostics);
  IcsDocument(const IcsDocument&) = delete;
  IcsDocument& operator=(const IcsDocument&) = delete;

  std::string_view Bytes() const { return bytes_; }
  const IcsScan& Scan() const { return scan_; }
  IcsZones& Zones() { return *zones_; }
  const IcsZone& FloatingZone() const { return zones_->FloatingZone(); }
  const IcsZone& UtcZone() const { return zones_->UtcZone(); }
  const std::vector<IcsEvent>& Events() const { return events_; }
  const std::vector<IcsAppointment>& Appointments() const { return appointments_; }
  std::vector<const IcsEvent*> ChangedOf(const IcsAppointment& appointment) const;

 private:
  std::string_view bytes_;
  IcsScan scan_;
  std::unique_ptr<IcsZones> zones_;
  std::vector<IcsEvent> events_;
  std::vector<IcsAppointment> appointments_;
};

}  // namespace velkor
