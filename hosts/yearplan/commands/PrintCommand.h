// hosts/yearplan/commands/PrintCommand.h: `yearplan print`: the year on the pages of a PDF file.
#pragma once

#include <iosfwd>

#include "hosts/yearplan/commands/CommandLine.h"

namespace velkor {

/// Prints the command line's year over an older file, or tells what its pages would hold. What the
/// window keeps about printing is neither read nor written. Throws UsageError and Error; the older
/// file is kept then.
void Print(const CommandLine& line, std::ostream& out, std::ostream& messages);

}  // namespace velkor
