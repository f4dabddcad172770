// platform/headless/RecordingSurface.h: a surface that keeps a readable log of what is drawn.
#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Surface.h"
#include "values/PixelViews.h"

namespace velkor {

/// One log line for each call, with positions in twips from the surface's own origin, whatever the
/// view; at most three decimals, colours as #RRGGBB:
///
///     fill LEFT TOP RIGHT BOTTOM #EEE8AA
///     outline LEFT TOP RIGHT BOTTOM #FF0000 pen 1
///     line X1 Y1 X2 Y2 #FF0000 pen 1
///     text LEFT TOP RIGHT BOTTOM "subject" #000000 font "Arial" 8 bold charset 0 flags 0x40800
///     view LEFT TOP RIGHT BOTTOM origin X Y
///     leave
///     picture LEFT TOP RIGHT BOTTOM
///
/// `bold`, the charset other than the default one and empty faces are shown only where they apply.
/// In texts quotes and backslashes are escaped, control characters become \xHH.
///
/// Text metrics: a line is size * 20 * 1.2 twips high, a character half its size wide. Texts are
/// logged whole, whatever lines they are broken into.
class RecordingSurface : public Surface {
 public:
  explicit RecordingSurface(PixelSize pixel = {}) : pixels_(pixel) {}

  PixelSize Pixel() const override { return pixels_.Pixel(); }
  void Fill(const Rect& rect, Colour colour) override;
  void Outline(const Rect& rect, Colour colour, int pen) override;
  void Line(Point from, Point to, Colour colour, int pen) override;
  void Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
            TextFlags flags) override;
  Extent Measure(std::string_view text, const Font& font) override;
  Extent MeasureLines(std::string_view text, const Font& font, Twips width,
                      TextFlags flags) override;
  void EnterView(const Rect& clip, Point origin) override;
  void LeaveView() override;
  /// A picture that was copied here; what is painted on it cannot be asked by ColourAt.
  void LogPicture(const Rect& rect);

  const std::vector<std::string>& Log() const { return log_; }
  /// The lines that begin with this word.
  std::vector<std::string> Calls(std::string_view kind) const;
  /// How often Measure was called.
  int Measured() const { return measured_; }
  /// Depth of the views that were entered and not left.
  std::size_t Depth() const { return views_.size(); }
  /// Colour of the last fill, outline or straight line that reached this point (twips from the
  /// surface's origin); none where nothing was drawn.
  std::optional<Colour> ColourAt(Point point) const;
  void Clear();

 private:
  struct View {
    Rect clip;
    Point origin;
  };
  struct Painted {
    PixelRect area;
    Colour colour;
  };

  Point Origin() const { return views_.empty() ? Point{} : views_.back().origin; }
  Rect Absolute(const Rect& rect) const;
  void Paint(PixelRect area, Colour colour);

  PixelViews pixels_;
  std::vector<std::string> log_;
  /// In twips for the log.
  std::vector<View> views_;
  std::vector<Painted> painted_;
  int measured_ = 0;
};

}  // namespace velkor
