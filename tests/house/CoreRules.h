// tests/house/CoreRules.h: what the core and the seams keep away from.
#pragma once

#include "tests/house/SourceTree.h"

namespace velkor::house {

/// Foreign headers, native types, platform switches, clocks, files, process-wide locale and
/// console in the core, in refresh and in the seam headers; other files are not looked at.
Findings CheckCore(const SourceFile& file);

}  // namespace velkor::house
