// platform/desktop/QtSurface.cpp: bars as plain fills, text by the rules of DrawText.
#include "platform/desktop/QtSurface.h"

#include <QPaintEngine>
#include <algorithm>
#include <cmath>

#include "support/TextLines.h"
#include "support/TextPrefixes.h"
#include "values/Twips.h"

namespace velkor {
namespace {

QColor ToQt(Colour colour) {
  return QColor(colour.Red(), colour.Green(), colour.Blue());
}

QRect ToQt(const PixelRect& rect) {
  return QRect(rect.left, rect.top, rect.Width(), rect.Height());
}

/// From one pixel of the device to another, at least one apart; in logical ones.
QRectF OnDevicePixels(const PixelRect& rect, double scale) {
  const auto from = [scale](int edge) { return std::round(edge * scale); };
  const double left = from(rect.left);
  const double top = from(rect.top);
  return QRectF(left / scale, top / scale, std::max(1.0, from(rect.right) - left) / scale,
                std::max(1.0, from(rect.bottom) - top) / scale);
}

/// The text of a call; control characters, which no file format takes, become blanks.
QString Readable(std::string_view text) {
  QString result = QString::fromUtf8(text.data(), static_cast<qsizetype>(text.size()));
  const auto isControl = [](QChar c) { return c.unicode() < u' ' && c != u'\n'; };
  if (std::any_of(result.cbegin(), result.cend(), isControl)) {
    std::replace_if(result.begin(), result.end(), isControl, QChar(u' '));
  }
  return result;
}

/// A line that is too high gives up the room above its letters before it loses their feet.
int TopOfFirstLine(const PixelRect& rect, const QtFont& font) {
  return rect.top - std::clamp(font.Height() - rect.Height(), 0, font.Leading());
}

}  // namespace

QtSurface::QtSurface(QPainter& painter, PixelSize pixel, double scale)
    : painter_(painter),
      views_(pixel),
      fonts_(TwipsPerPoint / static_cast<double>(pixel.height)),
      deviceScale_(scale),
      clips_(painter.paintEngine()->type() != QPaintEngine::SVG) {
  painter_.save();
  painter_.scale(scale, scale);
  deviceScale_ = painter_.deviceTransform().m11();
  painter_.setRenderHint(QPainter::Antialiasing, false);
  painter_.setRenderHint(QPainter::TextAntialiasing, true);
}

QtSurface::~QtSurface() {
  painter_.restore();
}

void QtSurface::Paint(const PixelRect& area, Colour colour) {
  const PixelRect seen = views_.Clipped(area);
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  ++drawings_;
  if (deviceScale_ < 1) {
    painter_.fillRect(OnDevicePixels(seen, deviceScale_), ToQt(colour));
  } else {
    painter_.fillRect(ToQt(seen), ToQt(colour));
  }
}

void QtSurface::Fill(const Rect& rect, Colour colour) {
  Paint(views_.Pixels(rect), colour);
}

void QtSurface::Outline(const Rect& rect, Colour colour, int pen) {
  for (const PixelRect& bar : OutlineBars(views_.Pixels(rect), pen)) Paint(bar, colour);
}

void QtSurface::Line(Point from, Point to, Colour colour, int pen) {
  const PixelRect ends = views_.Pixels({from.x, from.y, to.x, to.y});
  if (ends.Width() == 0 || ends.Height() == 0) {
    Paint(LineBar(ends, pen), colour);
    return;
  }
  ++drawings_;
  painter_.save();
  painter_.setClipRect(ToQt(views_.Clip()), Qt::IntersectClip);
  painter_.setPen(QPen(ToQt(colour), pen));
  painter_.drawLine(ends.left, ends.top, ends.right, ends.bottom);
  painter_.restore();
}

QSize QtSurface::DevicePixels(const Rect& rect) const {
  const QRectF device = painter_.deviceTransform().mapRect(QRectF(ToQt(views_.Pixels(rect))));
  return device.size().toSize();
}

void QtSurface::DrawPicture(const Rect& rect, const QImage& picture) {
  const PixelRect pixels = views_.Pixels(rect);
  const PixelRect seen = views_.Clipped(pixels);
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  ++drawings_;
  painter_.save();
  painter_.setClipRect(ToQt(seen), Qt::IntersectClip);
  painter_.setRenderHint(QPainter::SmoothPixmapTransform);
  painter_.drawImage(ToQt(pixels), picture);
  painter_.restore();
}

void QtSurface::Use(const QtFont& font, Colour colour) {
  if (font_ != nullptr && colour_ == colour) {
    if (font_ != &font) painter_.setFont(font.Face());
  } else {
    painter_.setFont(font.Face());
    painter_.setPen(ToQt(colour));
  }
  font_ = &font;
  colour_ = colour;
}

void QtSurface::Text(const Rect& rect, std::string_view text, const Font& font, Colour colour,
                     TextFlags flags) {
  const PixelRect pixels = views_.Pixels(rect);
  const PixelRect seen = views_.Clipped(pixels);
  if (seen.Width() <= 0 || seen.Height() <= 0) return;
  ++drawings_;
  const QtFont& face = fonts_.For(font);
  Use(face, colour);
  const bool literal = (flags & text_flags::NoPrefix) != 0;
  if ((flags & text_flags::WordBreak) != 0) {
    if (literal) return DrawLines(pixels, text, face, flags);
    return DrawLines(pixels, WithoutPrefixes(text), face, flags);
  }
  QString all = Readable(literal ? text : WithoutPrefixes(text));
  if ((flags & text_flags::SingleLine) != 0 || !all.contains(u'\n')) {
    const bool centred = (flags & text_flags::VerticalCentre) != 0;
    const int top =
        centred ? pixels.top + (pixels.Height() - face.Height()) / 2 : TopOfFirstLine(pixels, face);
    DrawLine(pixels, top, std::move(all), face, flags);
    return;
  }
  int top = pixels.top;
  for (const QString& line : all.split(u'\n')) {
    if (top >= seen.bottom) return;
    DrawLine(pixels, top, line, face, flags);
    top += face.Height();
  }
}

void QtSurface::DrawLines(const PixelRect& rect, std::string_view text, const QtFont& font,
                          TextFlags flags) {
  const int end = views_.Clipped(rect).bottom;
  const bool wholeLinesOnly = (flags & text_flags::EditControl) != 0;
  int top = TopOfFirstLine(rect, font);
  const auto widthOf = [&](std::string_view piece) { return font.Width(Readable(piece)); };
  ForEachLine(text, rect.Width(), widthOf, [&](std::string_view line) {
    DrawLine(rect, top, Readable(line), font, flags);
    top += font.Height();
    return top < end && !(wholeLinesOnly && top + font.Height() > rect.bottom);
  });
}

void QtSurface::DrawLine(const PixelRect& rect, int top, QString line, const QtFont& font,
                         TextFlags flags) {
  const int width = rect.Width();
  const bool fits = font.SurelyFits(line.size(), width);
  const bool ellipsis = (flags & text_flags::WordEllipsis) != 0 || !clips_;
  const bool leftAligned = (flags & (text_flags::Centre | text_flags::Right)) == 0;
  if (!fits && ellipsis) line = font.WithEllipsis(line, width);
  // What stands at the left and is known to fit need not be measured. A lone ellipsis may not fit.
  const bool inside = fits || (ellipsis && line.size() > 1);
  const double drawn = leftAligned && inside ? width : font.Width(line);
  double left = rect.left;
  if ((flags & text_flags::Centre) != 0) left += std::floor((width - drawn) / 2);
  if ((flags & text_flags::Right) != 0) left += width - drawn;

  const PixelRect ink{static_cast<int>(std::floor(left)), top,
                      static_cast<int>(std::ceil(left + drawn)), top + font.Height()};
  const PixelRect seen = views_.Clipped(rect);
  const QPointF start(left, top + font.Ascent());
  if (Intersection(ink, seen) == ink) {
    painter_.drawText(start, line);
    return;
  }
  painter_.save();
  painter_.setClipRect(ToQt(seen), Qt::IntersectClip);
  painter_.drawText(start, line);
  painter_.restore();
}

Extent QtSurface::Measure(std::string_view text, const Font& font) {
  const QtFont& face = fonts_.For(font);
  const double pixels = std::ceil(face.Width(Readable(text)) - 1e-3);
  const PixelSize pixel = Pixel();
  return {pixels * static_cast<double>(pixel.width),
          face.Height() * static_cast<double>(pixel.height)};
}

Extent QtSurface::MeasureLines(std::string_view text, const Font& font, Twips width,
                               TextFlags flags) {
  const QtFont& face = fonts_.For(font);
  const bool literal = (flags & text_flags::NoPrefix) != 0;
  const std::string all = literal ? std::string(text) : WithoutPrefixes(text);
  const PixelSize pixel = Pixel();
  const auto widthOf = [&](std::string_view piece) { return face.Width(Readable(piece)); };
  const Extent pixels = LinesExtent(all, ToPixel(width, pixel.width), face.Height(), widthOf);
  return {std::ceil(pixels.width - 1e-3) * static_cast<double>(pixel.width),
          pixels.height * static_cast<double>(pixel.height)};
}

}  // namespace velkor
