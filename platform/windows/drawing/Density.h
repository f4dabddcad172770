// platform/windows/drawing/Density.h: lengths, and the font of dialogs, at the density of a window.
#pragma once

#include "platform/windows/drawing/GdiHandles.h"
#include "platform/windows/system/WindowDensity.h"
#include "values/Twips.h"

namespace velkor {

/// How many dots of a window are an inch, and what lengths become by it. A window keeps the value
/// that it was laid out with, until it takes another one.
class Density {
 public:
  /// @param dots  to the inch, above 0; 96 on an ordinary screen
  constexpr explicit Density(UINT dots = USER_DEFAULT_SCREEN_DPI) : dots_(dots) {}
  friend constexpr bool operator==(const Density&, const Density&) = default;

  UINT Dots() const { return dots_; }
  /// Twips to a pixel: 15 at 96 dots to the inch.
  PixelSize Pixel() const;
  int ToPixels(Twips length) const { return ToPixel(length, Pixel().width); }
  POINT ToPixels(Point position) const { return {ToPixels(position.x), ToPixels(position.y)}; }
  PixelRect ToPixels(const Rect& bounds) const { return velkor::ToPixels(bounds, Pixel()); }
  Point ToTwips(POINT pixels) const;
  Extent ToTwips(SIZE pixels) const;
  /// A length of 96 to the inch in pixels.
  int Length(int pixelsAt96) const { return ToPixels(pixelsAt96 * TwipsPerPixel); }
  /// GetSystemMetrics.
  int Metric(int index) const { return SystemMetric(index, dots_); }

 private:
  UINT dots_;
};

/// Of a window as it is now (see DotsPerInch); null for the screen.
Density DensityOf(HWND window);

/// The font of dialogs: the user's for messages. Whoever makes the outermost window owns one and
/// answers WM_GETFONT with it: children ask their parent.
FontHandle MakeDialogFont(Density density);
/// A font as a window has it, so many times as high, and bold.
/// @return null where the window has none
FontHandle MakeHeadingFont(HFONT ordinary, double scale);

}  // namespace velkor
