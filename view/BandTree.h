// view/BandTree.h: the bands of one row by the last column that each has occupied.
#pragma once

#include <cstddef>
#include <cstdint>
#include <vector>

namespace velkor {

/// Cells by position, all 0 at first, without end. A tree of minima answers "the first cell below
/// a bound" in log n steps, as a walk over the cells would.
class BandTree {
 public:
  /// Position of the first cell that is below `bound` (1 to 127).
  std::size_t FirstBelow(std::int8_t bound) const;
  /// Sets a cell; `column` from 0 to 127.
  void Set(std::size_t position, std::int8_t column);

 private:
  void Grow(std::size_t cells);

  // Node i has the children 2i and 2i + 1; the cells are the last `capacity_` nodes.
  std::vector<std::int8_t> minima_;
  std::size_t capacity_ = 0;
};

}  // namespace velkor
