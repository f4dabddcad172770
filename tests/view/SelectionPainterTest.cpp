// tests/view/SelectionPainterTest.cpp: where a selection and the day cursor are drawn, and how
// little is drawn anew.
#include "view/SelectionPainter.h"

#include <gmock/gmock.h>

#include <random>

#include "tests/view/SampleGrid.h"
#include "view/GridPainter.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

constexpr Rect Everything{0, 0, 20'000, 40'000};

std::vector<Rect> Listed(const RowRects& rects) {
  return {rects.begin(), rects.end()};
}

/// The grid as the control paints it.
void Draw(Surface& surface, const YearGrid& grid, const std::optional<Selection>& selection,
          const Rect& visible = Everything) {
  GridPainter(surface, grid, Font{}, visible).Draw({{}, selection, {}});
}

// In 2006 March takes columns 4 to 34, April 7 to 36, May 2 to 32.
TEST(SelectionPainter, ARangeRunsRowByRowOverTheDaysOfEachMonth) {
  const YearGrid grid = SampleGrid({});
  const std::vector<std::string> range{"fill 5700 2400 10200 3600 #BED6F4",
                                       "fill 1800 3600 10800 4800 #BED6F4",
                                       "fill 300 4800 1200 6000 #BED6F4"};
  const std::pair<Selection, std::vector<std::string>> selections[] = {
      {{{3, 20}, {5, 4}}, range},
      {{{5, 4}, {3, 20}}, range},
      {{{3, 8}, {3, 5}}, {"fill 1200 2400 2400 3600 #BED6F4"}},
      // Corners outside their month cover nothing there.
      {{{3, 37}, {4, 7}}, {"fill 1800 3600 2100 4800 #BED6F4"}},
      {{{3, 34}, {3, 37}}, {"fill 9900 2400 10200 3600 #BED6F4"}},
  };
  for (const auto& [selection, filled] : selections) {
    RecordingSurface surface;
    DrawSelectionFill(surface, grid, selection, Everything);
    EXPECT_EQ(surface.Log(), filled);
  }
}

TEST(SelectionPainter, OnlyRowsInSightAreDrawn) {
  const YearGrid grid = SampleGrid({});
  RecordingSurface surface;
  const Rect march{0, 2700, 11'145, 3300};
  DrawSelectionFill(surface, grid, {{1, 1}, {12, 37}}, march);
  DrawSelectionFrame(surface, grid, {{1, 1}, {12, 37}}, march);
  DrawDayCursor(surface, grid, {7, 10}, march);
  EXPECT_THAT(surface.Log(), ElementsAre("fill 900 2400 10200 3600 #BED6F4",
                                         "outline 915 2415 10185 3585 #1850AA pen 2"));
}

TEST(SelectionPainter, AFrameThatIsWiderThanItsCellStaysInTheCellsMiddle) {
  const YearGrid grid = SampleGrid({}, {}, 300, 20);
  RecordingSurface surface;
  DrawSelectionFrame(surface, grid, {{1, 1}, {1, 1}}, Everything);
  EXPECT_THAT(surface.Log(), ElementsAre("outline 10 15 10 1185 #1850AA pen 2"));
}

/// Pixels that both surfaces show alike, or that lie in one of the rectangles.
void ExpectCovered(const YearGrid& grid, const RecordingSurface& before,
                   const RecordingSurface& after, const RowRects& changed) {
  const Twips width = grid.Geometry().GridWidth;
  const Twips height = grid.Geometry().GridHeight(grid.Layout());
  for (double y = 7; y < height + 60; y += 15) {
    for (double x = 7; x < width; x += 15) {
      if (before.ColourAt({x, y}) == after.ColourAt({x, y})) continue;
      const bool covered = std::any_of(changed.begin(), changed.end(), [&](const Rect& rect) {
        return x >= rect.left && x < rect.right && y >= rect.top && y < rect.bottom;
      });
      ASSERT_TRUE(covered) << x << ", " << y;
    }
  }
}

TEST(SelectionPainter, WhatChangesBetweenTwoSelectionsLiesInTheChangedRectangles) {
  // Cells whose edges fall between pixels.
  const YearGrid grid = SampleGrid({}, {}, 101, 97);
  std::mt19937 random(7);
  const auto cell = [&] {
    const int row = 1 + static_cast<int>(random() % 3);
    return GridCell{row, grid.Columns().RowDayOffset[row] + 1 + static_cast<int>(random() % 28)};
  };
  for (int round = 0; round < 12; ++round) {
    const GridCell anchor = cell();
    const Selection before{anchor, cell()};
    const Selection after{round % 3 == 0 ? cell() : anchor, cell()};
    RecordingSurface was;
    RecordingSurface is;
    Draw(was, grid, before);
    Draw(is, grid, after);
    ExpectCovered(grid, was, is, ChangedRects(before, after, grid));
  }
}

TEST(SelectionPainter, ADragByOneDayDrawsThatDayAnewAndNoOther) {
  const YearGrid grid = SampleGrid({});
  const Selection before{{3, 10}, {3, 20}};
  EXPECT_THAT(Listed(ChangedRects(before, before, grid)), IsEmpty());
  EXPECT_THAT(Listed(ChangedRects(std::nullopt, std::nullopt, grid)), IsEmpty());
  EXPECT_THAT(Listed(ChangedRects(before, Selection{{3, 20}, {3, 10}}, grid)), IsEmpty());
  const Rect day{20 * 300 - 45, 2400 - 45, 21 * 300 + 45, 3600 + 45};
  EXPECT_THAT(Listed(ChangedRects(before, Selection{{3, 10}, {3, 21}}, grid)), ElementsAre(day));
  EXPECT_THAT(Listed(ChangedRects(Selection{{3, 10}, {3, 21}}, before, grid)), ElementsAre(day));
}

TEST(SelectionPainter, TheDayCursorFramesAllBandsOfADayBesideTheFrameOfToday) {
  const YearGrid grid = SampleGrid({});
  RecordingSurface surface;
  // As on a bar of the cursor's own colour.
  surface.Fill(Everything, selection_colours::DayCursor);
  GridPainter(surface, grid, Font{}, Everything).DrawToday(At(2006, 3, 7));
  DrawDayCursor(surface, grid, {3, 10}, Everything);
  // From the second pixel left of the cell on.
  const Colour expected[] = {grid_colours::TodayFrame, selection_colours::DayCursorHalo,
                             selection_colours::DayCursor, selection_colours::DayCursor};
  for (int i = 0; i < 4; ++i) {
    EXPECT_EQ(surface.ColourAt({2700 + 15 * (i - 2) + 7.0, 3500}), expected[i]) << i;
  }
}

TEST(SelectionPainter, WhatADayCursorDrawsLiesInItsRectangle) {
  const YearGrid grid = SampleGrid({}, {}, 101, 97);
  RecordingSurface without;
  Draw(without, grid, std::nullopt);
  for (int column = 8; column < 20; ++column) {
    const GridCell cell{1 + column % 3, column};
    RecordingSurface with;
    Draw(with, grid, std::nullopt);
    DrawDayCursor(with, grid, cell, Everything);
    RowRects rects;
    rects.Add(DayCursorRect(cell, grid));
    ExpectCovered(grid, without, with, rects);
  }
}

}  // namespace
}  // namespace velkor
