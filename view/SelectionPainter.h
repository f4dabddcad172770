// view/SelectionPainter.h: draws the selected days and the keyboard's day cursor.
#pragma once

#include <array>
#include <cstddef>
#include <optional>

#include "platform/Surface.h"
#include "view/GridScene.h"
#include "view/Selection.h"

namespace velkor {

namespace selection_colours {
inline constexpr Colour Fill = Colour::FromRgb(190, 214, 244);
inline constexpr Colour Frame = Colour::FromRgb(24, 80, 170);
inline constexpr Colour DayCursor = colours::Black;
/// Around the day cursor, so that it is seen on bars of any colour.
inline constexpr Colour DayCursorHalo = colours::White;
}  // namespace selection_colours

/// At most one rectangle for each row, from the top; needs no memory of its own.
class RowRects {
 public:
  void Add(const Rect& rect) { rects_[count_++] = rect; }

  const Rect* begin() const { return rects_.data(); }
  const Rect* end() const { return rects_.data() + count_; }

 private:
  std::array<Rect, MonthRows> rects_{};
  std::size_t count_ = 0;
};

/// What has to be drawn anew when one selection takes the place of another: the cells that are in
/// one of them only, with what the frame gains or loses around them.
RowRects ChangedRects(const std::optional<Selection>& before, const std::optional<Selection>& after,
                      const GridScene& grid);

/// Fills the cells, a stretch of days in each row over all of its bands, between the grid's
/// background and its day numbers and events. Like the following, draws only the rows that reach
/// into `visible`.
void DrawSelectionFill(Surface& surface, const GridScene& grid, const Selection& selection,
                       const Rect& visible);
/// Frames each row's stretch, above the events.
void DrawSelectionFrame(Surface& surface, const GridScene& grid, const Selection& selection,
                        const Rect& visible);

/// What has to be drawn anew when the day cursor comes to a cell or leaves it.
Rect DayCursorRect(GridCell cell, const GridScene& grid);
/// Frames the day that the keyboard is on, above everything else.
void DrawDayCursor(Surface& surface, const GridScene& grid, GridCell cell, const Rect& visible);

}  // namespace velkor
