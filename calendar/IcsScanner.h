// calendar/IcsScanner.h: finds the components of an iCalendar file and where they stand in it.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/Diagnostics.h"
#include "calendar/IcsLimits.h"

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
};

enum class IcsEncoding { Utf8, Latin1 };

struct IcsScan {
  std::vector<IcsComponent> components;
  int calendars = 0;
  /// Where the END line of the last calendar begins; none when that calendar has no END.
  std::optional<std::size_t> lastCalendarEnd;
  /// X-WR-CALNAME as it stands in the file, when all calendars that have one agree.
  std::string calendarName;
  /// Latin1 when the file is no UTF-8 and no part of it looks like UTF-8 either.
  IcsEncoding encoding = IcsEncoding::Utf8;
};

/// Goes through the file line by line; never fails. A component without END reaches to where the
/// next one begins.
IcsScan ScanIcs(std::string_view bytes, const IcsLimits& limits, Diagnostics& diagnostics);

}  // namespace velkor
