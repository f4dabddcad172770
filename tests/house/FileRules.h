// tests/house/FileRules.h: how every file of the repository looks.
#pragma once

#include "tests/house/SourceTree.h"

namespace velkor::house {

/// A C++ file opens with a comment `// path: sentence.` that names its own path; a header goes on
/// with `#pragma once`.
Findings CheckOpening(const SourceFile& file);

/// No C++ file has more than 700 lines.
Findings CheckLength(const SourceFile& file);

/// No text names a place on somebody's machine, a package registry, or work left undone.
Findings CheckWords(const SourceFile& file);

}  // namespace velkor::house
