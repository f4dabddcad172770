// calendar/ics/write/IcsEditor.cpp: an edit as pieces of the text that others take the place of.
#include "calendar/ics/write/IcsEditor.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/write/IcsEditing.h"
#include "calendar/ics/write/IcsEventEdit.h"
#include "calendar/ics/write/IcsNewEvent.h"
#include "calendar/ics/write/IcsReadBack.h"
#include "values/NameList.h"

namespace velkor {
namespace {

IcsEdit Added(std::string_view bytes, const std::string& name, const CalendarItem& item,
              bool reminder, const std::string& uid, const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  IcsDocument document(bytes, name, limits, ignored, {.entryId = {}, .uid = uid});
  if (document.Scan().lastCalendarCancels) {
    FailToEdit("The calendar file " + name +
               " cancels its appointments (METHOD:CANCEL), a new one too; nothing was saved.");
  }
  const std::size_t place = document.Scan().lastCalendarEnd.value_or(bytes.size());
  const std::string lineEnd = LineEndAt(bytes, place);
  const std::string lead = place > 0 && bytes[place - 1] != '\n' ? lineEnd : "";
  const std::string text = NewEvent(document, item, reminder, uid, lineEnd);

  IcsEdit edit;
  edit.bytes = WithSplices(bytes, {{place, place, lead + text}});
  CalendarItem wanted = item;
  wanted.entryId = EntryIdOfUid(uid);
  const std::size_t begin = place + lead.size();
  const IcsComponent component{
      "VEVENT", begin, begin + text.size(), 1, document.Scan().calendars - 1, false, false};
  edit.item = ReadBack(document, edit.bytes, component, {}, wanted, name, limits);
  // Another event without END, or without a line end after it, may have another text now.
  edit.movesOthers = !lead.empty() || HasUnfinished(document);
  return edit;
}

/// Older revisions that a change would no longer let be known as such: they go with what they are
/// revisions of.
std::vector<const IcsComponent*> LostRevisions(const IcsDocument& document,
                                               const IcsAppointment& appointment,
                                               const CalendarItem& after,
                                               const ItemChange& change) {
  const IcsEvent& event = document.Events()[appointment.main];
  const WallSeconds start = change.SetsTimes() ? after.start.Seconds() : event.start.Local();
  const std::string& subject = change.subject ? *change.subject : event.fields.subject;
  std::vector<const IcsComponent*> lost;
  for (const std::size_t index : appointment.hidden) {
    const IcsEvent& hidden = document.Events()[index];
    // Those that are known by their moment stay so.
    if (event.recurrenceId || hidden.recurrenceId) continue;
    if (hidden.fields.subject == subject || hidden.start.Local() == start) continue;
    lost.push_back(hidden.component);
  }
  return lost;
}

/// What is not set stays as the file has it, which may be newer than what the caller has.
CalendarItem WithSet(CalendarItem item, const CalendarItem& after, const ItemChange& change) {
  if (change.subject) item.fields.subject = after.fields.subject;
  if (change.location) item.fields.location = after.fields.location;
  if (change.body) item.fields.body = after.fields.body;
  if (change.categories) item.fields.categories = after.fields.categories;
  if (change.SetsTimes()) {
    item.fields.allDay = after.fields.allDay;
    item.start = after.start;
    item.end = after.end;
  }
  return item;
}

IcsEdit Changed(std::string_view bytes, const std::string& name, const CalendarItem& after,
                const ItemChange& change, const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  IcsDocument document(bytes, name, limits, ignored, {.entryId = after.entryId, .uid = {}});
  const IcsAppointment& appointment = FindAppointment(document, name, after.entryId);
  const IcsEvent& event = document.Events()[appointment.main];
  if (event.IsRecurring() && !event.recurrenceId && change.SetsTimes()) {
    FailToEdit("The appointment \"" + after.fields.subject + "\" recurs in the calendar file " +
               name + "; its times cannot be changed.");
  }
  std::string text =
      EventWithChange(document, appointment, appointment.main, after, change, limits);
  IcsComponent component = *event.component;
  component.end = component.begin + text.size();
  std::vector<Splice> splices{{event.component->begin, event.component->end, std::move(text)}};
  for (const IcsComponent* gone : LostRevisions(document, appointment, after, change)) {
    splices.push_back({gone->begin, gone->end, ""});
    if (gone->begin > event.component->begin) continue;
    component.begin -= gone->end - gone->begin;
    component.end -= gone->end - gone->begin;
  }
  IcsEdit edit;
  edit.bytes = WithSplices(bytes, std::move(splices));
  IcsItemBuilder items({}, limits, ignored);
  edit.item = ReadBack(document, edit.bytes, component, document.ChangedOf(appointment),
                       WithSet(items.Bare(event, {}, after.entryId), after, change), name, limits);
  if (appointment.sharesUid || !appointment.hidden.empty()) {
    const IcsDocument next(edit.bytes, name, limits, ignored, document.Selection());
    if (IdsOf(next) != IdsOf(document)) {
      FailToEdit("The appointment \"" + after.fields.subject +
                 "\" shares its UID with another one in the calendar file " + name +
                 ", which would be lost; nothing was saved.");
    }
  }
  return edit;
}

IcsEdit Recategorised(std::string_view bytes, const std::string& name,
                      const IcsCategoryChange& change, Date now, const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  const IcsDocument document(bytes, name, limits, ignored);
  std::vector<AppointmentFields> wanted;
  for (const IcsEvent& event : document.Events()) wanted.push_back(event.fields);
  std::vector<Splice> splices;
  const auto replace = [&](const IcsAppointment& appointment, std::size_t index) {
    std::vector<std::string>& names = wanted[index].categories;
    const std::vector<std::string> before =
        std::exchange(names, WithNameReplaced(names, change.from, change.to));
    if (names == before) return;
    CalendarItem after;
    after.fields = wanted[index];
    after.lastModified = now;
    ItemChange set;
    set.categories = names;
    const IcsComponent& component = *document.Events()[index].component;
    splices.push_back({component.begin, component.end,
                       EventWithChange(document, appointment, index, after, set, limits)});
  };
  for (const IcsAppointment& appointment : document.Appointments()) {
    replace(appointment, appointment.main);
    for (const std::size_t index : appointment.changed) replace(appointment, index);
  }
  IcsEdit edit;
  edit.bytes = WithSplices(bytes, std::move(splices));
  const IcsDocument next(edit.bytes, name, limits, ignored);
  const bool same =
      IdsOf(next) == IdsOf(document) &&
      std::equal(wanted.begin(), wanted.end(), next.Events().begin(), next.Events().end(),
                 [](const AppointmentFields& fields, const IcsEvent& event) {
                   return fields == event.fields;
                 });
  if (!same) {
    FailToEdit("The category \"" + std::string(change.to) +
               "\" cannot be written into the calendar " + "file " + name +
               "; no appointment was changed.");
  }
  return edit;
}

IcsEdit Deleted(std::string_view bytes, const std::string& name, const std::string& entryId,
                const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  const IcsDocument document(bytes, name, limits, ignored, {.entryId = entryId, .uid = {}});
  const IcsAppointment& appointment = FindAppointment(document, name, entryId);
  std::vector<std::size_t> gone{appointment.main};
  gone.insert(gone.end(), appointment.changed.begin(), appointment.changed.end());
  gone.insert(gone.end(), appointment.hidden.begin(), appointment.hidden.end());
  std::vector<Splice> splices;
  for (const std::size_t index : gone) {
    const IcsComponent& component = *document.Events()[index].component;
    splices.push_back({component.begin, component.end, ""});
  }
  IcsEdit edit;
  edit.bytes = WithSplices(bytes, std::move(splices));
  // Another one may move up: of equal texts, of copies that name one identifier, of one UID. A
  // component without END reaches further now.
  const bool knownByUid = entryId == EntryIdOfUid(document.Events()[appointment.main].uid);
  edit.movesOthers = appointment.sharesUid || !knownByUid || HasUnfinished(document);
  return edit;
}

}  // namespace

IcsEdit AddToIcs(std::string_view bytes, const std::string& name, const CalendarItem& item,
                 bool reminder, const std::string& uid, const IcsLimits& limits) {
  return InFormOf(bytes, name, limits, [&](std::string_view text) {
    return Added(text, name, item, reminder, uid, limits);
  });
}

IcsEdit ChangeInIcs(std::string_view bytes, const std::string& name, const CalendarItem& after,
                    const ItemChange& change, const IcsLimits& limits) {
  return InFormOf(bytes, name, limits, [&](std::string_view text) {
    return Changed(text, name, after, change, limits);
  });
}

std::string ReplaceCategoryInIcs(std::string_view bytes, const std::string& name,
                                 const IcsCategoryChange& change, Date now,
                                 const IcsLimits& limits) {
  return InFormOf(
             bytes, name, limits,
             [&](std::string_view text) { return Recategorised(text, name, change, now, limits); })
      .bytes;
}

IcsEdit DeleteFromIcs(std::string_view bytes, const std::string& name, const std::string& entryId,
                      const IcsLimits& limits) {
  return InFormOf(bytes, name, limits,
                  [&](std::string_view text) { return Deleted(text, name, entryId, limits); });
}

}  // namespace velkor
