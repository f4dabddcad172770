// view/GridGeometry.h: sizes of the grid and the rectangles of its rows, bars and marks.
#pragma once

#include <optional>

#include "values/Twips.h"
#include "view/BandLayout.h"

namespace velkor {

/// The room that the header row and the month column take beside the grid.
inline constexpr Twips HeaderRowHeight = 240;
inline constexpr Twips MonthColumnWidth = 405;
/// The control's own least height of a band.
inline constexpr Twips LeastBandHeight = 100;

/// Columns 1, 8, ... are Sundays, columns 7, 14, ... Saturdays.
constexpr bool IsWeekend(int column) {
  return column % 7 <= 1;
}

/// Positions are twips from the grid's top left corner, before scrolling.
struct GridGeometry {
  float ColumnWidth = 0;
  float BandHeight = 0;
  /// Right end of the out-of-month fill.
  int GridWidth = 0;
  /// The bands do not fit: VScroll1 is shown.
  bool scroll = false;
  /// What a bar leaves free at each side.
  PixelSize pixel;
  /// Width of lines; 0 for one pixel of the surface.
  Twips pen = 0;

  /// Left edge of column 1 + `column`.
  Twips ColumnEdge(int column) const { return column * static_cast<Twips>(ColumnWidth); }
  /// Top edge of the band that has `bands` bands above it.
  Twips BandEdge(int bands) const { return bands * static_cast<Twips>(BandHeight); }
  Twips RowTop(const BandLayout& layout, int row) const {
    return BandEdge(layout.BandsInRow[row - 1]);
  }
  Twips RowBottom(const BandLayout& layout, int row) const {
    return BandEdge(layout.BandsInRow[row]);
  }
  Twips GridHeight(const BandLayout& layout) const { return BandEdge(layout.TotalBands()); }
};

/// The least height of picParent that holds the whole grid without scrolling.
Twips HeightWithoutScrolling(const BandLayout& layout, PixelSize pixel,
                             Twips minBandHeight = LeastBandHeight);

/// Sizes the grid to `picParent`, the surface that holds the grid with its headers; the sizes may
/// come out as 0 or less when it is too small to hold anything. Widths beyond what GridWidth can
/// count stop there.
/// @param scrollBarWidth  width of VScroll1
/// @param minBandHeight   of bands that would be lower, which are scrolled then
GridGeometry SizeGrid(Extent picParent, Twips scrollBarWidth, PixelSize pixel,
                      const BandLayout& layout, Twips minBandHeight = LeastBandHeight);

/// A bar leaves one pixel free on each side inside its cells.
Rect BarRect(const Bar& bar, const GridGeometry& geometry, const BandLayout& layout);

/// Shadow and frame of the mark around a cell that spans all bands of its row.
struct TodayMark {
  Rect shadow;
  Rect frame;
};
TodayMark TodayMarkOf(int row, int column, const GridGeometry& geometry, const BandLayout& layout);

/// What lies under a point.
struct GridHit {
  int row = 0;
  /// From 1 at the top of the row.
  int band = 0;
  /// From 1; 0 outside the row's month.
  int column = 0;
  /// The column whatever the month: where the cell map is asked.
  int cellColumn = 0;
};

/// Row 13: below the last row, or more than a band above the first.
inline constexpr int RowOutside = MonthRows + 1;
/// The row at a height. What lies less than a band above the grid counts as its first band, as
/// whole numbers of bands are counted towards zero.
int RowAt(Twips y, const GridGeometry& geometry, const BandLayout& layout);

/// Nothing for a point outside the rows, right of the grid or too far left of it. Columns are
/// counted towards zero too: what lies less than a column left of the grid counts as column 1, the
/// next column width as column 0, which is outside every month.
std::optional<GridHit> HitTest(Point point, const GridGeometry& geometry, const BandLayout& layout,
                               const MonthColumns& columns);

}  // namespace velkor
