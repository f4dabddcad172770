// hosts/yearplan/commands/CategoriesCommand.h: `yearplan categories`, the legend's commands in a
// terminal.
#pragma once

#include <iosfwd>

#include "hosts/yearplan/commands/CommandLine.h"

namespace velkor {

/// Lists the categories of a planner title or changes them, which is written to the calendar file.
/// Throws Error when a change was refused or could not be saved, the file then being as it was, and
/// after a list that is not the whole of what the calendar holds.
void Categories(const CommandLine& line, std::ostream& out, std::ostream& messages);

}  // namespace velkor
