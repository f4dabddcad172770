// calendar/net/HttpDate.h: reads the dates of HTTP headers, and the clock that they are compared
// to.
#pragma once

#include <cstdint>
#include <optional>
#include <string_view>

namespace velkor {

/// Seconds since 1970 by this machine's clock.
std::int64_t SecondsNow();

/// Seconds since 1970 of a date such as "Sun, 06 Nov 1994 08:49:37 GMT" (RFC 9110 section 5.6.7);
/// none for what is no such date.
std::optional<std::int64_t> SecondsOfHttpDate(std::string_view text);

}  // namespace velkor
