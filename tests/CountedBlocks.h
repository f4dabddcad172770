// tests/CountedBlocks.h: how many blocks of memory were asked for; for programs that replace the
// operators.
#pragma once

#include <cstddef>

namespace velkor {

/// Grows with each call of operator new. The operators have no owner that could hold it.
extern std::size_t countedBlocks;

}  // namespace velkor
