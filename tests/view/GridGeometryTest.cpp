// tests/view/GridGeometryTest.cpp: sizes, rectangles and what lies under a point.
#include "view/GridGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <utility>

#include "view/span/DisplaySpan.h"

namespace velkor {
namespace {

/// Rows of four bands, or of `more` bands in row 3.
BandLayout Rows(int more = 4) {
  BandLayout layout;
  for (int row = 1; row <= MonthRows; ++row) {
    layout.BandsInRow[row] = layout.BandsInRow[row - 1] + (row == 3 ? more : 4);
  }
  return layout;
}

TEST(GridGeometry, BandsShareTheHeightAndColumnsTheWidth) {
  const struct {
    Extent picParent;
    PixelSize pixel;
    double BandHeight;
    int GridWidth;
    double ColumnWidth;
  } cases[] = {
      {{11550, 14685}, {15, 15}, 300, 11145, 300},
      {{11560, 14690}, {15, 15}, 14405 / 48.0, 11155, 11110 / 37.0},
      // Halves go to the even number: 9999.5 and 10000.5 are both 10000.
      {{405 + 9999.5, 285 + 9999.5}, {15, 15}, 10000 / 48.0, 10000, 9955 / 37.0},
      {{405 + 10000.5, 285 + 10000.5}, {15, 15}, 10000 / 48.0, 10000, 9955 / 37.0},
      {{11550, 14685}, {12, 7.5}, 14422 / 48.0, 11145, 11109 / 37.0},
  };
  for (const auto& expected : cases) {
    const GridGeometry geometry = SizeGrid(expected.picParent, 255, expected.pixel, Rows());
    EXPECT_FALSE(geometry.scroll);
    EXPECT_FLOAT_EQ(geometry.BandHeight, static_cast<float>(expected.BandHeight));
    EXPECT_EQ(geometry.GridWidth, expected.GridWidth);
    EXPECT_FLOAT_EQ(geometry.ColumnWidth, static_cast<float>(expected.ColumnWidth));
  }
}

TEST(GridGeometry, BandsBelowTheLeastHeightAreScrolled) {
  const Twips justFits = 285 + 48 * 100;
  EXPECT_FALSE(SizeGrid({5000, justFits}, 255, {}, Rows()).scroll);
  for (const Twips height : {justFits - 1, 300.0, 0.0, -5000.0}) {
    const GridGeometry geometry = SizeGrid({5000, height}, 255, {}, Rows());
    EXPECT_TRUE(geometry.scroll);
    EXPECT_EQ(geometry.BandHeight, 100);
    EXPECT_EQ(geometry.GridWidth, 5000 - 405 - 255 - 15);
    EXPECT_FLOAT_EQ(geometry.ColumnWidth, static_cast<float>(4280 / 37.0));
  }
}

TEST(GridGeometry, ABarLeavesOnePixelFreeInsideItsCells) {
  const BandLayout layout = Rows(6);
  const GridGeometry geometry = SizeGrid({11550, 285 + 50 * 300}, 255, {}, layout);
  EXPECT_EQ(BarRect({0, 3, 4, 9, 12}, geometry, layout),
            (Rect{9 * 300 + 15, (14 + 2) * 300 + 15, 12 * 300 - 15, (14 + 3) * 300 - 15}));
  EXPECT_EQ(BarRect({0, 2, 1, 36, 38}, geometry, layout), (Rect{10815, 315, 11385, 585}));
}

TEST(GridGeometry, TodaysMarkSpansItsRowAndItsShadowLiesToTheRightAndBelow) {
  const BandLayout layout = Rows(6);
  const GridGeometry geometry = SizeGrid({11550, 285 + 50 * 300}, 255, {}, layout);
  const TodayMark mark = TodayMarkOf(3, 10, geometry, layout);
  EXPECT_EQ(mark.shadow, (Rect{2700, 2400, 3000 + 30, 4200 + 30}));
  EXPECT_EQ(mark.frame, (Rect{2700 - 15, 2400 - 15, 3000 + 15, 4200 + 15}));
}

// In 2006 January takes columns 1 to 31, March 4 to 34, July 7 to 37.
TEST(GridGeometry, APointHitsTheCellThatBeginsThere) {
  const BandLayout layout = Rows(6);
  const MonthColumns columns(DisplaySpan{2006, 1});
  const GridGeometry geometry = SizeGrid({11550, 285 + 50 * 300}, 255, {}, layout);
  const struct {
    Point point;
    int row, band, column, cellColumn;
  } cases[] = {
      {{0, 0}, 1, 1, 1, 1},
      {{299.9, 299.9}, 1, 1, 1, 1},
      {{300, 300}, 1, 2, 2, 2},
      {{9299, 1199}, 1, 4, 31, 31},
      {{9300, 1200}, 2, 1, 0, 32},
      {{899, 2400}, 3, 1, 0, 3},
      {{900, 4199}, 3, 6, 4, 4},
      {{10199, 2400}, 3, 1, 34, 34},
      {{10200, 2400}, 3, 1, 0, 35},
      {{1799, 4200 + 900 * 4}, 7, 1, 0, 6},
      {{11099, 4200 + 900 * 4}, 7, 1, 37, 37},
      {{100, 14999}, 12, 4, 0, 1},
      // Whole numbers are counted towards zero.
      {{-299, -299}, 1, 1, 1, 1},
      {{-300, 100}, 1, 1, 0, 0},
      {{-599, 100}, 1, 1, 0, 0},
  };
  for (const auto& expected : cases) {
    SCOPED_TRACE(testing::Message() << expected.point.x << ", " << expected.point.y);
    const auto hit = HitTest(expected.point, geometry, layout, columns);
    ASSERT_TRUE(hit);
    EXPECT_EQ(hit->row, expected.row);
    EXPECT_EQ(hit->band, expected.band);
    EXPECT_EQ(hit->column, expected.column);
    EXPECT_EQ(hit->cellColumn, expected.cellColumn);
  }
}

TEST(GridGeometry, APointOutsideTheGridHitsNoCell) {
  const BandLayout layout = Rows(6);
  const MonthColumns columns(DisplaySpan{2006, 1});
  const GridGeometry geometry = SizeGrid({11550, 285 + 50 * 300}, 255, {}, layout);
  for (const Point point : {Point{100, 15000}, Point{100, -300}, Point{11100, 100},
                            Point{-600, 100}, Point{1e300, 100}, Point{100, 1e300}}) {
    EXPECT_FALSE(HitTest(point, geometry, layout, columns)) << point.x << ", " << point.y;
  }
  const GridGeometry tooNarrow = SizeGrid({300, 5000}, 255, {}, layout);
  EXPECT_FALSE(HitTest({1, 1}, tooNarrow, layout, columns));
}

TEST(GridGeometry, ARowIsFoundByTheHeightAlone) {
  const BandLayout layout = Rows(6);
  const GridGeometry geometry = SizeGrid({11550, 285 + 50 * 300}, 255, {}, layout);
  for (const auto& [y, row] :
       {std::pair(-300.0, 13), std::pair(-299.0, 1), std::pair(1199.0, 1), std::pair(1200.0, 2),
        std::pair(4199.0, 3), std::pair(4200.0, 4), std::pair(14999.0, 12), std::pair(15000.0, 13),
        std::pair(1e300, 13), std::pair(std::nan(""), 13)}) {
    EXPECT_EQ(RowAt(y, geometry, layout), row) << y;
  }
}

}  // namespace
}  // namespace velkor
