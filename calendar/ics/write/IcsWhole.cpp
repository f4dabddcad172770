// calendar/ics/write/IcsWhole.cpp: components as they stand, their time zones, and the comparison
// of what is read on both sides.
#include "calendar/ics/write/IcsWhole.h"

#include <algorithm>
#include <optional>
#include <set>
#include <utility>
#include <vector>

#include "calendar/ics/read/IcsLines.h"
#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/read/IcsPlainText.h"
#include "calendar/ics/read/IcsValues.h"
#include "calendar/ics/write/IcsEditing.h"
#include "calendar/ics/write/IcsText.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// The component's text; what has no END gets one.
std::string TextOf(const IcsDocument& document, const IcsComponent& component) {
  std::string text(document.Bytes().substr(component.begin, component.end - component.begin));
  const std::string lineEnd = LineEndAt(document.Bytes(), component.end);
  if (!text.ends_with('\n')) text += lineEnd;
  if (component.unfinished) text += "END:" + component.name + lineEnd;
  return text;
}

/// Calls visit(property) for each property of a component and of those inside it.
template <typename Visit>
void ForEachProperty(const IcsDocument& document, const IcsComponent& component,
                     const IcsLimits& limits, const Visit& visit) {
  IcsLines lines(document.Bytes(), component.begin, component.end, component.line,
                 limits.lineLength);
  IcsLine line;
  while (lines.Next(line)) {
    if (const auto property = ReadProperty(line)) visit(*property);
  }
}

/// TZID of a definition; empty for none.
std::string ZoneNameOf(const IcsDocument& document, const IcsComponent& zone,
                       const IcsLimits& limits) {
  std::string name;
  ForEachProperty(document, zone, limits, [&](const IcsProperty& property) {
    if (name.empty() && property.Is("TZID")) name = std::string(property.value);
  });
  return name;
}

/// An appointment's events in the order of the file.
std::vector<const IcsComponent*> ComponentsOf(const IcsDocument& document,
                                              const IcsAppointment& appointment) {
  std::vector<std::size_t> events{appointment.main};
  events.insert(events.end(), appointment.changed.begin(), appointment.changed.end());
  events.insert(events.end(), appointment.hidden.begin(), appointment.hidden.end());
  std::vector<const IcsComponent*> components;
  for (const std::size_t index : events) components.push_back(document.Events()[index].component);
  std::sort(components.begin(), components.end(),
            [](const IcsComponent* a, const IcsComponent* b) { return a->begin < b->begin; });
  return components;
}

/// The definitions of the zones that an appointment names: each name's in the appointment's own
/// calendar, else the first one.
std::vector<const IcsComponent*> ZonesOf(const IcsDocument& document,
                                         const std::vector<const IcsComponent*>& events,
                                         const IcsLimits& limits) {
  std::set<std::string> wanted;
  for (const IcsComponent* event : events) {
    ForEachProperty(document, *event, limits, [&](const IcsProperty& property) {
      if (const auto name = property.Parameter("TZID")) wanted.emplace(*name);
    });
  }
  std::vector<const IcsComponent*> zones;
  for (const bool own : {true, false}) {
    for (const IcsComponent& component : document.Scan().components) {
      if (component.name != "VTIMEZONE") continue;
      if (own != (component.calendar == events.front()->calendar)) continue;
      if (wanted.erase(ZoneNameOf(document, component, limits)) > 0) zones.push_back(&component);
    }
  }
  return zones;
}

std::string MarkOf(const IcsDocument& document, const IcsAppointment& appointment) {
  return ContentMarkOf(document.Events()[appointment.main], document.ChangedOf(appointment));
}

CalendarItem ItemOf(const IcsDocument& document, const IcsAppointment& appointment,
                    const IcsLimits& limits) {
  Diagnostics ignored({}, 1);
  IcsItemBuilder items({}, limits, ignored);
  return items.Bare(document.Events()[appointment.main], document.ChangedOf(appointment),
                    appointment.entryId);
}

/// With this end of each line, in this encoding.
std::string InFormOfFile(std::string_view text, const std::string& lineEnd, IcsEncoding encoding) {
  const std::string plain = Replace(Replace(text, "\r\n", "\n"), "\n", lineEnd);
  return EncodeText(plain, encoding);
}

/// What goes into the file for an appointment: zones that it lacks, then the events.
struct Added {
  std::string text;
  bool hasZones = false;
};

