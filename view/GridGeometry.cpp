// view/GridGeometry.cpp: sizes of the grid and the rectangles of its rows, bars and marks.
#include "view/GridGeometry.h"

#include <algorithm>
#include <cmath>

namespace velkor {
namespace {

/// Kept for the outlines at the grid's right and bottom edges.
constexpr int EdgePixels = 3;
constexpr double LongestGrid = 1 << 30;

/// The number, from 1, of the step of this size in which a position lies; not a number when the
/// size is no size.
double StepAt(Twips position, float size) {
  return size > 0 ? std::trunc(position / double{size}) + 1 : std::nan("");
}

/// The band counted from the grid's top; 0 outside the rows.
int GlobalBandAt(Twips y, const GridGeometry& geometry, const BandLayout& layout) {
  const double band = StepAt(y, geometry.BandHeight);
  return band >= 1 && band <= layout.TotalBands() ? static_cast<int>(band) : 0;
}

/// `band` lies in the rows.
int RowOfBand(int band, const BandLayout& layout) {
  const auto& ends = layout.BandsInRow;
  return static_cast<int>(std::lower_bound(ends.begin() + 1, ends.end(), band) - ends.begin());
}

}  // namespace

Twips HeightWithoutScrolling(const BandLayout& layout, PixelSize pixel, Twips minBandHeight) {
  return HeaderRowHeight + EdgePixels * Twips{pixel.height} + layout.TotalBands() * minBandHeight;
}

GridGeometry SizeGrid(Extent picParent, Twips scrollBarWidth, PixelSize pixel,
                      const BandLayout& layout, Twips minBandHeight) {
  GridGeometry geometry;
  geometry.pixel = pixel;
  const double height =
      RoundHalfEven(picParent.height - HeaderRowHeight - EdgePixels * double{pixel.height});
  geometry.BandHeight = static_cast<float>(height / layout.TotalBands());
  double width = picParent.width - MonthColumnWidth;
  geometry.scroll = geometry.BandHeight < minBandHeight;
  if (geometry.scroll) {
    geometry.BandHeight = static_cast<float>(minBandHeight);
    width -= scrollBarWidth + double{pixel.width};
  }
  geometry.GridWidth =
      static_cast<int>(RoundHalfEven(std::clamp(width, -LongestGrid, LongestGrid)));
  geometry.ColumnWidth =
      static_cast<float>((geometry.GridWidth - EdgePixels * double{pixel.width}) / GridColumns);
  return geometry;
}

Rect BarRect(const Bar& bar, const GridGeometry& geometry, const BandLayout& layout) {
  const double pixelWidth = geometry.pixel.width;
  const double pixelHeight = geometry.pixel.height;
  const Twips bottom = geometry.BandEdge(layout.BandsInRow[bar.row - 1] + bar.band) - pixelHeight;
  return {geometry.ColumnEdge(bar.first) + pixelWidth,
          bottom - double{geometry.BandHeight} + 2 * pixelHeight,
          geometry.ColumnEdge(bar.last) - pixelWidth, bottom};
}

TodayMark TodayMarkOf(int row, int column, const GridGeometry& geometry, const BandLayout& layout) {
  const double pixelWidth = geometry.pixel.width;
  const double pixelHeight = geometry.pixel.height;
  const Rect cell{geometry.ColumnEdge(column - 1), geometry.RowTop(layout, row),
                  geometry.ColumnEdge(column), geometry.RowBottom(layout, row)};
  return {{cell.left, cell.top, cell.right + 2 * pixelWidth, cell.bottom + 2 * pixelHeight},
          {cell.left - pixelWidth, cell.top - pixelHeight, cell.right + pixelWidth,
           cell.bottom + pixelHeight}};
}

int RowAt(Twips y, const GridGeometry& geometry, const BandLayout& layout) {
  const int band = GlobalBandAt(y, geometry, layout);
  return band > 0 ? RowOfBand(band, layout) : RowOutside;
}

std::optional<GridHit> HitTest(Point point, const GridGeometry& geometry, const BandLayout& layout,
                               const MonthColumns& columns) {
  const int band = GlobalBandAt(point.y, geometry, layout);
  const double column = StepAt(point.x, geometry.ColumnWidth);
  if (band == 0 || !(column >= 0 && column <= GridColumns)) return std::nullopt;
  GridHit hit;
  hit.row = RowOfBand(band, layout);
  hit.band = band - layout.BandsInRow[hit.row - 1];
  hit.cellColumn = static_cast<int>(column);
  const bool inMonth = hit.cellColumn > columns.RowDayOffset[hit.row] &&
                       hit.cellColumn <= columns.RowLastColumn[hit.row];
  hit.column = inMonth ? hit.cellColumn : 0;
  return hit;
}

}  // namespace velkor
