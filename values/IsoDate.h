// values/IsoDate.h: dates as ISO 8601 text.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/Date.h"

namespace velkor {

/// "2005-07-26T01:17:37"; the date is valid.
std::string ToIso(Date date);

/// A date, with a time to the second or without; none for anything else, for fields that are out
/// of their ranges, and for years outside 100 to 9999.
std::optional<Date> ParseIso(std::string_view text);

}  // namespace velkor
