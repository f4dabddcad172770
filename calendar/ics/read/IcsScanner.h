// calendar/ics/read/IcsScanner.h: finds the components of an iCalendar file and where they stand in
// it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsLimits.h"

namespace velkor {

/// A component that stands in a calendar, or in none, but in no other component.
struct IcsComponent {
  /// In upper-case letters.
  std::string name;
  /// Byte range, from BEGIN to the line end after END.
  std::size_t begin = 0;
  std::size_t end = 0;
  /// Of its BEGIN, from 1.
  int line = 0;
  /// Which VCALENDAR of the file, from 0; -1 outside of any.
  int calendar = -1;
  /// There is no END; the component reaches to where something else begins.
  bool unfinished = false;
  /// It stands in a calendar with METHOD:CANCEL.
  bool cancelled = false;
};

enum class IcsEncoding { Utf8, Windows1252 };

struct IcsScan {
  std::vector<IcsComponent> components;
  int calendars = 0;
  /// The last calendar has METHOD:CANCEL.
  bool lastCalendarCancels = false;
  /// Where the END line of the last calendar begins; none when that calendar has no END.
  std::optional<std::size_t> lastCalendarEnd;
  /// X-WR-CALNAME, when all calendars that have one agree.
  std::string calendarName;
  /// What other texts are to be written in: Windows-1252 when the file is no UTF-8 and no part of
  /// it looks like UTF-8 either.
  IcsEncoding encoding = IcsEncoding::Utf8;
};

/// Goes through the file line by line; never fails. A component without END reaches to where the
/// next one begins.
IcsScan ScanIcs(std::string_view bytes, const IcsLimits& limits, Diagnostics& diagnostics);

}  // namespace velkor
