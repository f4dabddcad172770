// calendar/ics/write/IcsEditor.cpp: which properties a save touches, and how times are written.
#include "calendar/ics/write/IcsEditor.h"

#include <algorithm>
#include <functional>
#include <set>
#include <utility>
#include <vector>

#include "calendar/ics/read/IcsDocument.h"
#include "calendar/ics/read/IcsOccurrences.h"
#include "calendar/ics/read/IcsPlainText.h"
#include "calendar/ics/write/IcsComponentEdit.h"
#include "calendar/ics/write/IcsText.h"
#include "values/Error.h"
#include "values/NameList.h"

namespace velkor {
namespace {

[[noreturn]] void Fail(const std::string& what) {
  throw Error(errors::CalendarFailed, what, "Calendar");
}

/// Seconds of Greenwich's clock.
WallSeconds ToUtc(WallSeconds local, const IcsDocument& document) {
  const WallSeconds utc = document.FloatingZone().ToUtc(local);
  if (!IsInCalendar(utc)) Fail("A date of the appointment lies outside the years 100 to 9999.");
  return utc;
}

/// What a local time shows once it was written on Greenwich's clock: itself, but for one that the
/// clock skips.
WallSeconds AsShown(Date local, const IcsDocument& document) {
  return document.UtcZone().ToLocal(ToUtc(local.Seconds(), document));
}

std::string UtcText(Date local, const IcsDocument& document) {
  return TimeValue(ToUtc(local.Seconds(), document), true);
}

/// Parameters, with their semicolons, and the value.
struct TimeText {
  std::string parameters;
  std::string value;
};

class EventEditor {
 public:
  /// @param index  of the appointment's event that is changed
  EventEditor(const IcsDocument& document, const IcsAppointment& appointment, std::size_t index,
              const IcsLimits& limits)
      : document_(document),
        appointment_(appointment),
        event_(document.Events()[index]),
        encoding_(document.Scan().encoding),
        edit_(document.Bytes(), *event_.component, limits) {}

  std::string Text(const CalendarItem& after, const ItemChange& change) {
    if (change.subject) SetText("SUMMARY", after.fields.subject);
    if (change.location) SetText("LOCATION", after.fields.location);
    if (change.body) SetText("DESCRIPTION", after.fields.body);
    if (change.categories) SetCategories(after.fields.categories);
    if (change.SetsTimes()) SetTimes(after);
    if (change.reminder) SetReminder(*change.reminder);
    const std::string now = UtcText(after.lastModified, document_);
    edit_.Set("DTSTAMP", "", now);
    edit_.Set("LAST-MODIFIED", "", now);
    const bool isMain = &event_ == &document_.Events()[appointment_.main];
    const bool knownByUid = appointment_.entryId == EntryIdOfUid(event_.uid);
    if (isMain && !knownByUid && event_.entryId != appointment_.entryId) {
      edit_.Set("X-VELKOR-ENTRY-ID", "", appointment_.entryId);
    }
    return edit_.Text();
  }

 private:
  void SetText(std::string_view name, const std::string& text) {
    if (text.empty()) {
      edit_.Remove(name);
      return;
    }
    edit_.Set(name, TextParameters(name), EncodeText(TextValue(text), encoding_));
  }

  /// Without those that say of the old text what is not true of the new one.
  std::string TextParameters(std::string_view name) const {
    return edit_.ParametersWithout(name, {"ALTREP", "ENCODING", "QUOTED-PRINTABLE", "CHARSET"});
  }

  void SetCategories(const std::vector<std::string>& names) {
    edit_.KeepFirst("CATEGORIES");
    if (names.empty()) {
      edit_.Remove("CATEGORIES");
    } else {
      edit_.Set("CATEGORIES", TextParameters("CATEGORIES"),
                EncodeText(TextListValue(names), encoding_));
    }
  }

  void SetTimes(const CalendarItem& after) {
    const bool allDay = after.fields.allDay;
    const bool otherKind = allDay != event_.start.isDate;
    bool floats = event_.start.zone == &document_.FloatingZone();
    if (otherKind || event_.start.Local() != after.start.Seconds()) {
      const TimeText start = TimeTextFor("DTSTART", event_.start, after.start, allDay);
      edit_.Set("DTSTART", start.parameters, start.value);
      floats = floats && !start.value.ends_with('Z');
    }
    SetEnd(after, otherKind, floats);
    if (edit_.Has("X-MICROSOFT-CDO-ALLDAYEVENT")) {
      edit_.Set("X-MICROSOFT-CDO-ALLDAYEVENT", "", allDay ? "TRUE" : "FALSE");
    }
    // Among events that share a UID the number says which of them are older revisions.
    if (!appointment_.sharesUid) {
      edit_.Set("SEQUENCE", "", std::to_string(NextSequence()));
    }
  }

