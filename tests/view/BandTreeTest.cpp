// tests/view/BandTreeTest.cpp: the tree of minima against a walk over the cells.
#include "view/BandTree.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <random>

namespace velkor {
namespace {

TEST(BandTree, FindsTheCellThatAWalkFinds) {
  std::mt19937 random(7);
  for (const unsigned cells : {1U, 2U, 15U, 16U, 17U, 300U}) {
    BandTree tree;
    std::vector<int> plain(cells + 1, 0);
    for (int step = 0; step < 3000; ++step) {
      // Mostly full, so that the first free cell lies anywhere.
      const std::size_t position = random() % cells;
      const int column = random() % 8 == 0 ? 0 : 1 + static_cast<int>(random() % 127);
      tree.Set(position, static_cast<std::int8_t>(column));
      plain[position] = column;
      for (const int bound : {1, 1 + static_cast<int>(random() % 127), 127}) {
        const auto walked =
            std::find_if(plain.begin(), plain.end(), [&](int cell) { return cell < bound; });
        ASSERT_EQ(tree.FirstBelow(static_cast<std::int8_t>(bound)),
                  static_cast<std::size_t>(walked - plain.begin()))
            << cells << " cells, step " << step;
      }
    }
  }
}

}  // namespace
}  // namespace velkor
