// tests/view/CellMapTest.cpp: the cell map against an array of every cell.
#include "view/CellMap.h"

#include <gtest/gtest.h>

#include <map>
#include <random>
#include <tuple>

namespace velkor {
namespace {

TEST(CellMap, HoldsInEachCellTheLastEventThatCoversIt) {
  std::mt19937 random(11);
  const auto below = [&](int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
  };
  for (int round = 0; round < 300; ++round) {
    const int bands = 2 + below(9);
    BandLayout layout;
    std::map<std::tuple<int, int, int>, std::size_t> cells;
    for (std::uint32_t event = 0; event < 60; ++event) {
      const int band = 2 + below(bands);
      const int firstRow = 1 + below(12);
      for (int row = firstRow; row <= std::min(12, firstRow + below(3)); ++row) {
        const int first = below(37);
        const int last = first + 1 + below(38 - first);
        layout.bars.push_back({event, band, static_cast<std::int16_t>(row),
                               static_cast<std::int16_t>(first), static_cast<std::int16_t>(last)});
        for (int column = first + 1; column <= std::min(last, 37); ++column) {
          cells[{row, column, band}] = event;
        }
      }
    }
    const CellMap map(layout);
    for (int row = 0; row <= 13; ++row) {
      for (int column = 0; column <= 39; ++column) {
        for (int band = 0; band <= bands + 2; ++band) {
          const auto cell = cells.find({row, column, band});
          const auto expected =
              cell == cells.end() ? std::nullopt : std::optional<std::size_t>(cell->second);
          ASSERT_EQ(map.At(row, column, band), expected) << row << ' ' << column << ' ' << band;
        }
      }
    }
  }
}

}  // namespace
}  // namespace velkor
