// calendar/ics/write/IcsReadBack.cpp: the event alone, then its item against what was wanted.
#include "calendar/ics/write/IcsReadBack.h"

#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/write/IcsUtcTimes.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// True for an event that ends where its text does, whatever follows.
bool StandsAlone(std::string_view bytes, const IcsComponent& component, const IcsLimits& limits) {
  if (component.end - component.begin > limits.componentSize) return false;
  Diagnostics ignored({}, 1);
  const std::string_view text = bytes.substr(component.begin, component.end - component.begin);
  const IcsScan alone = ScanIcs(text, limits, ignored);
  return alone.components.size() == 1 && alone.components[0].begin == 0 &&
         alone.components[0].end == text.size() &&
         alone.components[0].unfinished == component.unfinished;
}

bool AreTimesOf(const CalendarItem& wanted, const CalendarItem& item, const IcsDocument& document) {
  const auto shows = [&](Date written, Date set) {
    return written.Seconds() == set.Seconds() || written.Seconds() == AsShown(set, document);
  };
  return item.fields.allDay == wanted.fields.allDay && item.recurring == wanted.recurring &&
         shows(item.start, wanted.start) && shows(item.end, wanted.end);
}

bool AreTextsOf(const AppointmentFields& wanted, const AppointmentFields& written) {
  return written.subject == wanted.subject && written.location == wanted.location &&
         written.body == wanted.body && written.categories == wanted.categories;
}

}  // namespace

CalendarItem ReadBack(IcsDocument& document, std::string_view bytes, const IcsComponent& component,
                      const std::vector<const IcsEvent*>& changed, const CalendarItem& wanted,
                      const std::string& name, const IcsLimits& limits) {
  const auto refuse = [&](const std::string& what, const std::string& why) {
    throw Error(
        errors::CalendarFailed,
        what + " \"" + wanted.fields.subject + "\" cannot be " + why + "; nothing was saved.",
        "Calendar");
  };
  const auto refuseEvent = [&] {
    refuse("The appointment", "written into the calendar file " + name + " as it is");
  };
  if (!StandsAlone(bytes, component, limits)) refuseEvent();
  Diagnostics ignored(name, 1);
  const auto event = ReadIcsEvent(component, {bytes, document.Zones(), limits, ignored});
  if (!event) refuseEvent();
  IcsItemBuilder items({}, limits, ignored);
  CalendarItem item = items.Bare(*event, changed, wanted.entryId);
  if (!AreTimesOf(wanted, item, document)) refuseEvent();
  if (!AreTextsOf(wanted.fields, item.fields)) {
    refuse("A text of the appointment", "kept in the calendar file " + name);
  }
  return item;
}

}  // namespace velkor
