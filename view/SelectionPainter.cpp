// view/SelectionPainter.cpp: draws the selected days and the keyboard's day cursor.
#include "view/SelectionPainter.h"

#include <algorithm>

namespace velkor {
namespace {

constexpr int FramePen = 2;
/// Pixels from a change of the selection within which its frame may change: the pen, which the
/// neighbours gain or lose, and one for edges that fall between two pixels.
constexpr int FrameReach = FramePen + 1;

/// Columns of one row, both included; none when `last` lies below `first`.
struct Columns {
  int first = 1;
  int last = 0;

  bool None() const { return last < first; }
  friend bool operator==(const Columns&, const Columns&) = default;
};

/// `ordered` is in date order.
Columns ColumnsInRow(const std::optional<Selection>& ordered, int row, const MonthColumns& month) {
  if (!ordered || row < ordered->start.row || row > ordered->end.row) return {};
  Columns columns{month.RowDayOffset[row] + 1, month.RowLastColumn[row]};
  if (row == ordered->start.row) columns.first = std::max(columns.first, ordered->start.column);
  if (row == ordered->end.row) columns.last = std::min(columns.last, ordered->end.column);
  return columns;
}

/// The least stretch in which all columns lie that are in one of the two only.
Columns Difference(const Columns& a, const Columns& b) {
  if (a.None() || b.None()) return a.None() ? b : a;
  Columns changed{std::min(a.first, b.first), std::max(a.last, b.last)};
  if (a.first == b.first) changed.first = std::min(a.last, b.last) + 1;
  if (a.last == b.last) changed.last = std::max(a.first, b.first) - 1;
  return changed;
}

Rect CellsRect(int row, const Columns& columns, const GridScene& grid) {
  const GridGeometry& geometry = grid.geometry;
  return {geometry.ColumnEdge(columns.first - 1), geometry.RowTop(grid.layout, row),
          geometry.ColumnEdge(columns.last), geometry.RowBottom(grid.layout, row)};
}

/// The rectangle, smaller by so many pixels on each side; its middle when it has not as many.
Rect Inset(const Rect& rect, int pixels, const GridScene& grid) {
  const PixelSize pixel = grid.geometry.pixel;
  const Twips x = std::min(pixels * Twips{pixel.width}, rect.Width() / 2);
  const Twips y = std::min(pixels * Twips{pixel.height}, rect.Height() / 2);
  return {rect.left + x, rect.top + y, rect.right - x, rect.bottom - y};
}

/// True when the cells' fill or a frame around them may reach what is to be drawn.
bool InSight(const Rect& cells, const GridScene& grid, const Rect& visible) {
  const Rect reached = Inset(cells, -FrameReach, grid);
  return reached.bottom > visible.top && reached.top < visible.bottom;
}

/// Calls `visit(rect)` for the cells of each row of a selection.
template <typename Visit>
void ForEachStretch(const Selection& selection, const GridScene& grid, Visit&& visit) {
  const Selection ordered = InDateOrder(selection);
  for (int row = 1; row <= MonthRows; ++row) {
    const Columns columns = ColumnsInRow(ordered, row, grid.rule.columns);
    if (!columns.None()) visit(CellsRect(row, columns, grid));
  }
}

}  // namespace

RowRects ChangedRects(const std::optional<Selection>& before, const std::optional<Selection>& after,
                      const GridScene& grid) {
  const auto ordered = [](const std::optional<Selection>& selection) {
    return selection ? std::optional(InDateOrder(*selection)) : std::nullopt;
  };
  const std::optional<Selection> from = ordered(before);
  const std::optional<Selection> to = ordered(after);
  RowRects rects;
  for (int row = 1; row <= MonthRows; ++row) {
    const Columns was = ColumnsInRow(from, row, grid.rule.columns);
    const Columns is = ColumnsInRow(to, row, grid.rule.columns);
    if (was == is) continue;
    const Columns changed = Difference(was, is);
    if (!changed.None()) rects.Add(Inset(CellsRect(row, changed, grid), -FrameReach, grid));
  }
  return rects;
}

void DrawSelectionFill(Surface& surface, const GridScene& grid, const Selection& selection,
                       const Rect& visible) {
  ForEachStretch(selection, grid, [&](const Rect& rect) {
    if (InSight(rect, grid, visible)) surface.Fill(rect, selection_colours::Fill);
  });
}

void DrawSelectionFrame(Surface& surface, const GridScene& grid, const Selection& selection,
                        const Rect& visible) {
  ForEachStretch(selection, grid, [&](const Rect& rect) {
    if (!InSight(rect, grid, visible)) return;
    surface.Outline(Inset(rect, FramePen / 2, grid), selection_colours::Frame, FramePen);
  });
}

Rect DayCursorRect(GridCell cell, const GridScene& grid) {
  return Inset(CellsRect(cell.row, {cell.column, cell.column}, grid), -FrameReach, grid);
}

void DrawDayCursor(Surface& surface, const GridScene& grid, GridCell cell, const Rect& visible) {
  const Rect rect = CellsRect(cell.row, {cell.column, cell.column}, grid);
  if (!InSight(rect, grid, visible)) return;
  // No further inside, or it would cover the day's number.
  surface.Outline(rect, selection_colours::DayCursorHalo, FramePen);
  surface.Outline(Inset(rect, FramePen / 2, grid), selection_colours::DayCursor, FramePen);
}

}  // namespace velkor