  long long NextSequence() const {
    constexpr long long Largest = 2'147'483'647;
    return std::clamp(event_.sequence.value_or(0), 0LL, Largest - 1) + 1;
  }

  /// @param floats  whether the start, as it is written now, is on no particular clock
  void SetEnd(const CalendarItem& after, bool otherKind, bool floats) {
    const bool allDay = after.fields.allDay;
    if (!allDay && after.end == after.start) {
      edit_.Remove("DTEND");
      edit_.Remove("DURATION");
      return;
    }
    if (edit_.Has("DURATION") && !edit_.Has("DTEND")) {
      const bool countsByClock = allDay || floats;
      const std::int64_t seconds =
          countsByClock ? after.end.Seconds() - after.start.Seconds()
                        : std::max<std::int64_t>(ToUtc(after.end.Seconds(), document_) -
                                                     ToUtc(after.start.Seconds(), document_),
                                                 0);
      const auto& before = event_.duration;
      // Days are the clock's, of which some are shorter or longer.
      const bool same = before && (countsByClock || before->days == 0) &&
                        before->days * SecondsPerDay + before->seconds == seconds;
      if (!same || otherKind) {
        edit_.Set("DURATION", edit_.ParametersWithout("DURATION", {}),
                  DurationValue(seconds, allDay));
      }
      return;
    }
    const bool same = event_.end && event_.end->isDate == allDay &&
                      event_.end->Local() == after.end.Seconds() && !otherKind;
    if (same) return;
    const TimeText end = event_.end ? TimeTextFor("DTEND", *event_.end, after.end, allDay)
                                    : TimeTextFor("DTSTART", event_.start, after.end, allDay);
    edit_.Set("DTEND", end.parameters, end.value);
  }

  /// A time in the form that a property has now: on the clock of its zone where that is known,
  /// floating where it is floating, else UTC.
  TimeText TimeTextFor(std::string_view property, const IcsTime& before, Date local, bool isDate) {
    const std::string others = edit_.ParametersWithout(property, {"VALUE", "TZID"});
    const WallSeconds wall = local.Seconds();
    if (isDate) return {others + ";VALUE=DATE", DateValue(wall)};
    const std::string tzid = edit_.ParameterOf(property, "TZID");
    const bool floats = before.zone == &document_.FloatingZone();
    if (!before.isDate && floats && tzid.empty()) return {others, TimeValue(wall, false)};
    if (!before.isDate && !floats && before.zone != &document_.UtcZone() && !tzid.empty()) {
      if (const auto inZone = before.zone->FromLocal(wall)) {
        return {others + tzid, TimeValue(*inZone, false)};
      }
    }
    return {others, TimeValue(ToUtc(wall, document_), true)};
  }

  void SetReminder(bool set) {
    if (!set) {
      edit_.RemoveComponents("VALARM");
    } else if (!edit_.HasComponent("VALARM")) {
      edit_.AddComponent({"BEGIN:VALARM", "ACTION:DISPLAY", "DESCRIPTION:Reminder",
                          "TRIGGER:-PT15M", "END:VALARM"});
    }
  }

