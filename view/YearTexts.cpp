// view/YearTexts.cpp: the name of a span, and what hides its appointments.
#include "view/YearTexts.h"

#include <algorithm>

#include "view/YearGrid.h"

namespace velkor {

std::string YearCaption(int viewYear) {
  return "Year " + std::to_string(viewYear);
}

std::string YearName(const DisplaySpan& span) {
  const std::string name = YearCaption(span.ViewYear);
  const std::string next = std::to_string(span.ViewYear + 1);
  return span.FirstMonth == 1 ? name : name + "/" + next.substr(next.size() - 2);
}

std::string WhyEmpty(const YearGrid& grid) {
  if (!grid.Layout().bars.empty()) return {};
  const std::string name = YearName(grid.Span());
  const std::size_t count = grid.Events().Count();
  if (count == 0) return name + " has no appointments.";
  const auto filtered = static_cast<std::size_t>(std::count_if(
      grid.Events().begin(), grid.Events().end(),
      [&](const CalEvent& event) { return grid.Filter().IsFilteredOut(event.Categories); }));
  const std::string hidden =
      count == 1 ? "the only appointment" : "all " + std::to_string(count) + " appointments";
  const char* const hiding = filtered == count ? "The filter hides "
                             : filtered == 0   ? "The settings hide "
                                               : "The filter and the settings hide ";
  return hiding + hidden + " of " + name + ".";
}

}  // namespace velkor
