// platform/desktop/KeptPage.h: a page that is kept until its document is whole.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "platform/desktop/QtPages.h"

namespace velkor {

/// Keeps what is drawn, to draw it later; the toolkit cannot take back what a printer was given.
class KeptPage : public Surface {
 public:
  void DrawOn(Surface& surface) const {
    for (const Call& call : calls_) call(surface);
  }

  PixelSize Pixel() const override { return PagePixel; }
  void Fill(const Rect& rect, Colour colour) override {
    Keep([=](Surface& on) { on.Fill(rect, colour); });
  }
  void Outline(const Rect& rect, Colour colour, int pen) override {
    Keep([=](Surface& on) { on.Outline(rect, colour, pen); });
  }
  void Line(Point from, Point to, Colour colour, int pen) override {
    Keep([=](Surface& on) { on.Line(from, to, colour, pen); });
  }
  void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
            TextFlags flags) override {
    Keep([=, kept = std::string(text)](Surface& on) { on.Text(rect, kept, font, colour, flags); });
  }
  Extent Measure(std::string_view text, const Font& font) override {
    return measuring_.Page().Measure(text, font);
  }
  Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                      TextFlags flags) override {
    return measuring_.Page().MeasureLines(text, font, width, flags);
  }
  void EnterView(const Rect& clip, Point origin) override {
    Keep([=](Surface& on) { on.EnterView(clip, origin); });
  }
  void LeaveView() override {
    Keep([](Surface& on) { on.LeaveView(); });
  }

 private:
  using Call = std::function<void(Surface&)>;

  void Keep(Call call) { calls_.push_back(std::move(call)); }

  std::vector<Call> calls_;
  QtMeasuringPage measuring_;
};

}  // namespace velkor
