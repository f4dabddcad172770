// view/DaysOff.cpp: places days off in the rows of a year.
#include "view/DaysOff.h"

#include <algorithm>
#include <utility>

#include "span/Globals.h"

namespace velkor {
namespace {

/// Bits `first` to `last`, both included.
std::uint64_t Bits(int first, int last) {
  return (std::uint64_t{2} << last) - (std::uint64_t{1} << first);
}

}  // namespace

DaysOff::DaysOff(std::vector<DayOff> days) : days_(std::move(days)) {
  std::erase_if(days_,
                [](const DayOff& day) { return !day.first.IsValid() || !day.last.IsValid(); });
}

void DaysOff::PlaceIn(const MonthColumns& columns) {
  columns_.fill(0);
  for (const DayOff& day : days_) {
    for (int row = 1; row <= MonthRows; ++row) {
      const std::int64_t monthBegins = columns.RowFirstDay[Index(row)];
      const std::int64_t first = std::max(day.first.DayNumber(), monthBegins);
      const std::int64_t last =
          std::min(day.last.DayNumber(), columns.RowFirstDay[Index(row) + 1] - 1);
      if (first > last) continue;
      const int before = columns.RowDayOffset[Index(row)] + 1;
      columns_[Index(row)] |= Bits(before + static_cast<int>(first - monthBegins),
                                   before + static_cast<int>(last - monthBegins));
    }
  }
}

std::string DaysOff::NameOf(Date day) const {
  const std::int64_t number = day.DayNumber();
  std::vector<std::string> names;
  bool isOff = false;
  for (const DayOff& each : days_) {
    if (number < each.first.DayNumber() || number > each.last.DayNumber()) continue;
    isOff = true;
    std::string name = Globals::StripControlChars(each.name);
    if (!name.empty() && std::ranges::find(names, name) == names.end()) {
      names.push_back(std::move(name));
    }
  }
  if (isOff && names.empty()) return "Day off";
  std::string joined;
  for (const std::string& name : names) {
    if (!joined.empty()) joined += ", ";
    joined += name;
  }
  return joined;
}

}  // namespace velkor
