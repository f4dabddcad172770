// bench/windows/GdiCalls.h: keeps the GDI calls of a pass with all that they need made ready.
#pragma once

#include <string>
#include <vector>

#include "platform/windows/drawing/GdiSurface.h"

namespace velkor {

/// Draws nothing itself. For passes without lines, on a device context of the usual pixels.
class GdiCalls : public Surface {
 public:
  /// `measure` outlives this and owns the fonts; `dc` is its device context.
  GdiCalls(GdiSurface& measure, HDC dc) : measure_(measure), dc_(dc), views_(measure.Pixel()) {}

  /// Makes all kept calls on a device context, in their order.
  void Replay(HDC dc) const;
  std::size_t Count() const { return calls_.size(); }

  PixelSize Pixel() const override { return measure_.Pixel(); }
  void Fill(const Rect& rect, Colour colour) override;
  void Outline(const Rect& rect, Colour colour, int pen) override;
  void Line(Point, Point, Colour, int) override {}
  void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
            TextFlags flags) override;
  Extent Measure(std::string_view text, const Font& font) override {
    return measure_.Measure(text, font);
  }
  Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                      TextFlags flags) override {
    return measure_.MeasureLines(text, font, width, flags);
  }
  void EnterView(const Rect& clip, Point origin) override { views_.Enter(clip, origin); }
  void LeaveView() override { views_.Leave(); }

 private:
  struct Call {
    RECT area;
    COLORREF colour = 0;
    /// None for a filled area.
    HFONT font = nullptr;
    UINT flags = 0;
    std::wstring text = {};
    bool cut = false;
    /// What is seen of a text that is cut.
    RECT clip = {};
  };
  void Keep(const PixelRect& pixels, Colour colour);
  HFONT Ready(const Font& font);

  GdiSurface& measure_;
  HDC dc_;
  PixelViews views_;
  std::vector<Call> calls_;
};

}  // namespace velkor
