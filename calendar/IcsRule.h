// calendar/IcsRule.h: the starts that a recurrence rule gives inside a window.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/IcsValues.h"

namespace velkor {

/// Starts on the clock of the first start's zone, ascending.
struct RuleStarts {
  std::vector<WallSeconds> starts;
  /// What is wrong with the rule and what was done about it, in words that follow its name; empty
  /// for nothing.
  std::vector<std::string> remarks;
};

/// The starts after the first one that lie in [from, to], at most `most` of them; the first start
/// itself counts for COUNT but is not given. The work grows with the rule's periods in [from, to]
/// and the starts there, not with what lies before; where COUNT has to be counted, an interval
/// that fits neither days nor weeks costs a few nanoseconds for each earlier day or period.
/// @param rule  an RRULE value as it stands
RuleStarts ExpandRule(std::string_view rule, const IcsTime& first, WallSeconds from, WallSeconds to,
                      std::size_t most);

}  // namespace velkor
