// calendar/IcsLimits.h: bounds within which an iCalendar file is read.
#pragma once

#include <chrono>
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
  /// Steps for one recurrence rule, for its search when nothing matches, and for all rules. One
  /// takes a few microseconds, so what is shown does not depend on how busy the machine is.
  std::size_t ruleSteps = 200'000;
  std::size_t ruleSearchSteps = 1'500'000;
  std::size_t allRuleSteps = 3'000'000;
  /// Time of the processor for one rule and for all, in case that steps take far longer.
  std::chrono::milliseconds ruleTime{5000};
  std::chrono::milliseconds allRulesTime{15'000};
  /// Occurrences inside the window: of one item, and of all items.
  std::size_t itemOccurrences = 100'000;
  std::size_t occurrences = 1'000'000;
};

}  // namespace velkor
