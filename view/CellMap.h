// view/CellMap.h: which event lies in each cell of the grid.
#pragma once

#include <cstdint>
#include <optional>
#include <vector>

#include "view/BandLayout.h"

namespace velkor {

/// Cells are a row (1 to 12), a column (1 to 37) and a band of the row. Kept as spans, so it grows
/// with the bars and not with the grid.
class CellMap {
 public:
  CellMap() = default;
  /// Where two bars share a cell the later event has it.
  explicit CellMap(const BandLayout& layout);

  /// Index of the event that lies in a cell.
  std::optional<std::size_t> At(int row, int column, int band) const;

 private:
  struct Span {
    std::int16_t row;
    std::int16_t firstColumn;
    std::int16_t lastColumn;
    std::int32_t band;
    std::uint32_t event;
  };

  // Ordered by row, band and column; no two overlap.
  std::vector<Span> spans_;
};

}  // namespace velkor
