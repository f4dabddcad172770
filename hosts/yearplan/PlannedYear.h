// hosts/yearplan/PlannedYear.h: a year of a calendar file, refreshed, loaded and laid out.
#pragma once

#include <iosfwd>
#include <string>

#include "hosts/yearplan/CommandLine.h"
#include "model/CachePaths.h"
#include "view/YearGrid.h"
#include "view/span/Locale.h"

namespace velkor {

struct PlannedYear {
  YearGrid grid;
  CalendarNames names;
  /// The face for the user's code page.
  Font font;
  Date today;
  CachePaths paths;
};

/// Brings the cache file of the asked year up to date from the calendar, loads it and lays it out;
/// with --cache only loads. The calendar file is read and never written. What a file gets wrong is
/// reported on `messages`. Throws Error when there is no year to show.
PlannedYear PlanYear(const CommandLine& line, std::ostream& messages);

}  // namespace velkor
