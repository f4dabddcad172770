// values/PixelViews.h: the nested views of a surface, in pixels.
#pragma once

#include <algorithm>
#include <vector>

#include "values/Twips.h"

namespace velkor {

/// Where positions count from and what drawing is clipped to. Origins fall on whole pixels, so
/// that every surface draws a view alike. Outside all views positions count from 0 and a square of
/// 2^21 pixels around it can be drawn on.
class PixelViews {
 public:
  explicit PixelViews(PixelSize pixel = {}) : pixel_(pixel) {}

  PixelSize Pixel() const { return pixel_; }
  int Depth() const { return static_cast<int>(views_.size()) - 1; }

  void Enter(const Rect& clip, Point origin) {
    const View& outer = views_.back();
    const PixelRect at = ToPixels({origin.x, origin.y, origin.x, origin.y}, pixel_);
    views_.push_back({Intersection(Pixels(clip), outer.clip),
                      std::clamp(outer.x + at.left, -Limit, Limit),
                      std::clamp(outer.y + at.top, -Limit, Limit)});
  }
  /// Does nothing outside all views.
  void Leave() {
    if (views_.size() > 1) views_.pop_back();
  }

  const PixelRect& Clip() const { return views_.back().clip; }
  /// The pixels of a rectangle given in the current view, not yet clipped.
  PixelRect Pixels(const Rect& rect) const {
    const View& view = views_.back();
    const PixelRect pixels = ToPixels(rect, pixel_);
    return {pixels.left + view.x, pixels.top + view.y, pixels.right + view.x,
            pixels.bottom + view.y};
  }
  PixelRect Clipped(const PixelRect& pixels) const { return Intersection(pixels, Clip()); }

 private:
  struct View {
    PixelRect clip;
    int x = 0;
    int y = 0;
  };
  static constexpr int Limit = 1 << 28;
  static constexpr int Side = 1 << 20;

  PixelSize pixel_;
  // Not an initializer list: GCC 12 warns of its copy where the constructor is inlined.
  std::vector<View> views_ = std::vector<View>(1, View{{-Side, -Side, Side, Side}});
};

}  // namespace velkor
