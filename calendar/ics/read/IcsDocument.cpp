// calendar/ics/read/IcsDocument.cpp: from text to events and appointments.
#include "calendar/ics/read/IcsDocument.h"

#include <libical/ical.h>

#include <algorithm>
#include <utility>

#include "calendar/ics/read/IcsLines.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

bool IsEvent(const IcsComponent& component) {
  return component.name == "VEVENT";
}

/// What an event is called, read without anything else of it.
struct EventNames {
  const IcsComponent* component = nullptr;
  std::string uid;
  std::string entryId;
};

EventNames NamesOf(const IcsComponent& component, const IcsFile& file) {
  EventNames names{&component, {}, {}};
  IcsLines lines(file.bytes, component.begin, component.end, component.line,
                 file.limits.lineLength);
  IcsLine line;
  int depth = 0;
  while (lines.Next(line)) {
    constexpr std::string_view Initials = "BbEeUuXx";
    if (line.tooLong || line.text.empty() || Initials.find(line.text.front()) == Initials.npos)
      continue;
    const auto property = ReadProperty(line);
    if (!property) continue;
    if (property->Is("BEGIN")) {
      ++depth;
    } else if (property->Is("END")) {
      --depth;
    } else if (depth == 1 && property->Is("UID")) {
      names.uid = std::string(Trim(property->value));
    } else if (depth == 1 && property->Is("X-VELKOR-ENTRY-ID")) {
      names.entryId = std::string(Trim(property->value));
    }
  }
  return names;
}

/// The UID that an appointment is known by. None when one of its events names an identifier itself:
/// whether that one counts depends on all other events.
std::optional<std::string> UidBehind(const std::string& entryId,
                                     const std::vector<EventNames>& events) {
  std::optional<std::string> uid;
  for (const EventNames& names : events) {
    if (names.entryId == entryId) return std::nullopt;
    if (!uid && !names.uid.empty() && EntryIdOfUid(names.uid) == entryId) uid = names.uid;
  }
  const auto namesItself = [&](const EventNames& names) {
    return names.uid == uid && !names.entryId.empty();
  };
  if (std::any_of(events.begin(), events.end(), namesItself)) return std::nullopt;
  return uid;
}

bool HasBareReturn(std::string_view text) {
  for (std::size_t at = 0; (at = text.find('\r', at)) != std::string_view::npos; ++at) {
    if (at + 1 < text.size() && text[at + 1] != '\n' && text[at + 1] != '\r') return true;
  }
  return false;
}

}  // namespace

IcsDocument::IcsDocument(std::string_view bytes, const std::string& name, const IcsLimits& limits,
                         Diagnostics& diagnostics, IcsSelection selection, IcsZoneStore* zones)
    : bytes_(bytes), selection_(std::move(selection)) {
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
    fail(HasBareReturn(bytes) ? "holds no calendar: CR ends some of its lines and LF others."
                              : "holds no calendar.");
  }
  if (!zones) ownZones_ = std::make_unique<IcsZoneStore>();
  zones_ =
      std::make_unique<IcsZones>(bytes, scan_, limits, diagnostics, zones ? *zones : *ownZones_);
  ReadEvents({bytes, *zones_, limits, diagnostics});
  appointments_ = GroupIcsEvents(bytes, events_, diagnostics);
}

void IcsDocument::ReadEvents(const IcsFile& file) {
  const bool selects = selection_.entryId || selection_.uid;
  std::vector<EventNames> names;
  for (const IcsComponent& component : scan_.components) {
    if (!IsEvent(component)) continue;
    names.push_back(selects ? NamesOf(component, file) : EventNames{&component, {}, {}});
  }
  if (selection_.entryId && !selection_.uid) {
    selection_.uid = UidBehind(*selection_.entryId, names);
  }
  for (const EventNames& one : names) {
    if (selection_.uid && one.uid != *selection_.uid) continue;
    if (auto event = ReadIcsEvent(*one.component, file)) events_.push_back(std::move(*event));
  }
}

std::vector<const IcsEvent*> IcsDocument::ChangedOf(const IcsAppointment& appointment) const {
  std::vector<const IcsEvent*> changed;
  for (const std::size_t index : appointment.changed) changed.push_back(&events_[index]);
  return changed;
}

}  // namespace velkor
