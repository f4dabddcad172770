// view/Face.h: where the control's surfaces lie, and the drawing of all of them.
#pragma once

#include <string>

#include "platform/Surface.h"
#include "span/Locale.h"
#include "view/YearGrid.h"

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

namespace face_colours {
inline constexpr Colour Back = Colour::FromRgb(250, 250, 248);
inline constexpr Colour Frame = Colour::FromRgb(160, 160, 156);
}  // namespace face_colours

/// Free room around the surfaces.
inline constexpr Twips FaceMargin = 90;
/// Height of the strip above the grid that holds the caption alone.
inline constexpr Twips CaptionHeight = 390;

/// Width of VScroll1.
inline constexpr Twips ScrollBarWidth = 255;

/// Divides the control's area; the legend takes a fixed width on the right.
/// @param captionHeight  height of the strip above the grid
FaceLayout DivideFace(Extent control, Twips captionHeight = CaptionHeight);

/// The least height of a control that shows the whole grid without scrolling.
Twips LeastControlHeight(const YearGrid& grid, PixelSize pixel);

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
