// view/Face.h: where the control's surfaces lie, and the drawing of all of them.
#pragma once

#include <string>

#include "platform/Surface.h"
#include "view/YearGrid.h"
#include "view/span/Locale.h"

namespace velkor {

/// The surfaces of the control, in its own coordinates.
struct FaceLayout {
  /// lblSelectedYear.
  Rect caption;
  /// picParent: the grid with its header row and month column.
  Rect picParent;
  Rect picHeadCol;
  Rect picHeadRow;
  /// The part of picParent in which pic1, the grid, is seen.
  Rect gridView;
  /// picCatView: the legend.
  Rect picCatView;
};

/// Width of VScroll1.
inline constexpr Twips ScrollBarWidth = 255;

/// Divides the control's area; the legend takes a fixed width on the right.
FaceLayout DivideFace(Extent control);

/// The least height of a control that shows the whole grid without scrolling.
Twips LeastControlHeight(const BandLayout& layout, PixelSize pixel);

/// What a picture of the control shows besides the grid.
struct FaceContent {
  /// "Year " and the displayed year.
  std::string caption;
  CalendarNames names;
  Font font;
  Date today;
};

/// The caption for a displayed year.
std::string YearCaption(int viewYear);

/// Draws the whole control, the grid from its top; `grid` was sized to the picParent of `layout`.
void DrawFace(Surface& surface, const FaceLayout& layout, const YearGrid& grid,
              const FaceContent& content);

}  // namespace velkor