Added TextFor(const IcsDocument& file, const IcsDocument& whole, const IcsLimits& limits) {
  std::set<std::string> known;
  for (const IcsComponent& component : file.Scan().components) {
    if (component.name == "VTIMEZONE") known.insert(ZoneNameOf(file, component, limits));
  }
  const auto events = ComponentsOf(whole, whole.Appointments().front());
  Added added;
  for (const IcsComponent* zone : ZonesOf(whole, events, limits)) {
    if (known.contains(ZoneNameOf(whole, *zone, limits))) continue;
    added.text += TextOf(whole, *zone);
    added.hasZones = true;
  }
  for (const IcsComponent* event : events) added.text += TextOf(whole, *event);
  return added;
}

IcsEdit WithWhole(std::string_view bytes, const std::string& name, const IcsDocument& whole,
                  const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  const IcsDocument file(bytes, name, limits, ignored);
  const IcsAppointment& wanted = whole.Appointments().front();
  const std::string& subject = whole.Events()[wanted.main].fields.subject;
  const std::string& uid = whole.Events()[wanted.main].uid;
  const std::string mark = MarkOf(whole, wanted);
  for (const IcsAppointment& there : file.Appointments()) {
    if (uid.empty() || file.Events()[there.main].uid != uid) continue;
    if (MarkOf(file, there) == mark)
      return {std::string(bytes), ItemOf(file, there, limits), false};
  }
  const bool hasUid = std::any_of(file.Events().begin(), file.Events().end(),
                                  [&](const IcsEvent& event) { return event.uid == uid; });
  if (!uid.empty() && hasUid) {
    FailToEdit("The calendar file " + name + " has another version of the appointment \"" +
               subject + "\" already; nothing was saved.");
  }
  if (file.Scan().lastCalendarCancels) {
    FailToEdit("The calendar file " + name +
               " cancels its appointments (METHOD:CANCEL), a new one too; nothing was saved.");
  }
  const std::size_t place = file.Scan().lastCalendarEnd.value_or(bytes.size());
  const std::string lineEnd = LineEndAt(bytes, place);
  const std::string lead = place > 0 && bytes[place - 1] != '\n' ? lineEnd : "";
  const Added added = TextFor(file, whole, limits);
  IcsEdit edit;
  edit.bytes = WithSplices(
      bytes, {{place, place, lead + InFormOfFile(added.text, lineEnd, file.Scan().encoding)}});
  edit.movesOthers = added.hasZones || !lead.empty() || HasUnfinished(file);

  const IcsDocument next(edit.bytes, name, limits, ignored);
  const std::set<std::string> before = IdsOf(file);
  for (const IcsAppointment& there : next.Appointments()) {
    if (before.contains(there.entryId) || MarkOf(next, there) != mark) continue;
    if (next.Appointments().size() != before.size() + 1) break;
    edit.item = ItemOf(next, there, limits);
    return edit;
  }
  FailToEdit("The appointment \"" + subject + "\" cannot be written into the calendar file " +
             name + " as it is; nothing was saved.");
}

}  // namespace

std::string WholeFromIcs(std::string_view bytes, const std::string& name,
                         const std::string& entryId, const IcsLimits& limits) {
  const IcsPlainText plain(bytes, name);
  Diagnostics ignored(name, 1);
  const IcsDocument document(plain.Text(), name, limits, ignored, {.entryId = entryId, .uid = {}});
  const auto events = ComponentsOf(document, FindAppointment(document, name, entryId));
  const std::string lineEnd = LineEndAt(plain.Text(), events.front()->end);
  std::string whole = "BEGIN:VCALENDAR" + lineEnd + "VERSION:2.0" + lineEnd +
                      "PRODID:-//OutlookVelkor//EN" + lineEnd;
  for (const IcsComponent* zone : ZonesOf(document, events, limits)) {
    whole += TextOf(document, *zone);
  }
  for (const IcsComponent* event : events) whole += TextOf(document, *event);
  whole += "END:VCALENDAR" + lineEnd;
  const bool isUtf8 = document.Scan().encoding == IcsEncoding::Utf8;
  return isUtf8 ? whole : DecodeBytes(whole);
}

IcsEdit AddWholeToIcs(std::string_view bytes, const std::string& name, std::string_view whole,
                      const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  const IcsDocument given(whole, name, limits, ignored);
  if (given.Appointments().size() != 1) {
    FailToEdit("What is to be put into the calendar file " + name + " is not one appointment.");
  }
  return InFormOf(bytes, name, limits,
                  [&](std::string_view text) { return WithWhole(text, name, given, limits); });
}

}  // namespace velkor
