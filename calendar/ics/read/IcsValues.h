// calendar/ics/read/IcsValues.h: the values of properties: text, dates and times, durations.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/IcsLines.h"
#include "calendar/ics/read/IcsZones.h"

namespace velkor {

/// A date (midnight, floating) or a date with time in its zone.
struct IcsTime {
  bool isDate = false;
  WallSeconds wall = 0;
  const IcsZone* zone = nullptr;

  WallSeconds Local() const { return zone->ToLocal(wall); }
};

/// Days of the wall clock, then seconds that pass.
struct IcsDuration {
  std::int64_t days = 0;
  std::int64_t seconds = 0;
};

/// A time value as it stands: 20260131, 20260131T093000 or 20260131T093000Z.
struct IcsTimeText {
  bool isDate = false;
  bool isUtc = false;
  WallSeconds wall = 0;
};

/// @return none for text that is no such value or lies outside the years 100 to 9999
std::optional<IcsTimeText> ReadTimeText(std::string_view value);
/// @return none for text that is no duration (RFC 5545 section 3.3.6)
std::optional<IcsDuration> ReadDuration(std::string_view value);

/// Bytes of the file as UTF-8; each byte that is no part of a character counts as Windows-1252.
std::string DecodeBytes(std::string_view bytes);
/// A TEXT value without its escapes and what ENCODING and CHARSET made of it, as StorableLine and
/// StorableLines keep it. A character set that the system does not know counts for nothing.
std::string ReadText(const IcsProperty& property);
std::string ReadTextLines(const IcsProperty& property);
/// The parts of a TEXT value between commas that are not escaped, each trimmed, no empty ones.
std::vector<std::string> ReadTextList(const IcsProperty& property);

}  // namespace velkor
