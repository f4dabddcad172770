// calendar/ics/read/IcsEvent.cpp: the properties of a VEVENT and what is wrong with them.
#include "calendar/ics/read/IcsEvent.h"

#include "calendar/ics/read/IcsLines.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// Reads the properties of one VEVENT; the texts for messages come first, since any property may
/// stand before SUMMARY.
class EventReader {
 public:
  EventReader(const IcsComponent& component, const IcsFile& file)
      : component_(component), file_(file) {
    event_.component = &component;
    event_.cancelled = component.cancelled;
  }

  std::optional<IcsEvent> Read() {
    ForEachProperty([&](const IcsProperty& property) { TakeText(property); });
    ForEachProperty([&](const IcsProperty& property) { TakeTime(property); });
    if (!hasStart_) {
      if (!badStart_) Warn(event_.Line(), "there is no DTSTART; " + event_.Name() + " is left out");
      return std::nullopt;
    }
    if (event_.end && event_.duration) {
      Warn(event_.Line(), "DTEND and DURATION stand together; DTEND counts for " + event_.Name());
      event_.duration.reset();
    }
    Settle();
    return std::move(event_);
  }

 private:
  void Warn(int line, std::string text) { file_.diagnostics.Warn(line, std::move(text)); }

  /// Visits the event's own properties, not those of components inside it.
  template <typename Visit>
  void ForEachProperty(Visit&& visit) {
    IcsLines lines(file_.bytes, component_.begin, component_.end, component_.line,
                   file_.limits.lineLength);
    IcsLine line;
    int depth = 0;
    while (lines.Next(line)) {
      if (line.tooLong) continue;
      const auto property = ReadProperty(line);
      if (!property) {
        ReportNoProperty(line);
      } else if (property->Is("BEGIN")) {
        ++depth;
      } else if (property->Is("END")) {
        --depth;
      } else if (depth == 1) {
        visit(*property);
      }
    }
    linesChecked_ = true;
  }

  void ReportNoProperty(const IcsLine& line) {
    if (linesChecked_ || Trim(line.text).empty()) return;
    Warn(line.number, Quoted(line.text) + " is no property; the line is left out");
  }

  void TakeText(const IcsProperty& property) {
    AppointmentFields& fields = event_.fields;
    if (property.Is("SUMMARY")) {
      fields.subject = ReadText(property);
    } else if (property.Is("DESCRIPTION")) {
      fields.body = ReadTextLines(property);
    } else if (property.Is("LOCATION")) {
      fields.location = ReadText(property);
    } else if (property.Is("CATEGORIES")) {
      for (std::string& name : ReadTextList(property)) {
        fields.categories.push_back(std::move(name));
      }
    } else if (property.Is("UID")) {
      event_.uid = std::string(Trim(property.value));
    } else if (property.Is("SEQUENCE")) {
      event_.sequence = ParseInteger(Trim(property.value));
    } else if (property.Is("STATUS")) {
      event_.cancelled = component_.cancelled || SameName(Trim(property.value), "CANCELLED");
    } else if (property.Is("X-MICROSOFT-CDO-ALLDAYEVENT")) {
      fields.allDay = SameName(Trim(property.value), "TRUE");
    } else if (property.Is("X-VELKOR-MESSAGE-CLASS")) {
      event_.messageClass = ReadText(property);
    } else if (property.Is("X-VELKOR-ENTRY-ID")) {
      event_.entryId = std::string(Trim(property.value));
    } else if (property.Is("X-VELKOR-MOMENT")) {
      isMoment_ = SameName(Trim(property.value), "TRUE");
    }
  }

  void TakeTime(const IcsProperty& property) {
    timeParameters_.reset();
    if (property.Is("DTSTART")) {
      TakeStart(property);
    } else if (property.Is("DTEND")) {
      event_.end = Time(property, property.value, "it is taken to end where it starts");
    } else if (property.Is("DURATION")) {
      event_.duration = ReadDuration(property.value);
      if (!event_.duration) {
        Warn(property.line, "DURATION " + Quoted(property.value) + " is no duration; " +
                                event_.Name() + " is taken to end where it starts");
      }
    } else if (property.Is("RRULE")) {
      event_.rules.push_back({std::string(property.value), property.line});
    } else if (property.Is("EXRULE")) {
      event_.exceptionRules.push_back({std::string(property.value), property.line});
    } else if (property.Is("EXDATE")) {
      for (std::string_view rest = property.value; !rest.empty();) {
        const std::string_view part = TakePart(rest, ',');
        if (const auto time = Time(property, part, "it is left out")) {
          event_.exceptionDates.push_back(*time);
        }
      }
    } else if (property.Is("RDATE")) {
      for (std::string_view rest = property.value; !rest.empty();) {
        TakeAddedDate(property, TakePart(rest, ','));
      }
    } else if (property.Is("RECURRENCE-ID")) {
      TakeRecurrenceId(property);
    } else if (property.Is("LAST-MODIFIED")) {
      TakeModified(property);
    } else if (property.Is("DTSTAMP") && !event_.modified) {
      TakeModified(property);
    }
  }

  /// One that cannot be read is no loss.
  void TakeModified(const IcsProperty& property) {
    if (const auto text = ReadTimeText(property.value)) {
      event_.modified = IcsTime{false, text->wall,
                                text->isUtc ? &file_.zones.UtcZone() : &file_.zones.FloatingZone()};
    }
  }

