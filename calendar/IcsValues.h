// calendar/IcsValues.h: the values of properties: text, dates and times, durations.
#pragma once

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/IcsLines.h"
#include "calendar/IcsZones.h"

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

/// Bytes of the file as UTF-8, invalid ones and NUL as U+FFFD.
std::string DecodeBytes(std::string_view bytes, IcsEncoding encoding);
/// A TEXT value without its escapes; line breaks come out as `lineBreak`.
std::string ReadText(std::string_view value, IcsEncoding encoding, std::string_view lineBreak);
/// The parts of a TEXT value between commas that are not escaped, each trimmed, no empty ones.
std::vector<std::string> ReadTextList(std::string_view value, IcsEncoding encoding);

}  // namespace velkor