  const IcsDocument& document_;
  const IcsAppointment& appointment_;
  const IcsEvent& event_;
  IcsEncoding encoding_;
  IcsComponentEdit edit_;
};

const IcsAppointment& Find(const IcsDocument& document, const std::string& name,
                           const std::string& entryId) {
  for (const IcsAppointment& appointment : document.Appointments()) {
    if (appointment.entryId == entryId) return appointment;
  }
  Fail("The appointment is no longer in the calendar file " + name +
       "; another program has changed it.");
}

std::set<std::string> IdsOf(const IcsDocument& document) {
  std::set<std::string> ids;
  for (const IcsAppointment& appointment : document.Appointments()) ids.insert(appointment.entryId);
  return ids;
}

/// A stretch of the text and what comes in its place.
struct Splice {
  std::size_t begin = 0;
  std::size_t end = 0;
  std::string text;
};

std::string WithSplices(std::string_view bytes, std::vector<Splice> splices) {
  std::sort(splices.begin(), splices.end(),
            [](const Splice& a, const Splice& b) { return a.begin < b.begin; });
  std::string result;
  std::size_t at = 0;
  for (const Splice& splice : splices) {
    result.append(bytes.substr(at, splice.begin - at)).append(splice.text);
    at = splice.end;
  }
  return result.append(bytes.substr(at));
}

/// The event as the next reading will find it at this place. Throws when that is not what was to be
/// written, or when it would reach further than its own text.
CalendarItem ReadBack(IcsDocument& document, const std::string& bytes,
                      const IcsComponent& component, const std::vector<const IcsEvent*>& changed,
                      const CalendarItem& wanted, const std::string& name,
                      const IcsLimits& limits) {
  const auto refuse = [&] {
    Fail("The appointment \"" + wanted.fields.subject + "\" cannot be written into the calendar " +
         "file " + name + " as it is; nothing was saved.");
  };
  if (component.end - component.begin > limits.componentSize) refuse();
  Diagnostics ignored(name, 1);
  const std::string_view text =
      std::string_view(bytes).substr(component.begin, component.end - component.begin);
  const IcsScan alone = ScanIcs(text, limits, ignored);
  if (alone.components.size() != 1 || alone.components[0].begin != 0 ||
      alone.components[0].end != text.size() ||
      alone.components[0].unfinished != component.unfinished) {
    refuse();
  }
  const IcsFile file{bytes, document.Zones(), limits, ignored};
  const auto event = ReadIcsEvent(component, file);
  if (!event) refuse();
  IcsItemBuilder items({}, limits, ignored);
  CalendarItem item = items.Bare(*event, changed, wanted.entryId);
  if (item.fields.allDay != wanted.fields.allDay || item.recurring != wanted.recurring) refuse();
  const auto shows = [&](Date written, Date set) {
    return written.Seconds() == set.Seconds() || written.Seconds() == AsShown(set, document);
  };
  if (!shows(item.start, wanted.start) || !shows(item.end, wanted.end)) refuse();
  return item;
}

void CheckFields(const AppointmentFields& written, const AppointmentFields& wanted,
                 const std::string& name) {
  const bool same = written.subject == wanted.subject && written.location == wanted.location &&
                    written.body == wanted.body && written.categories == wanted.categories;
  if (!same) {
    Fail("A text of the appointment \"" + wanted.subject + "\" cannot be kept in the calendar " +
         "file " + name + "; nothing was saved.");
  }
}

bool HasUnfinished(const IcsDocument& document) {
  const auto& components = document.Scan().components;
  return std::any_of(components.begin(), components.end(),
                     [](const IcsComponent& one) { return one.unfinished; });
}

/// The line end before a place; where there is none, the first one of the text.
std::string LineEndAt(std::string_view bytes, std::size_t place) {
  std::size_t at = place;
  if (at == 0 || bytes[at - 1] != '\n') {
    const std::size_t first = bytes.find('\n');
    if (first == std::string_view::npos) return "\r\n";
    at = first + 1;
  }
  return at >= 2 && bytes[at - 2] == '\r' ? "\r\n" : "\n";
}

IcsEdit Added(std::string_view bytes, const std::string& name, const CalendarItem& item,
              bool reminder, const std::string& uid, const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  IcsDocument document(bytes, name, limits, ignored, {.entryId = {}, .uid = uid});
  const IcsEncoding encoding = document.Scan().encoding;
  if (document.Scan().lastCalendarCancels) {
    Fail("The calendar file " + name +
         " cancels its appointments (METHOD:CANCEL), a new one too; nothing was saved.");
  }
  const std::size_t place = document.Scan().lastCalendarEnd.value_or(bytes.size());
  const std::string lineEnd = LineEndAt(bytes, place);

  std::string text;
  const auto add = [&](const std::string& line) {
    text += FoldLine(EncodeText(line, encoding), lineEnd);
  };
  const std::string now = UtcText(item.lastModified, document);
  const auto time = [&](const std::string& property, Date local) {
    add(item.fields.allDay ? property + ";VALUE=DATE:" + DateValue(local.Seconds())
                           : property + ":" + UtcText(local, document));
  };
  add("BEGIN:VEVENT");
  const std::size_t lead = place > 0 && bytes[place - 1] != '\n' ? lineEnd.size() : 0;
  add("UID:" + uid);
  add("DTSTAMP:" + now);
  add("LAST-MODIFIED:" + now);
  time("DTSTART", item.start);
  if (item.end != item.start) time("DTEND", item.end);
  const AppointmentFields& fields = item.fields;
  if (!fields.subject.empty()) add("SUMMARY:" + TextValue(fields.subject));
  if (!fields.location.empty()) add("LOCATION:" + TextValue(fields.location));
  if (!fields.body.empty()) add("DESCRIPTION:" + TextValue(fields.body));
  if (!fields.categories.empty()) add("CATEGORIES:" + TextListValue(fields.categories));
  if (item.messageClass != CalendarItem{}.messageClass) {
    add("X-VELKOR-MESSAGE-CLASS:" + TextValue(item.messageClass));
  }
  if (reminder) {
    for (const char* line : {"BEGIN:VALARM", "ACTION:DISPLAY", "DESCRIPTION:Reminder",
                             "TRIGGER:-PT15M", "END:VALARM"}) {
      add(line);
    }
  }
  add("END:VEVENT");

  IcsEdit edit;
  const std::string before = lead > 0 ? lineEnd : "";
  edit.bytes = WithSplices(bytes, {{place, place, before + text}});
  CalendarItem wanted = item;
  wanted.entryId = EntryIdOfUid(uid);
  const IcsComponent component{
      "VEVENT", place + lead, place + lead + text.size(), 1, document.Scan().calendars - 1,
      false,    false};
  edit.item = ReadBack(document, edit.bytes, component, {}, wanted, name, limits);
  CheckFields(edit.item.fields, fields, name);
  // Another event without END, or without a line end after it, may have another text now.
  edit.movesOthers = lead > 0 || HasUnfinished(document);
  return edit;
}

IcsEdit Changed(std::string_view bytes, const std::string& name, const CalendarItem& after,
                const ItemChange& change, const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  IcsDocument document(bytes, name, limits, ignored, {.entryId = after.entryId, .uid = {}});
  const IcsAppointment& appointment = Find(document, name, after.entryId);
  const IcsEvent& event = document.Events()[appointment.main];
  if (event.IsRecurring() && !event.recurrenceId && change.SetsTimes()) {
    Fail("The appointment \"" + after.fields.subject + "\" recurs in the calendar file " + name +
         "; its times cannot be changed.");
  }
  const IcsComponent& old = *event.component;
  std::string text =
      EventEditor(document, appointment, appointment.main, limits).Text(after, change);
  IcsComponent component = old;
  component.end = old.begin + text.size();
  std::vector<Splice> splices{{old.begin, old.end, std::move(text)}};

  // An older revision that would no longer be known as one goes with what it is a revision of.
  const WallSeconds start = change.SetsTimes() ? after.start.Seconds() : event.start.Local();
  const std::string& subject = change.subject ? *change.subject : event.fields.subject;
  for (const std::size_t index : appointment.hidden) {
    const IcsEvent& hidden = document.Events()[index];
    // Those that are known by their moment stay so.
    if (event.recurrenceId || hidden.recurrenceId) continue;
    if (hidden.fields.subject == subject || hidden.start.Local() == start) continue;
    const IcsComponent& gone = *hidden.component;
    splices.push_back({gone.begin, gone.end, ""});
    if (gone.begin < old.begin) {
      component.begin -= gone.end - gone.begin;
      component.end -= gone.end - gone.begin;
    }
  }
  IcsEdit edit;
  edit.bytes = WithSplices(bytes, std::move(splices));
  // What is not set stays as the file has it, which may be newer than what the caller has.
  IcsItemBuilder items({}, limits, ignored);
  CalendarItem wanted = items.Bare(event, {}, after.entryId);
  if (change.subject) wanted.fields.subject = after.fields.subject;
  if (change.location) wanted.fields.location = after.fields.location;
  if (change.body) wanted.fields.body = after.fields.body;
  if (change.categories) wanted.fields.categories = after.fields.categories;
  if (change.SetsTimes()) {
    wanted.fields.allDay = after.fields.allDay;
    wanted.start = after.start;
    wanted.end = after.end;
  }
  edit.item = ReadBack(document, edit.bytes, component, document.ChangedOf(appointment), wanted,
                       name, limits);
  CheckFields(edit.item.fields, wanted.fields, name);
  if (appointment.sharesUid || !appointment.hidden.empty()) {
    const IcsDocument next(edit.bytes, name, limits, ignored, document.Selection());
    if (IdsOf(next) != IdsOf(document)) {
      Fail("The appointment \"" + after.fields.subject +
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
                       EventEditor(document, appointment, index, limits).Text(after, set)});
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
    Fail("The category \"" + std::string(change.to) + "\" cannot be written into the calendar " +
         "file " + name + "; no appointment was changed.");
  }
  return edit;
}

IcsEdit Deleted(std::string_view bytes, const std::string& name, const std::string& entryId,
                const IcsLimits& limits) {
  Diagnostics ignored(name, 1);
  const IcsDocument document(bytes, name, limits, ignored, {.entryId = entryId, .uid = {}});
  const IcsAppointment& appointment = Find(document, name, entryId);
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

/// What `edit` makes of the file's plain text, in the form of the file.
IcsEdit InFormOf(std::string_view bytes, const std::string& name, const IcsLimits& limits,
                 const std::function<IcsEdit(std::string_view text)>& edit) {
  const IcsPlainText plain(bytes, name);
  IcsEdit made = edit(plain.Text());
  const bool tooLarge = made.bytes.size() > limits.fileSize;
  made.bytes = plain.WithText(std::move(made.bytes));
  if (tooLarge || made.bytes.size() > limits.fileSize) {
    Fail("The calendar file " + name + " would be larger than " +
         std::to_string(limits.fileSize >> 20) + " MiB; nothing was saved.");
  }
  return made;
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
