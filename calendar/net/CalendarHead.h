// calendar/net/CalendarHead.h: what a calendar says of itself before its appointments.
#pragma once

#include <chrono>
#include <string>
#include <string_view>

namespace velkor {

struct CalendarHead {
  /// NAME (RFC 7986 section 5.1), else X-WR-CALNAME; empty for none.
  std::string name = {};
  /// How often it wants to be fetched: REFRESH-INTERVAL (RFC 7986 section 5.7), else
  /// X-PUBLISHED-TTL, else an hour; 15 minutes at least, a week at most.
  std::chrono::seconds interval = std::chrono::hours(1);
};

/// @param calendar  a whole iCalendar text
CalendarHead HeadOf(std::string_view calendar);

}  // namespace velkor
