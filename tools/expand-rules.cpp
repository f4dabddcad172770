// tools/expand-rules.cpp: reads one recurrence rule a line and prints its starts a line.
// For comparisons with other programs (scripts/compare-rules.sh). A line is START FROM TO RULE, the
// times as 20260131T093000, START also as a date.
#include <iostream>
#include <limits>
#include <string>
#include <string_view>

#include "calendar/ics/read/IcsLines.h"
#include "calendar/ics/read/IcsRule.h"
#include "values/Date.h"
#include "values/IsoDate.h"

namespace velkor {
namespace {

/// The starts of one line's rule in [FROM, TO], the first one among them, and then what is wrong
/// with it.
std::string Answer(std::string_view line) {
  static const IcsZone floating{IcsZone::Floating{}};
  const auto start = ReadTimeText(TakePart(line, ' '));
  const auto from = ReadTimeText(TakePart(line, ' '));
  const auto to = ReadTimeText(TakePart(line, ' '));
  if (!start || !from || !to) return "not START FROM TO RULE";
  const IcsTime first{start->isDate, start->wall, &floating};
  IcsRule rule(line, first);
  RuleStarts found = rule.StartsIn(from->wall, to->wall, std::numeric_limits<std::size_t>::max());
  if (first.wall >= from->wall && first.wall <= to->wall) {
    found.starts.insert(found.starts.begin(), first.wall);
  }
  std::string answer;
  const auto add = [&](std::string_view text) {
    if (!answer.empty()) answer += ' ';
    answer += text;
  };
  for (const WallSeconds wall : found.starts) add(ToIso(Date::FromSeconds(wall)));
  for (const std::string& remark : rule.Remarks()) add("(" + remark + ")");
  return answer;
}

}  // namespace
}  // namespace velkor

int main() {
  for (std::string line; std::getline(std::cin, line);) {
    std::cout << velkor::Answer(line) << '\n';
  }
  return 0;
}
