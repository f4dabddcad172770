// hosts/yearplan/commands/GridOfCache.h: the year that a cache file holds, without its calendar.
#pragma once

#include <iosfwd>

#include "view/YearGrid.h"

namespace velkor {

struct CommandLine;
struct TerminalSeams;

/// Loaded, laid out and sized as the command line says, in first colours. A file that is cut short
/// is told. Throws Error for one that is no cache file.
YearGrid GridOfCache(const CommandLine& line, TerminalSeams& seams, std::ostream& messages);

}  // namespace velkor
