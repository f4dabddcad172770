// platform/desktop/QtIcons.cpp: icons at any size: the toolbars' pictures and the program's own.
#include "platform/desktop/QtIcons.h"

#include <QIconEngine>
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdlib>
#include <utility>
#include <vector>

#include "support/ToolbarIcons.h"

namespace velkor {
namespace {

Colour FromQt(const QColor& colour) {
  return Colour::FromRgb(colour.red(), colour.green(), colour.blue());
}

/// An icon that is drawn for the size that it is wanted in.
class DrawnIcon : public QIconEngine {
 public:
  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap result(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return result;
  }
};

class ToolbarIcon : public DrawnIcon {
 public:
  ToolbarIcon(int image, const QPalette& palette)
      : image_(image),
        lines_(FromQt(palette.color(QPalette::Active, QPalette::WindowText))),
        faded_(FadedLines(lines_, FromQt(palette.color(QPalette::Active, QPalette::Window)))) {}

  QIconEngine* clone() const override { return new ToolbarIcon(*this); }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const int side = std::min(rect.width(), rect.height());
    if (side <= 0) return;
    const std::vector<IconPixel> pixels =
        DrawToolbarIcon(image_, side, mode == QIcon::Disabled ? faded_ : lines_);
    QImage picture(side, side, QImage::Format_ARGB32);
    for (std::size_t i = 0; i < pixels.size(); ++i) {
      const auto& [colour, cover] = pixels[i];
      const auto at = std::div(static_cast<int>(i), side);
      picture.setPixel(at.rem, at.quot, qRgba(colour.Red(), colour.Green(), colour.Blue(), cover));
    }
    painter->drawImage(rect.x() + (rect.width() - side) / 2, rect.y() + (rect.height() - side) / 2,
                       picture);
  }

 private:
  int image_;
  Colour lines_;
  Colour faded_;
};

void DrawProgram(QPainter& painter) {
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0x2F, 0x42, 0xDC));
  painter.drawRoundedRect(QRectF(1, 2, 22, 20), 3, 3);
  painter.setBrush(Qt::white);
  painter.drawRect(QRectF(3, 7, 18, 13));
  const std::array<std::pair<QRectF, QColor>, 4> bars{{
      {QRectF(4, 8.5, 9, 2), QColor(0xFF, 0x99, 0x0C)},
      {QRectF(10, 11.5, 10, 2), QColor(0x0A, 0x7F, 0x44)},
      {QRectF(5, 14.5, 6, 2), QColor(0xB6, 0x42, 0xAC)},
      {QRectF(13, 17, 6, 2), QColor(0x12, 0x8A, 0xFF)},
  }};
  for (const auto& [bar, colour] : bars) painter.fillRect(bar, colour);
}

/// On a square of 24 units.
class ProgramPicture : public DrawnIcon {
 public:
  QIconEngine* clone() const override { return new ProgramPicture(*this); }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode, QIcon::State) override {
    constexpr double Side = 24;
    const double scale = std::min(rect.width(), rect.height()) / Side;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.x() + (rect.width() - Side * scale) / 2,
                       rect.y() + (rect.height() - Side * scale) / 2);
    painter->scale(scale, scale);
    DrawProgram(*painter);
    painter->restore();
  }
};

}  // namespace

QIcon IconFor(int image, const QPalette& palette) {
  return QIcon(new ToolbarIcon(image, palette));
}

QIcon ProgramIcon() {
  return QIcon(new ProgramPicture());
}

}  // namespace velkor
