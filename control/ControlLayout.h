// control/ControlLayout.h: where the child elements of the control lie.
#pragma once

#include "values/Twips.h"
#include "view/Face.h"

namespace velkor {

struct YearPlanElements;

/// Height of the strip with the toolbar.
inline constexpr Twips StripHeight = 600;

/// Bounds of everything but the grid's own surfaces. What does not fit beside the toolbar and the
/// year is left out, the date last.
void PlaceStrip(YearPlanElements& elements, Extent control, PixelSize pixel);

/// Bounds of the grid's surfaces and its scroll bar.
/// @param scroll  VScroll1 is shown
void PlaceSurfaces(YearPlanElements& elements, const FaceLayout& face, bool scroll,
                   PixelSize pixel);

}  // namespace velkor
