// view/Frame.h: outlines whose pen is a pixel on screen and a length on paper.
#pragma once

#include <cmath>

#include "platform/Surface.h"

namespace velkor {

/// Of the frames around the control's parts.
inline constexpr Colour FrameColour = Colour::FromRgb(160, 160, 156);

/// Outlines a rectangle.
/// @param pen  a length, centred on the edges by whole twips, corners included; 0 for one pixel of
///             the surface
inline void DrawFrame(Surface& surface, const Rect& rect, Colour colour, Twips pen) {
  if (pen <= 0) {
    surface.Outline(rect, colour, 1);
    return;
  }
  const Twips before = std::floor(pen / 2);
  const Twips after = pen - before;
  const Rect outer{rect.left - before, rect.top - before, rect.right + after, rect.bottom + after};
  const Rect inner{rect.left + after, rect.top + after, rect.right - before, rect.bottom - before};
  surface.Fill({outer.left, outer.top, outer.right, inner.top}, colour);
  surface.Fill({outer.left, inner.bottom, outer.right, outer.bottom}, colour);
  surface.Fill({outer.left, inner.top, inner.left, inner.bottom}, colour);
  surface.Fill({inner.right, inner.top, outer.right, inner.bottom}, colour);
}

}  // namespace velkor
