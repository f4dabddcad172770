// calendar/ics/write/IcsEventEdit.cpp: which properties a change touches, and how its times are
// written.
#include "calendar/ics/write/IcsEventEdit.h"

#include <algorithm>

#include "calendar/ics/write/IcsComponentEdit.h"
#include "calendar/ics/write/IcsText.h"
#include "calendar/ics/write/IcsUtcTimes.h"

namespace velkor {
namespace {

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
    } else if (edit_.Has("DURATION") && !edit_.Has("DTEND")) {
      SetDuration(after, otherKind, floats);
    } else if (otherKind || !event_.end || event_.end->isDate != allDay ||
               event_.end->Local() != after.end.Seconds()) {
      const TimeText end = event_.end ? TimeTextFor("DTEND", *event_.end, after.end, allDay)
                                      : TimeTextFor("DTSTART", event_.start, after.end, allDay);
      edit_.Set("DTEND", end.parameters, end.value);
    }
  }

  void SetDuration(const CalendarItem& after, bool otherKind, bool floats) {
    const bool allDay = after.fields.allDay;
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
    if (same && !otherKind) return;
    edit_.Set("DURATION", edit_.ParametersWithout("DURATION", {}), DurationValue(seconds, allDay));
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
      edit_.AddComponent(ReminderLines);
    }
  }

  const IcsDocument& document_;
  const IcsAppointment& appointment_;
  const IcsEvent& event_;
  IcsEncoding encoding_;
  IcsComponentEdit edit_;
};

}  // namespace

std::string EventWithChange(const IcsDocument& document, const IcsAppointment& appointment,
                            std::size_t index, const CalendarItem& after, const ItemChange& change,
                            const IcsLimits& limits) {
  return EventEditor(document, appointment, index, limits).Text(after, change);
}

}  // namespace velkor
