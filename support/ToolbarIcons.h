// support/ToolbarIcons.h: the pictures of toolbar buttons, drawn once for every face.
#pragma once

#include <cstdint>
#include <vector>

#include "values/Colour.h"
#include "values/Twips.h"

namespace velkor {

/// Of a toolbar's button; a lower toolbar has smaller ones.
inline constexpr Twips ToolbarButtonSide = 480;
/// Around a picture on each side.
inline constexpr Twips ToolbarImageMargin = 90;

/// A colour, and how much of it covers what lies behind: 0 to 255.
struct IconPixel {
  Colour colour;
  std::uint8_t cover = 0;
};

/// Draws the picture with a number of toolbar_images, whose lines have this colour.
/// @param side  in pixels, above 0
/// @return its rows from the top, `side` pixels each; all without cover for an unknown number
std::vector<IconPixel> DrawToolbarIcon(int image, int side, Colour lines);

/// What is seen of a pixel on a ground.
Colour Over(Colour back, const IconPixel& pixel);

/// The colour of the lines of a button that cannot be pressed; opaque, so that lines which cross
/// show no darker spot.
Colour FadedLines(Colour lines, Colour back);

}  // namespace velkor
