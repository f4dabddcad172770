// calendar/mirror/ObjectText.cpp: an object's appointment by the reader of calendar files.
#include "calendar/mirror/ObjectText.h"

#include <algorithm>
#include <functional>

#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/ics/read/IcsLines.h"
#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/read/IcsPlainText.h"
#include "calendar/ics/write/IcsComponentEdit.h"
#include "values/DateDigits.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr std::int64_t EpochDistance = std::int64_t{25569} * SecondsPerDay;

void WithDocument(std::string_view bytes, const IcsLimits& limits,
                  const std::function<void(const IcsDocument&)>& use) {
  try {
    const std::string name = "object";
    Diagnostics ignored(name, 1);
    const IcsPlainText plain(bytes, name);
    use(IcsDocument(plain.Text(), name, limits, ignored));
  } catch (const Error&) {
    // No calendar: it says nothing.
  }
}

std::string Joined(const std::vector<std::string>& names) {
  std::string text;
  for (const std::string& name : names) text.append(text.empty() ? "" : ", ").append(name);
  return text;
}

std::string DayWords(const DateFields& day) {
  return Digits(day.year, 4) + "-" + Digits(day.month, 2) + "-" + Digits(day.day, 2);
}

std::string MomentWords(Date date) {
  const DateFields fields = date.Fields();
  return DayWords(fields) + " " + Digits(fields.hour, 2) + ":" + Digits(fields.minute, 2);
}

std::string TimeWords(const CalendarItem& item) {
  if (!item.fields.allDay) return MomentWords(item.start) + " to " + MomentWords(item.end);
  const std::string first = DayWords(item.start.Fields());
  const std::string last = DayWords(item.end.AddDays(-1).Fields());
  return first == last ? first : first + " to " + last;
}

}  // namespace

const IcsAppointment* MainOf(const IcsDocument& document) {
  const auto& all = document.Appointments();
  const auto known = std::find_if(all.begin(), all.end(), [&](const IcsAppointment& one) {
    return one.entryId == EntryIdOfUid(document.Events()[one.main].uid);
  });
  return known != all.end() ? &*known : all.empty() ? nullptr : &all.front();
}

std::optional<ObjectAppointment> ReadObject(std::string_view bytes) {
  std::optional<ObjectAppointment> result;
  const IcsLimits limits;
  WithDocument(bytes, limits, [&](const IcsDocument& document) {
    const IcsAppointment* main = MainOf(document);
    if (!main) return;
    const IcsEvent& event = document.Events()[main->main];
    Diagnostics ignored({}, 1);
    ObjectAppointment found;
    found.uid = event.uid;
    found.item =
        IcsItemBuilder({}, limits, ignored).Bare(event, document.ChangedOf(*main), main->entryId);
    found.reminder =
        IcsComponentEdit(document.Bytes(), *event.component, limits).HasComponent("VALARM");
    if (event.modified) {
      found.modified = event.modified->zone->ToUtc(event.modified->wall) - EpochDistance;
    }
    result = std::move(found);
  });
  return result;
}

std::string UidOfObject(std::string_view bytes) {
  // Without the dates and zones of the event, of which there may be many thousands.
  const IcsLimits limits;
  Diagnostics ignored({}, 1);
  for (const IcsComponent& component : ScanIcs(bytes, limits, ignored).components) {
    if (component.name != "VEVENT") continue;
    IcsLines lines(bytes, component.begin, component.end, component.line, limits.lineLength);
    IcsLine line;
    for (int depth = 0; lines.Next(line);) {
      const auto property = line.tooLong ? std::nullopt : ReadProperty(line);
      if (!property) continue;
      depth += property->Is("BEGIN") ? 1 : property->Is("END") ? -1 : 0;
      if (depth == 1 && property->Is("UID")) return std::string(Trim(property->value));
    }
    return {};
  }
  return {};
}

bool HasSame(ItemField field, const ObjectAppointment& a, const ObjectAppointment& b) {
  const AppointmentFields& one = a.item.fields;
  const AppointmentFields& other = b.item.fields;
  switch (field) {
    case ItemField::Subject:
      return one.subject == other.subject;
    case ItemField::Categories:
      return one.categories == other.categories;
    case ItemField::Location:
      return one.location == other.location;
    case ItemField::Body:
      return one.body == other.body;
    case ItemField::Times:
      return a.item.start == b.item.start && a.item.end == b.item.end && one.allDay == other.allDay;
    case ItemField::Reminder:
      return a.reminder == b.reminder;
  }
  return true;
}

std::vector<ItemField> FieldsOf(const ItemChange& change) {
  std::vector<ItemField> fields;
  if (change.subject) fields.push_back(ItemField::Subject);
  if (change.categories) fields.push_back(ItemField::Categories);
  if (change.location) fields.push_back(ItemField::Location);
  if (change.body) fields.push_back(ItemField::Body);
  if (change.SetsTimes()) fields.push_back(ItemField::Times);
  if (change.reminder) fields.push_back(ItemField::Reminder);
  return fields;
}

void SetField(ItemChange& change, ItemField field, const ObjectAppointment& from) {
  const AppointmentFields& fields = from.item.fields;
  switch (field) {
    case ItemField::Subject:
      change.subject = fields.subject;
      break;
    case ItemField::Categories:
      change.categories = fields.categories;
      break;
    case ItemField::Location:
      change.location = fields.location;
      break;
    case ItemField::Body:
      change.body = fields.body;
      break;
    case ItemField::Times:
      change.start = from.item.start;
      change.end = from.item.end;
      change.allDay = fields.allDay;
      break;
    case ItemField::Reminder:
      change.reminder = from.reminder;
      break;
  }
}

std::string WordsOf(ItemField field, const ObjectAppointment& appointment) {
  const AppointmentFields& fields = appointment.item.fields;
  switch (field) {
    case ItemField::Subject:
      return fields.subject;
    case ItemField::Categories:
      return Joined(fields.categories);
    case ItemField::Location:
      return fields.location;
    case ItemField::Body:
      return fields.body;
    case ItemField::Times:
      return TimeWords(appointment.item);
    case ItemField::Reminder:
      return appointment.reminder ? "on" : "off";
  }
  return {};
}

std::int64_t UnixTime(Date local) {
  return IcsZone(IcsZone::Floating{}).ToUtc(local.Seconds()) - EpochDistance;
}

Date LocalTime(std::int64_t unixTime) {
  constexpr std::int64_t Margin = 2 * SecondsPerDay;
  const std::int64_t known =
      std::clamp(unixTime, FirstWall - EpochDistance + Margin, LastWall - EpochDistance - Margin);
  return Date::FromSeconds(IcsZone(IcsZone::Utc{}).ToLocal(known + EpochDistance));
}

}  // namespace velkor
