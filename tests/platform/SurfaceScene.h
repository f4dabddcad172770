// tests/platform/SurfaceScene.h: one small drawing, and the colours that it has on every surface.
#pragma once

#include <gtest/gtest.h>

#include <functional>

#include "platform/Surface.h"

namespace velkor::scene {

inline constexpr int Width = 120;
inline constexpr int Height = 96;
inline constexpr Extent Size{Width * TwipsPerPixel, Height* TwipsPerPixel};
inline constexpr Colour Red = Colour::FromRgb(255, 0, 0);
inline constexpr Colour Green = Colour::FromRgb(0, 128, 0);
inline constexpr Colour Blue = Colour::FromRgb(0, 0, 255);
inline constexpr Colour Sand = Colour::FromRgb(238, 232, 170);
/// Where the text stands, in pixels.
inline constexpr PixelRect TextArea{60, 66, 110, 76};

inline Rect InPixels(double left, double top, double right, double bottom) {
  return {left * TwipsPerPixel, top * TwipsPerPixel, right * TwipsPerPixel, bottom * TwipsPerPixel};
}

inline void Draw(Surface& surface) {
  surface.Fill(InPixels(0, 0, Width, Height), colours::White);
  surface.Fill(InPixels(10.5, 11.5, 30.4, 30.6), Sand);
  surface.Fill(InPixels(35, 10, 35.4, 30), Red);
  surface.Outline(InPixels(40, 10, 60, 30), Red, 1);
  surface.Outline(InPixels(70, 10, 90, 30), Blue, 2);
  {
    const ViewScope outer(surface, InPixels(10, 40, 50, 70), {10.4 * 15, 40 * 15});
    surface.Fill(InPixels(-5, -5, 20, 10), Green);
    const ViewScope inner(surface, InPixels(10, 10, 100, 100), {15 * 15, 15 * 15});
    surface.Fill(InPixels(-10, -10, 100, 5), Blue);
    surface.Outline(InPixels(0, 10, 10, 30), Red, 1);
  }
  surface.Fill(InPixels(56, 40, 58, 42), colours::Black);
  surface.Line({60 * 15, 50 * 15}, {70 * 15, 50 * 15}, colours::Black, 1);
  surface.Line({80 * 15, 60 * 15}, {80 * 15, 50 * 15}, Green, 3);
  surface.Text(InPixels(TextArea.left, TextArea.top, TextArea.right, TextArea.bottom), "MWMWMWMW",
               {"", 30}, colours::Black,
               text_flags::NoPrefix | text_flags::SingleLine | text_flags::VerticalCentre);
}

/// Checks the drawing's pixels; `at` answers the colour of one.
inline void ExpectColours(const std::function<Colour(int x, int y)>& at) {
  struct Sample {
    const char* what;
    int x, y;
    Colour colour;
  };
  const Sample samples[] = {
      {"fill starts at the even pixel", 10, 12, Sand},
      {"left of the fill", 9, 12, colours::White},
      {"above the fill", 10, 11, colours::White},
      {"last pixel of the fill", 29, 30, Sand},
      {"right of the fill", 30, 30, colours::White},
      {"below the fill", 29, 31, colours::White},
      {"a bar thinner than half a pixel is left out", 35, 20, colours::White},
      {"thin outline, left edge", 40, 20, Red},
      {"thin outline, corner", 60, 30, Red},
      {"thin outline, outside the corner", 61, 31, colours::White},
      {"thin outline, inside", 41, 11, colours::White},
      {"thick outline leans left", 69, 9, Blue},
      {"thick outline, both pixels", 70, 10, Blue},
      {"thick outline, outside", 68, 8, colours::White},
      {"thick outline, inside", 71, 11, colours::White},
      {"thick outline, corner", 90, 30, Blue},
      {"thick outline, outside the corner", 91, 31, colours::White},
      {"fill in a view", 10, 40, Green},
      {"fill in a view, end", 29, 49, Green},
      {"fill in a view, clipped left", 9, 42, colours::White},
      {"fill in a view, clipped above", 12, 39, colours::White},
      {"fill in a nested view", 20, 50, Blue},
      {"fill in a nested view, end", 49, 59, Blue},
      {"fill in a nested view, clipped left", 19, 52, colours::White},
      {"fill in a nested view, clipped by the outer one", 50, 55, colours::White},
      {"fill in a nested view, clipped above", 32, 49, colours::White},
      {"outline in a nested view", 25, 66, Red},
      {"outline in a nested view, clipped", 25, 70, colours::White},
      {"after the views", 56, 40, colours::Black},
      {"line, first pixel", 60, 50, colours::Black},
      {"line, last pixel", 70, 50, colours::Black},
      {"beyond the line", 71, 50, colours::White},
      {"below the line", 65, 51, colours::White},
      {"thick line, first corner", 79, 49, Green},
      {"thick line, last corner", 81, 61, Green},
      {"beyond the thick line", 82, 55, colours::White},
  };
  for (const Sample& sample : samples) {
    const Colour found = at(sample.x, sample.y);
    EXPECT_EQ(found.value & 0xFFFFFF, sample.colour.value)
        << sample.what << " at " << sample.x << ", " << sample.y;
  }
}

/// Checks that there is text in its rectangle and none around it, `edge` pixels aside.
inline void ExpectClippedText(const std::function<Colour(int x, int y)>& at, int edge = 0) {
  int inked = 0;
  int spilled = 0;
  for (int y = TextArea.top - 4; y < Height; ++y) {
    for (int x = TextArea.left - 4; x < Width; ++x) {
      if ((at(x, y).value & 0xFFFFFF) == colours::White.value) continue;
      const bool inside = x >= TextArea.left - edge && x < TextArea.right + edge &&
                          y >= TextArea.top - edge && y < TextArea.bottom + edge;
      ++(inside ? inked : spilled);
    }
  }
  EXPECT_GT(inked, 50);
  EXPECT_EQ(spilled, 0);
}

}  // namespace velkor::scene
