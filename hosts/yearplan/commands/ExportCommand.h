// hosts/yearplan/commands/ExportCommand.h: `yearplan export`, years of a calendar as an XML file.
#pragma once

#include <iosfwd>

#include "hosts/yearplan/commands/CommandLine.h"

namespace velkor {

/// Exports as the control does, the cache file of each year being brought up to date before. Throws
/// Error when nothing was saved.
/// @param out       what was written and where
/// @param messages  what the calendar file gets wrong, and the progress
void Export(const CommandLine& line, std::ostream& out, std::ostream& messages);

}  // namespace velkor
