// tests/view/PointerAllocationTest.cpp: a pointer move takes no memory.
#include <gtest/gtest.h>

#include <random>

#include "tests/CountedBlocks.h"
#include "tests/view/SampleGrid.h"
#include "view/GridPointer.h"
#include "view/SelectionPainter.h"

namespace velkor {
namespace {

TEST(GridPointer, MovesOverTenThousandEventsTakeNoMemory) {
  std::mt19937 random(3);
  const auto below = [&](int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
  };
  std::vector<CalEvent> events;
  for (int i = 0; i < 10'000; ++i) {
    const Date start = At(2006, 1, 1 + below(365));
    events.push_back(SampleEvent(std::to_string(i), start, start.AddDays(1 + below(20))));
  }
  const YearGrid grid = SampleGrid(std::move(events));
  const Twips height = grid.Geometry().GridHeight(grid.Layout());
  GridPointer pointer(grid);
  const std::size_t before = countedBlocks;
  ASSERT_GT(before, 0U) << "nothing is counted";
  int hovers = 0;
  int labels = 0;
  int selections = 0;
  for (int i = 0; i < 10'000; ++i) {
    const PointerMove move =
        pointer.MouseMove({below(11'400) - 100.0, height * below(1010) / 1000});
    hovers += move.hover;
    labels += move.label;
    selections += move.selection.Changed();
    for (const Rect& rect : ChangedRects(move.selection.before, move.selection.after, grid)) {
      selections += rect.Height() > height;
    }
    // Now and then in a drag, and out of it again.
    if (i % 100 == 0) pointer.MouseDown(MouseButton::Left);
    if (i % 100 == 40) pointer.MouseUp(MouseButton::Left);
  }
  EXPECT_EQ(countedBlocks, before);
  EXPECT_GT(hovers, 100);
  EXPECT_GT(labels, 100);
  EXPECT_GT(selections, 100);
}

}  // namespace
}  // namespace velkor
