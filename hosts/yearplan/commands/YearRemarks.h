// hosts/yearplan/commands/YearRemarks.h: what a command says of the year that it shows.
#pragma once

#include <iosfwd>

namespace velkor {

class YearGrid;

/// A line for each name of the filter that no event carries, and one on why nothing is shown.
void RemarkOn(const YearGrid& grid, std::ostream& messages);

}  // namespace velkor
