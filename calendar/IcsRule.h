// calendar/IcsRule.h: the starts that a recurrence rule gives inside a window.
#pragma once

#include <chrono>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/IcsLimits.h"
#include "calendar/IcsValues.h"

namespace velkor {

/// Starts on the clock of the first start's zone, ascending. `problem` is empty when they are all.
struct RuleStarts {
  std::vector<WallSeconds> starts;
  std::string problem;
};

/// Expands rules, each within its bounds and all of them within common ones.
class RuleExpander {
 public:
  explicit RuleExpander(const IcsLimits& limits) : limits_(limits) {}

  /// The starts after the first one that lie in [from, to]; the first start itself counts for COUNT
  /// but is not given. A rule that cannot be used gives none and says why.
  /// @param rule  an RRULE value as it stands
  RuleStarts Expand(std::string_view rule, const IcsTime& first, WallSeconds from, WallSeconds to);

 private:
  RuleStarts Follow(std::string_view rule, const IcsTime& first, WallSeconds from, WallSeconds to);

  const IcsLimits& limits_;
  std::size_t steps_ = 0;
  std::chrono::nanoseconds time_{};
};

}  // namespace velkor
