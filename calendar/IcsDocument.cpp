// calendar/IcsDocument.cpp: from text to events and appointments.
#include "calendar/IcsDocument.h"

#include <libical/ical.h>

#include <algorithm>

#include "support/values/Error.h"

namespace velkor {
namespace {

bool IsEvent(const IcsComponent& component) {
  return component.name == "VEVENT";
}

}  // namespace

IcsDocument::IcsDocument(std::string_view bytes, const std::string& name, const IcsLimits& limits,
                         Diagnostics& diagnostics)
    : bytes_(bytes) {
  const auto fail = [&](const std::string& what) {
    throw Error(errors::CalendarFailed, "The calendar file " + name + " " + what, "Calendar");
  };
  if (bytes.size() > limits.fileSize) {
    fail("is larger than " + std::to_string(limits.fileSize >> 20) + " MiB.");
  }
  icalerror_set_errors_are_fatal(0);
  scan_ = ScanIcs(bytes, limits, diagnostics);
  const auto& components = scan_.components;
  if (scan_.calendars == 0 && std::none_of(components.begin(), components.end(), IsEvent)) {
    fail("holds no calendar.");
  }
  zones_ = std::make_unique<IcsZones>(bytes, scan_, limits, diagnostics);
  const IcsFile file{bytes, scan_.encoding, *zones_, limits, diagnostics};
  for (const IcsComponent& component : components) {
    if (!IsEvent(component)) continue;
    if (auto event = ReadIcsEvent(component, file)) events_.push_back(std::move(*event));
  }
  appointments_ = GroupIcsEvents(bytes, events_, diagnostics);
}

std::vector<const IcsEvent*> IcsDocument::ChangedOf(const IcsAppointment& appointment) const {
  std::vector<const IcsEvent*> changed;
  for (const std::size_t index : appointment.changed) changed.push_back(&events_[index]);
  return changed;
}

}  // namespace velkor
