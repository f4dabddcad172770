// bench/CallRecorder.h: keeps the drawing calls of a pass, so that they can be made again bare.
#pragma once

#include <string>
#include <vector>

#include "platform/Surface.h"

namespace velkor {

/// Measures by another surface and draws nothing itself. For passes without lines.
class CallRecorder : public Surface {
 public:
  /// `measure` outlives this.
  explicit CallRecorder(Surface& measure) : measure_(measure) {}

  /// Makes all kept calls on a surface, in their order.
  void Replay(Surface& surface) const {
    for (const Call& call : calls_) {
      switch (call.kind) {
        case Kind::Fill:
          surface.Fill(call.rect, call.colour);
          break;
        case Kind::Outline:
          surface.Outline(call.rect, call.colour, call.pen);
          break;
        case Kind::Text:
          surface.Text(call.rect, call.text, fonts_[call.font], call.colour, call.flags);
          break;
        case Kind::View:
          surface.EnterView(call.rect, call.origin);
          break;
        case Kind::Leave:
          surface.LeaveView();
          break;
      }
    }
  }
  std::size_t Count() const { return calls_.size(); }

  PixelSize Pixel() const override { return measure_.Pixel(); }
  void Fill(const Rect& rect, Colour colour) override {
    calls_.push_back({.kind = Kind::Fill, .rect = rect, .colour = colour});
  }
  void Outline(const Rect& rect, Colour colour, int pen) override {
    calls_.push_back({.kind = Kind::Outline, .rect = rect, .colour = colour, .pen = pen});
  }
  void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
            TextFlags flags) override {
    if (fonts_.empty() || fonts_.back() != font) fonts_.push_back(font);
    calls_.push_back({.kind = Kind::Text,
                      .rect = rect,
                      .colour = colour,
                      .text = std::string(text),
                      .font = fonts_.size() - 1,
                      .flags = flags});
  }
  Extent Measure(std::string_view text, const Font& font) override {
    return measure_.Measure(text, font);
  }
  Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                      TextFlags flags) override {
    return measure_.MeasureLines(text, font, width, flags);
  }
  void Line(Point, Point, Colour, int) override {}
  void EnterView(const Rect& clip, Point origin) override {
    calls_.push_back({.kind = Kind::View, .rect = clip, .origin = origin});
  }
  void LeaveView() override { calls_.push_back({.kind = Kind::Leave}); }

 private:
  enum class Kind { Fill, Outline, Text, View, Leave };
  struct Call {
    Kind kind;
    Rect rect = {};
    Colour colour = {};
    int pen = 0;
    std::string text = {};
    std::size_t font = 0;
    TextFlags flags = 0;
    Point origin = {};
  };

  Surface& measure_;
  std::vector<Font> fonts_;
  std::vector<Call> calls_;
};

}  // namespace velkor
