// calendar/net/RefreshInterval.h: how often a calendar itself wants to be fetched.
#pragma once

#include <chrono>
#include <string_view>

namespace velkor {

/// By its properties REFRESH-INTERVAL (RFC 7986 section 5.7), else X-PUBLISHED-TTL, else an hour;
/// 15 minutes at least, a week at most.
/// @param calendar  a whole iCalendar text
std::chrono::seconds RefreshIntervalOf(std::string_view calendar);

}  // namespace velkor
