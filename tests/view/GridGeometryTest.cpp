// tests/view/GridGeometryTest.cpp: sizes, rectangles and what lies under a point.
#include "view/GridGeometry.h"

#include <gtest/gtest.h>

#include <cmath>
#include <tuple>
#include <utility>

#include "span/DisplaySpan.h"

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

// In 2006 January takes columns 1 to 31, March 4 to 34, July 7 to 37.
TEST(GridGeometry, APointHitsTheCellThatBeginsThere) {
  const BandLayout layout = Rows(6);
  const MonthColumns columns(DisplaySpan{2006, 1});
  const GridGeometry geometry = SizeGrid({11550, 285 + 50 * 300}, 255, {}, layout);
  const std::pair<Point, GridHit> cases[] = {
      {{299.9, 299.9}, {.row = 1, .band = 1, .column = 1, .cellColumn = 1}},
      {{300, 300}, {.row = 1, .band = 2, .column = 2, .cellColumn = 2}},
      {{9300, 1200}, {.row = 2, .band = 1, .column = 0, .cellColumn = 32}},
      {{900, 4199}, {.row = 3, .band = 6, .column = 4, .cellColumn = 4}},
      {{100, 14999}, {.row = 12, .band = 4, .column = 0, .cellColumn = 1}},
      // Whole numbers are counted towards zero.
      {{-299, -299}, {.row = 1, .band = 1, .column = 1, .cellColumn = 1}},
      {{-300, 100}, {.row = 1, .band = 1, .column = 0, .cellColumn = 0}},
  };
  for (const auto& [point, expected] : cases) {
    const auto hit = HitTest(point, geometry, layout, columns);
    ASSERT_TRUE(hit);
    EXPECT_EQ(std::tuple(hit->row, hit->band, hit->column, hit->cellColumn),
              std::tuple(expected.row, expected.band, expected.column, expected.cellColumn))
        << point.x << ", " << point.y;
  }
}

TEST(GridGeometry, ARowIsFoundByTheHeightAlone) {
  const BandLayout layout = Rows(6);
  const GridGeometry geometry = SizeGrid({11550, 285 + 50 * 300}, 255, {}, layout);
  for (const auto& [y, row] :
       {std::pair(-300.0, 13), std::pair(-299.0, 1), std::pair(14999.0, 12), std::pair(15000.0, 13),
        std::pair(1e300, 13), std::pair(std::nan(""), 13)}) {
    EXPECT_EQ(RowAt(y, geometry, layout), row) << y;
  }
}

}  // namespace
}  // namespace velkor
