// tests/house/Arrows.h: which layer may include which.
#pragma once

#include "tests/house/SourceTree.h"

namespace velkor::house {

/// Includes of our own files that point back, across, or at no layer that is known.
Findings CheckArrows(const SourceFile& file);

}  // namespace velkor::house
