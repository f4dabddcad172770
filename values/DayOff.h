// values/DayOff.h: a holiday, or several in a row, by the days that it takes.
#pragma once

#include <string>

#include "values/Date.h"

namespace velkor {

struct DayOff {
  /// Both included; their times of day do not count.
  Date first;
  Date last;
  /// For people; may be empty.
  std::string name;

  friend bool operator==(const DayOff&, const DayOff&) = default;
};

}  // namespace velkor
