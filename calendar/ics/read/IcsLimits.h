// calendar/ics/read/IcsLimits.h: bounds within which an iCalendar file is read.
#pragma once

#include <cstddef>

namespace velkor {

/// Whatever goes beyond a bound is left out and reported, and everything else is shown; only a
/// file that is too large is refused whole. Sizes are bytes.
struct IcsLimits {
  std::size_t fileSize = std::size_t{64} << 20;
  /// Of one line after unfolding.
  std::size_t lineLength = std::size_t{1} << 20;
  std::size_t componentSize = std::size_t{4} << 20;
  std::size_t components = 500'000;
  /// Components inside one another, the calendar not counted.
  std::size_t nesting = 16;
  std::size_t diagnostics = 1000;
  /// Lines of a time zone's definition.
  std::size_t timeZoneLines = 2000;
  /// Occurrences that begin in one year: of one item, which is more than one each hour, and of all
  /// items, far more than a year can show.
  std::size_t itemOccurrences = 10'000;
  std::size_t occurrences = 30'000;
};

}  // namespace velkor
