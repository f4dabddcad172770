// calendar/CalendarItem.h: one appointment of the embedded calendar, and what a save changes of it.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outlook.h"
#include "values/Date.h"

namespace velkor {

/// What an appointment, or one changed occurrence of it, shows. Texts are UTF-8; the lines of
/// `body` end in CR LF.
struct AppointmentFields {
  std::string subject;
  std::vector<std::string> categories;
  std::string location;
  std::string body;
  bool allDay = false;

  friend bool operator==(const AppointmentFields&, const AppointmentFields&) = default;
};

/// One occurrence in local wall-clock time, `end` exclusive and never before `start`.
struct CalendarOccurrence {
  Date start;
  Date end;
  /// Index into CalendarItem::changed of the fields that stand instead of the item's; -1 for none.
  std::int32_t changed = -1;

  friend bool operator==(const CalendarOccurrence&, const CalendarOccurrence&) = default;
};

/// An item as it was read; it does not change while it is in a folder, it is replaced.
struct CalendarItem {
  /// Not empty once the item is in a folder; shared by all occurrences.
  std::string entryId;
  int itemClass = outlook::ClassAppointment;
  std::string messageClass = "IPM.Appointment";
  AppointmentFields fields;
  /// Of the only or the first occurrence.
  Date start;
  Date end;
  bool recurring = false;
  /// Of a recurring item: those that touch the folder's loaded window, by start.
  std::vector<CalendarOccurrence> occurrences;
  std::vector<AppointmentFields> changed;
  /// When it was last saved; default for not known.
  Date lastModified;
  /// Stands for everything above but the identifier, the loaded occurrences and the time of
  /// saving: another text after a change. Empty when the source of the item makes none.
  std::string contentMark;
  /// The appointment behind a meeting item.
  std::shared_ptr<const CalendarItem> appointment;
};

/// True when nothing of the item changed but perhaps the time of saving.
bool SameContent(const CalendarItem& a, const CalendarItem& b);

/// What a save sets; what has no value stays as it is.
struct ItemChange {
  std::optional<std::string> subject = {};
  std::optional<std::vector<std::string>> categories = {};
  std::optional<std::string> location = {};
  std::optional<std::string> body = {};
  std::optional<Date> start = {};
  std::optional<Date> end = {};
  std::optional<bool> allDay = {};
  std::optional<bool> reminder = {};

  bool SetsTimes() const { return start || end || allDay; }
  bool IsEmpty() const {
    return !subject && !categories && !location && !body && !SetsTimes() && !reminder;
  }
};

/// The item with a change made. An all-day appointment covers whole days, at least one.
/// Throws Error (CalendarFailed) for an end before the start, and for times of a recurring
/// appointment: its changed occurrences would no longer find their places.
CalendarItem WithChange(const CalendarItem& item, const ItemChange& change);

/// A text as every calendar keeps it: valid UTF-8 on one line, without controls, which come out as
/// U+FFFD, a tab as a blank.
std::string StorableLine(std::string_view text);
/// The same for a text of several lines; all of them end in CR LF. Tabs stay.
std::string StorableLines(std::string_view text);

}  // namespace velkor
