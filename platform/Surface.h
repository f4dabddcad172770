// platform/Surface.h: what everything that is drawn goes through.
#pragma once

#include <cstdint>
#include <string_view>

#include "values/Colour.h"
#include "values/Font.h"
#include "values/Twips.h"

namespace velkor {

/// How text stands in its rectangle; values of the DrawText function (winuser.h).
using TextFlags = std::uint32_t;
namespace text_flags {
inline constexpr TextFlags Left = 0x0;
inline constexpr TextFlags Centre = 0x1;
inline constexpr TextFlags Right = 0x2;
/// Vertically centred; only together with SingleLine.
inline constexpr TextFlags VerticalCentre = 0x4;
/// Several lines: broken at CR, LF and CR LF, and at blanks where a line would be too wide.
inline constexpr TextFlags WordBreak = 0x10;
inline constexpr TextFlags SingleLine = 0x20;
/// Ampersands are drawn as they are.
inline constexpr TextFlags NoPrefix = 0x800;
/// With WordBreak: a word wider than the rectangle is broken too, and a last line that would be
/// visible only in part is left out, unless it is the first.
inline constexpr TextFlags EditControl = 0x2000;
/// Text that is too long ends in an ellipsis.
inline constexpr TextFlags WordEllipsis = 0x40000;
}  // namespace text_flags

/// A drawing surface. Positions are twips from the current view's origin; rectangles fall on
/// pixels by ToPixels, and nothing is antialiased except text. The surface keeps no state but the
/// stack of views; paint travels in each call. Text is UTF-8. Drawing does not fail: what cannot be
/// drawn is left out.
class Surface {
 public:
  virtual ~Surface() = default;

  /// Size of one of its pixels.
  virtual PixelSize Pixel() const = 0;

  /// Fills a rectangle, right and bottom edges excluded.
  virtual void Fill(const Rect& rect, Colour colour) = 0;
  /// Draws a rectangle's outline by OutlineBars; `pen` is its width in pixels, 1 or more.
  virtual void Outline(const Rect& rect, Colour colour, int pen) = 0;
  /// Draws a straight line, both ends included; `pen` in pixels.
  virtual void Line(Point from, Point to, Colour colour, int pen) = 0;
  /// Draws text clipped to its rectangle.
  virtual void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
                    TextFlags flags) = 0;
  /// Width and height of one line of text.
  virtual Extent Measure(std::string_view text, const Font& font) = 0;
  /// Width of the widest line and height of all lines that Text makes of a text in a rectangle of
  /// this width, which is high enough. A line end that ends the text begins no line.
  /// @param flags  as for Text, with WordBreak
  virtual Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                              TextFlags flags) = 0;

  /// From here to the matching LeaveView, positions count from `origin` and drawing is clipped to
  /// `clip`; both are given in the view in force before. Views nest.
  virtual void EnterView(const Rect& clip, Point origin) = 0;
  virtual void LeaveView() = 0;
};

/// Enters a view for as long as it lives.
class ViewScope {
 public:
  ViewScope(Surface& surface, const Rect& clip, Point origin) : surface_(surface) {
    surface_.EnterView(clip, origin);
  }
  ~ViewScope() { surface_.LeaveView(); }
  ViewScope(const ViewScope&) = delete;
  ViewScope& operator=(const ViewScope&) = delete;

 private:
  Surface& surface_;
};

}  // namespace velkor
