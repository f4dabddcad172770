// platform/desktop/QtSurface.h: a surface over a painter, for windows, pictures and pages.
#pragma once

#include <QImage>
#include <QPainter>
#include <cstdint>

#include "platform/Surface.h"
#include "platform/desktop/QtFonts.h"
#include "values/PixelViews.h"

namespace velkor {

/// Draws with a painter that its owner keeps open and leaves alone for as long as the surface
/// lives. One logical pixel, `pixel` twips in size, is drawn as `scale` units of the painter.
/// Fonts count 96 pixels to the inch at the usual pixel, whatever resolution the device claims. On
/// a device with larger pixels than the logical ones every bar has at least one of them.
class QtSurface : public Surface {
 public:
  explicit QtSurface(QPainter& painter, PixelSize pixel = {}, double scale = 1);
  ~QtSurface() override;
  QtSurface(const QtSurface&) = delete;
  QtSurface& operator=(const QtSurface&) = delete;

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
  /// Draws a picture over a rectangle; it has the painter's own pixels where it is to be sharp.
  void DrawPicture(const Rect& rect, const QImage& picture);
  /// The pixels that the painter's device has for a rectangle of the current view.
  QSize DevicePixels(const Rect& rect) const;
  /// Another number after each call that may have drawn something.
  std::uint64_t Drawings() const { return drawings_; }

 private:
  void Paint(const PixelRect& area, Colour colour);
  void DrawLines(const PixelRect& rect, std::string_view text, const QtFont& font, TextFlags flags);
  void DrawLine(const PixelRect& rect, int top, QString line, const QtFont& font, TextFlags flags);
  void Use(const QtFont& font, Colour colour);

  QPainter& painter_;
  PixelViews views_;
  QtFonts fonts_;
  /// Device pixels to a logical one.
  double deviceScale_;
  std::uint64_t drawings_ = 0;
  /// Qt's SVG painter draws text whole whatever the clip.
  bool clips_;
  const QtFont* font_ = nullptr;
  Colour colour_ = colours::Black;
};

}  // namespace velkor
