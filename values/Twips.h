// values/Twips.h: points, sizes and rectangles in twips, and how they fall on pixels.
#pragma once

#include <algorithm>
#include <array>
#include <cmath>
#include <cstdint>
#include <limits>

namespace velkor {

/// A length in twips, 1440 to the inch; a double, since a column's width is a fraction.
using Twips = double;

/// Twips to one pixel of an ordinary screen (96 pixels to the inch).
inline constexpr Twips TwipsPerPixel = 15;

/// Of a font's size.
inline constexpr double TwipsPerPoint = 20;

/// As print settings are converted.
inline constexpr double TwipsPerMillimetre = 56.7;

struct Point {
  Twips x = 0;
  Twips y = 0;
};

struct Extent {
  Twips width = 0;
  Twips height = 0;
};

struct Rect {
  Twips left = 0;
  Twips top = 0;
  Twips right = 0;
  Twips bottom = 0;

  constexpr Twips Width() const { return right - left; }
  constexpr Twips Height() const { return bottom - top; }
  friend constexpr bool operator==(const Rect&, const Rect&) = default;
};

/// Size of one pixel in twips (`PixelWidth`, `PixelHeight`); both above 0.
struct PixelSize {
  float width = static_cast<float>(TwipsPerPixel);
  float height = static_cast<float>(TwipsPerPixel);
};

/// A rectangle of whole pixels; right and bottom are exclusive.
struct PixelRect {
  int left = 0;
  int top = 0;
  int right = 0;
  int bottom = 0;

  constexpr int Width() const { return right - left; }
  constexpr int Height() const { return bottom - top; }
  friend constexpr bool operator==(const PixelRect&, const PixelRect&) = default;
};

/// What two rectangles share; width or height at or below 0 when that is nothing.
constexpr PixelRect Intersection(const PixelRect& a, const PixelRect& b) {
  return {std::max(a.left, b.left), std::max(a.top, b.top), std::min(a.right, b.right),
          std::min(a.bottom, b.bottom)};
}

/// To the nearest whole number, ties to the even one.
inline double RoundHalfEven(double value) {
  return std::nearbyint(value);
}

/// To the nearest whole twip; lengths beyond what can be counted stop there.
inline std::int32_t WholeTwips(Twips length) {
  using Limits = std::numeric_limits<std::int32_t>;
  return static_cast<std::int32_t>(
      std::fmin(std::fmax(RoundHalfEven(length), Limits::min()), Limits::max()));
}

/// The pixel whose edge is nearest to a length; lengths beyond what a raster can hold stop there.
inline int ToPixel(Twips length, float pixel) {
  constexpr double Limit = 1 << 28;
  const double position = length / static_cast<double>(pixel);
  // What is no number stops at the lower end. Ties go to even as in RoundHalfEven, but by no call:
  // some libraries take longer for it than drawing a small bar does.
  const double within = position > -Limit ? (position < Limit ? position : Limit) : -Limit;
  const int whole = static_cast<int>(within);
  const double rest = within - whole;
  const double tie = whole % 2 == 0 ? 0.5 : std::nextafter(0.5, 0.0);
  return whole + (rest > tie) - (rest < -tie);
}

/// Every surface turns rectangles into pixels by this rule, so that all of them draw the same.
inline PixelRect ToPixels(const Rect& rect, PixelSize pixel) {
  return {ToPixel(rect.left, pixel.width), ToPixel(rect.top, pixel.height),
          ToPixel(rect.right, pixel.width), ToPixel(rect.bottom, pixel.height)};
}

/// The four bars (top, bottom, left, right) that outline a rectangle with a pen of `pen` pixels.
/// The pen is centred on the edges, an even pen leaning left and up, and the corners at right and
/// bottom belong to the outline. Top and bottom span the corners.
inline std::array<PixelRect, 4> OutlineBars(const PixelRect& rect, int pen) {
  const int before = pen / 2;
  const int after = pen - before;
  const int left = rect.left - before;
  const int right = rect.right + after;
  return {PixelRect{left, rect.top - before, right, rect.top + after},
          PixelRect{left, rect.bottom - before, right, rect.bottom + after},
          PixelRect{left, rect.top + after, rect.left + after, rect.bottom - before},
          PixelRect{rect.right - before, rect.top + after, right, rect.bottom - before}};
}

/// The bar that a level or upright line covers, both ends included, by a pen of `pen` pixels that
/// leans left and up when it is even.
constexpr PixelRect LineBar(const PixelRect& ends, int pen) {
  const int before = pen / 2;
  const int after = pen - before;
  return {std::min(ends.left, ends.right) - before, std::min(ends.top, ends.bottom) - before,
          std::max(ends.left, ends.right) + after, std::max(ends.top, ends.bottom) + after};
}

}  // namespace velkor
