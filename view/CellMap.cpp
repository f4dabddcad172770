// view/CellMap.cpp: which event lies in each cell of the grid.
#include "view/CellMap.h"

#include <algorithm>
#include <array>
#include <tuple>

namespace velkor {
namespace {

constexpr std::int64_t Free = -1;

}  // namespace

CellMap::CellMap(const BandLayout& layout) {
  const std::vector<Bar>& bars = layout.bars;
  std::vector<std::uint32_t> order(bars.size());
  for (std::uint32_t i = 0; i < order.size(); ++i) order[i] = i;
  // Bars stand in the order of their events, so the index keeps the later event behind.
  std::sort(order.begin(), order.end(), [&](std::uint32_t a, std::uint32_t b) {
    return std::tuple(bars[a].row, bars[a].band, a) < std::tuple(bars[b].row, bars[b].band, b);
  });

  spans_.reserve(bars.size());
  for (auto group = order.begin(); group != order.end();) {
    const Bar& head = bars[*group];
    std::array<std::int64_t, GridColumns + 1> cells;
    cells.fill(Free);
    for (; group != order.end(); ++group) {
      const Bar& bar = bars[*group];
      if (bar.row != head.row || bar.band != head.band) break;
      for (int column = bar.first + 1; column <= bar.last; ++column) cells[column] = bar.event;
    }
    for (int column = 1; column <= GridColumns; ++column) {
      if (cells[column] == Free) continue;
      const auto event = static_cast<std::uint32_t>(cells[column]);
      const auto at = static_cast<std::int16_t>(column);
      if (cells[column] == cells[column - 1]) {
        spans_.back().lastColumn = at;
      } else {
        spans_.push_back({head.row, at, at, head.band, event});
      }
    }
  }
}

std::optional<std::size_t> CellMap::At(int row, int column, int band) const {
  const auto span = std::partition_point(spans_.begin(), spans_.end(), [&](const Span& s) {
    return std::tuple<int, int, int>(s.row, s.band, s.lastColumn) < std::tuple(row, band, column);
  });
  const bool covers =
      span != spans_.end() && span->row == row && span->band == band && span->firstColumn <= column;
  return covers ? std::optional<std::size_t>(span->event) : std::nullopt;
}

}  // namespace velkor
