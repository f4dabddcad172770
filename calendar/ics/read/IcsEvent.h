// calendar/ics/read/IcsEvent.h: one VEVENT as it stands in the file.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsLimits.h"
#include "calendar/ics/read/IcsScanner.h"
#include "calendar/ics/read/IcsValues.h"

namespace velkor {

/// A recurrence rule's value and where it stands.
struct IcsRuleText {
  std::string text;
  int line = 0;
};

/// An added occurrence; without an end of its own it is as long as the first one.
struct IcsAddedDate {
  IcsTime start;
  std::optional<IcsTime> end;
  std::optional<IcsDuration> duration;
};

struct IcsEvent {
  const IcsComponent* component = nullptr;
  AppointmentFields fields;
  /// Empty for none.
  std::string uid;
  std::optional<long long> sequence;
  /// X-VELKOR-MESSAGE-CLASS and X-VELKOR-ENTRY-ID, as this program writes them; empty for none.
  std::string messageClass;
  std::string entryId;
  /// LAST-MODIFIED, else DTSTAMP.
  std::optional<IcsTime> modified;
  IcsTime start;
  /// At most one of them; neither for an event that ends where it starts.
  std::optional<IcsTime> end;
  std::optional<IcsDuration> duration;
  std::vector<IcsRuleText> rules;
  std::vector<IcsRuleText> exceptionRules;
  std::vector<IcsTime> exceptionDates;
  std::vector<IcsAddedDate> addedDates;
  std::optional<IcsTime> recurrenceId;
  /// The change is one of all later occurrences, too.
  bool thisAndFuture = false;
  /// By its own status or by its calendar's METHOD.
  bool cancelled = false;

  bool IsRecurring() const { return !rules.empty() || !addedDates.empty(); }
  /// `the event "Foo"`, for messages.
  std::string Name() const;
  int Line() const { return component->line; }
};

/// What reading an event needs from its file.
struct IcsFile {
  std::string_view bytes;
  IcsZones& zones;
  const IcsLimits& limits;
  Diagnostics& diagnostics;
};

/// @param component  a VEVENT; it outlives the event
/// @return none for an event without a start that can be read, which is reported
std::optional<IcsEvent> ReadIcsEvent(const IcsComponent& component, const IcsFile& file);

}  // namespace velkor
