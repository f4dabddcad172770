// hosts/yearplan/commands/Commands.h: what the commands of yearplan do.
#pragma once

#include <iosfwd>

#include "hosts/yearplan/commands/CommandLine.h"

namespace velkor {

/// Runs one command. Throws UsageError and Error.
/// @param out       what was asked for
/// @param messages  what a file gets wrong
/// @return the program's exit code
int RunCommand(const CommandLine& line, std::ostream& out, std::ostream& messages);

}  // namespace velkor