  void TakeStart(const IcsProperty& property) {
    if (hasStart_ || badStart_) {
      Warn(property.line, "there is a second DTSTART; the first one counts for " + event_.Name());
      return;
    }
    const auto time = StartTime(property, property.value, event_.Name() + " is left out");
    hasStart_ = time.has_value();
    badStart_ = !hasStart_;
    if (time) event_.start = *time;
  }

  /// The time of an occurrence, which shows a year in range on the local clock as well.
  std::optional<IcsTime> StartTime(const IcsProperty& property, std::string_view value,
                                   const std::string& consequence) {
    const auto time = Time(property, value, consequence);
    if (time && !IsInCalendar(time->Local())) {
      Warn(property.line, std::string(property.name) + " " + Quoted(value) +
                              " is no local date between the years 100 and 9999; " + consequence);
      return std::nullopt;
    }
    return time;
  }

  void TakeAddedDate(const IcsProperty& property, std::string_view value) {
    IcsAddedDate added;
    const std::size_t slash = value.find('/');
    const auto start = StartTime(property, value.substr(0, slash), "this occurrence is left out");
    if (!start) return;
    added.start = *start;
    if (slash != std::string_view::npos) {
      const std::string_view rest = Trim(value.substr(slash + 1));
      added.duration = ReadDuration(rest);
      if (!added.duration) {
        added.end = Time(property, rest, "this occurrence is as long as the first one");
      }
    }
    event_.addedDates.push_back(added);
  }

  void TakeRecurrenceId(const IcsProperty& property) {
    event_.recurrenceId = Time(property, property.value, event_.Name() + " is shown by itself");
    const auto range = property.Parameter("RANGE");
    event_.thisAndFuture = event_.recurrenceId && range && SameName(*range, "THISANDFUTURE");
    if (range && !SameName(*range, "THISANDFUTURE")) {
      Warn(property.line, "RANGE=" + Quoted(*range) + " changes only one occurrence of " +
                              event_.Name() + " here");
    }
  }

  /// One time value of a property; `consequence` ends the report of one that cannot be read.
  std::optional<IcsTime> Time(const IcsProperty& property, std::string_view value,
                              const std::string& consequence) {
    const auto text = ReadTimeText(value);
    if (!text) {
      Warn(property.line, std::string(property.name) + " " + Quoted(value) +
                              " is no date between the years 100 and 9999; " + consequence);
      return std::nullopt;
    }
    IcsTime time;
    time.isDate = text->isDate;
    time.wall = text->wall;
    time.zone = &file_.zones.FloatingZone();
    // Some programs write a date with a time of day that does not count.
    if (ParametersOf(property).isDate) {
      time.isDate = true;
      time.wall = Date::FromSeconds(time.wall).Midnight().Seconds();
    } else if (text->isUtc) {
      time.zone = &file_.zones.UtcZone();
    } else if (!text->isDate) {
      time.zone = &ZoneOf(property);
    }
    return time;
  }

  /// Of the property that is being taken: looked up once, since a list may hold many times.
  struct TimeParameters {
    bool isDate = false;
    std::optional<std::string_view> tzid;
    const IcsZone* zone = nullptr;
  };

  TimeParameters& ParametersOf(const IcsProperty& property) {
    if (!timeParameters_) {
      const auto kind = property.Parameter("VALUE");
      timeParameters_ = {kind && SameName(*kind, "DATE"), property.Parameter("TZID"), nullptr};
    }
    return *timeParameters_;
  }

  /// Looks a zone up only when a time needs it, so that no other one is reported as unknown.
  const IcsZone& ZoneOf(const IcsProperty& property) {
    TimeParameters& parameters = ParametersOf(property);
    if (!parameters.zone) {
      parameters.zone =
          parameters.tzid ? &file_.zones.Find(component_.calendar, *parameters.tzid, property.line)
                          : &file_.zones.FloatingZone();
    }
    return *parameters.zone;
  }

  /// What lasts no time is kept on servers as one second, since some take nothing shorter.
  void SettleMoment() {
    const WallSeconds second = 1;
    if (!isMoment_ || event_.start.isDate) return;
    if (event_.end && event_.end->Local() - event_.start.Local() == second) event_.end.reset();
    const auto& duration = event_.duration;
    if (duration && duration->days == 0 && duration->seconds == second) event_.duration.reset();
  }

  void Settle() {
    IcsEvent& event = event_;
    SettleMoment();
    const bool wholeDay = event.start.isDate && (!event.end || event.end->isDate) &&
                          (!event.duration || event.duration->seconds == 0);
    if (event.start.isDate && !event.end && !event.duration) event.duration = IcsDuration{1, 0};
    if (event.fields.allDay && !event.start.isDate) {
      const auto isMidnight = [](const IcsTime& time) { return time.Local() % SecondsPerDay == 0; };
      event.fields.allDay = isMidnight(event.start) && event.end && isMidnight(*event.end);
    } else {
      event.fields.allDay = wholeDay;
    }
  }

  const IcsComponent& component_;
  const IcsFile& file_;
  IcsEvent event_;
  std::optional<TimeParameters> timeParameters_;
  bool hasStart_ = false;
  bool badStart_ = false;
  bool linesChecked_ = false;
  bool isMoment_ = false;
};

}  // namespace

std::string IcsEvent::Name() const {
  return fields.subject.empty() ? "an event without a subject"
                                : "the event " + Quoted(fields.subject);
}

std::optional<IcsEvent> ReadIcsEvent(const IcsComponent& component, const IcsFile& file) {
  return EventReader(component, file).Read();
}

}  // namespace velkor
