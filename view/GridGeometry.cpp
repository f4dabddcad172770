// view/GridGeometry.cpp: sizes of the grid and the rectangles of its rows, bars and marks.
#include "view/GridGeometry.h"

#include <algorithm>
#include <cmath>

namespace velkor {
namespace {

/// Kept for the outlines at the grid's right and bottom edges.
constexpr int EdgePixels = 3;
constexpr double LongestGrid = 1 << 30;

}  // namespace

Twips HeightWithoutScrolling(const BandLayout& layout, PixelSize pixel) {
  return HeaderRowHeight + EdgePixels * Twips{pixel.height} + layout.TotalBands() * LeastBandHeight;
}

GridGeometry SizeGrid(Extent picParent, Twips scrollBarWidth, PixelSize pixel,
                      const BandLayout& layout) {
  GridGeometry geometry;
  geometry.pixel = pixel;
  const double height =
      RoundHalfEven(picParent.height - HeaderRowHeight - EdgePixels * double{pixel.height});
  geometry.BandHeight = static_cast<float>(height / layout.TotalBands());
  double width = picParent.width - MonthColumnWidth;
  geometry.scroll = geometry.BandHeight < LeastBandHeight;
  if (geometry.scroll) {
    geometry.BandHeight = static_cast<float>(LeastBandHeight);
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

std::optional<GridHit> HitTest(Point point, const GridGeometry& geometry, const BandLayout& layout,
                               const MonthColumns& columns) {
  if (!(geometry.ColumnWidth > 0) || !(geometry.BandHeight > 0)) return std::nullopt;
  const double band = std::floor(point.y / double{geometry.BandHeight}) + 1;
  const double column = std::floor(point.x / double{geometry.ColumnWidth}) + 1;
  const bool inside =
      band >= 1 && band <= layout.TotalBands() && column >= 0 && column <= GridColumns;
  if (!inside) return std::nullopt;
  const int globalBand = static_cast<int>(band);
  const auto rowEnd =
      std::lower_bound(layout.BandsInRow.begin() + 1, layout.BandsInRow.end(), globalBand);
  GridHit hit;
  hit.row = static_cast<int>(rowEnd - layout.BandsInRow.begin());
  hit.band = globalBand - layout.BandsInRow[hit.row - 1];
  hit.cellColumn = static_cast<int>(column);
  const bool inMonth = hit.cellColumn > columns.RowDayOffset[hit.row] &&
                       hit.cellColumn <= columns.RowLastColumn[hit.row];
  hit.column = inMonth ? hit.cellColumn : 0;
  return hit;
}

}  // namespace velkor
