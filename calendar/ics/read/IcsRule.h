// calendar/ics/read/IcsRule.h: the starts that a recurrence rule gives inside a window.
#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/ics/read/IcsValues.h"

namespace velkor {

/// Starts on the clock of the first start's zone, ascending.
struct RuleStarts {
  std::vector<WallSeconds> starts;
  /// False when there are more than were asked for.
  bool areAll = true;
};

/// Finds the starts of one rule, one window after the other. The work grows with the rule's periods
/// in the windows and the starts there, not with what lies before; where COUNT has to be counted,
/// years cost some nanoseconds each, and so do the days of a rule whose interval fits neither days
/// nor weeks and that picks months, days of a month or of a year.
class IcsRule {
 public:
  /// @param text   an RRULE value as it stands
  /// @param first  outlives this
  IcsRule(std::string_view text, const IcsTime& first);
  ~IcsRule();
  IcsRule(const IcsRule&) = delete;
  IcsRule& operator=(const IcsRule&) = delete;

  /// What is wrong with the rule and what was done about it, in words that follow its name. One
  /// that cannot be used has no starts.
  const std::vector<std::string>& Remarks() const { return remarks_; }

  /// The starts after the first one that lie in [from, to], the first `most` of them; the first
  /// start itself counts for COUNT but is not given.
  /// @param from  after the end of the window before
  RuleStarts StartsIn(WallSeconds from, WallSeconds to, std::size_t most);
  /// True for a start after the first one. @param wall  after the end of the window before
  bool StartsAt(WallSeconds wall) { return !StartsIn(wall, wall, 1).starts.empty(); }

 private:
  class Walk;

  std::vector<std::string> remarks_;
  std::unique_ptr<Walk> walk_;
};

}  // namespace velkor
