// platform/windows/drawing/GdiSurface.h: a surface over a device context.
#pragma once

#include <cstdint>
#include <functional>
#include <vector>

#include "platform/Surface.h"
#include "platform/windows/drawing/GdiHandles.h"
#include "values/PixelViews.h"

namespace velkor {

/// A font of the system for one of the product's, as high as it is on pixels of that size.
FontHandle MakeFont(const Font& font, PixelSize pixel);

/// Draws on a device context that its owner keeps and leaves alone for as long as the surface
/// lives; afterwards it is as it was before. `pixel` is the size of one unit of the device context.
class GdiSurface : public Surface {
 public:
  explicit GdiSurface(HDC dc, PixelSize pixel = {});

  PixelSize Pixel() const override { return views_.Pixel(); }
  void Fill(const Rect& rect, Colour colour) override;
  void Outline(const Rect& rect, Colour colour, int pen) override;
  void Line(Point from, Point to, Colour colour, int pen) override;
  void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
            TextFlags flags) override;
  Extent Measure(std::string_view text, const Font& font) override;
  Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                      TextFlags flags) override;
  void EnterView(const Rect& clip, Point origin) override { views_.Enter(clip, origin); }
  void LeaveView() override { views_.Leave(); }

  /// Has someone draw on the device context, clipped to the current view, for whom the pixels of a
  /// rectangle are worked out; not where nothing of it is seen.
  void DrawBy(const Rect& rect, const std::function<void(HDC, const PixelRect&)>& draw);
  /// Counts what was drawn, so that copies know when they are old.
  std::uint64_t Drawings() const { return drawings_; }

 private:
  void Paint(const PixelRect& area, Colour colour);
  void Use(const Font& font);
  /// In the font in use; `area` is that of DrawText.
  void DrawLines(std::string_view text, RECT& area, TextFlags flags);

  HDC dc_;
  PixelViews views_;
  std::uint64_t drawings_ = 0;
  struct MadeFont {
    Font font;
    FontHandle handle;
    UINT page = 0;
  };
  /// Destroyed after `saved_` has taken them out of the device context.
  std::vector<MadeFont> fonts_;
  HFONT font_ = nullptr;
  /// Of the font in use; 0 where no code page has its characters.
  UINT page_ = 0;
  SavedDc saved_;
};

}  // namespace velkor
