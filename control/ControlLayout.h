// control/ControlLayout.h: where the child elements of the control lie.
#pragma once

#include "values/Twips.h"

namespace velkor {

struct YearPlanElements;

/// What stands above the grid.
enum class StripKind {
  /// Toolbar, year, date, button and status.
  Commands,
  /// The year alone: the control as a picture, in which nothing can be pressed or scrolled.
  Caption,
};

/// Height of what stands above the grid.
Twips StripHeight(StripKind strip);

/// The parts of the control, in its own coordinates, each without the right and bottom lines of its
/// frame.
struct ControlAreas {
  /// picParent: the grid with its header row and month column.
  Rect grid;
  /// picCatView: the legend.
  Rect legend;
};

/// Divides the control's area; the legend takes a fixed width on the right.
ControlAreas DivideControl(Extent control, StripKind strip);

/// The least height of a control that shows the whole grid without scrolling.
/// @param gridHeight  as HeightWithoutScrolling gives it
Twips LeastControlHeight(Twips gridHeight, StripKind strip);

/// A part with its whole frame. One that is too small for anything has no room, never less.
Rect WithFrame(const Rect& area, PixelSize pixel);

/// Bounds of everything above the grid. What does not fit beside the toolbar and the year is left
/// out, the date last.
void PlaceStrip(YearPlanElements& elements, Extent control, PixelSize pixel, StripKind strip);

/// Bounds of picParent and of what it holds.
/// @param scroll  VScroll1 is shown
void PlaceSurfaces(YearPlanElements& elements, const Rect& area, bool scroll, PixelSize pixel);

}  // namespace velkor
