// platform/desktop/QtIcons.cpp: line icons on a square of 24 units.
#include "platform/desktop/QtIcons.h"

#include <QIconEngine>
#include <QPainter>
#include <QPainterPath>
#include <array>
#include <utility>

#include "platform/Elements.h"

namespace velkor {
namespace {

constexpr double Side = 24;
constexpr double LineWidth = 2;

using Draw = void (*)(QPainter&);

void Polyline(QPainter& painter, std::initializer_list<QPointF> points) {
  painter.drawPolyline(points.begin(), static_cast<int>(points.size()));
}

void DrawBack(QPainter& painter) {
  Polyline(painter, {{11, 5}, {4, 12}, {11, 19}});
  painter.drawLine(QPointF(4.5, 12), QPointF(20, 12));
}

void DrawNext(QPainter& painter) {
  Polyline(painter, {{13, 5}, {20, 12}, {13, 19}});
  painter.drawLine(QPointF(19.5, 12), QPointF(4, 12));
}

void DrawFilter(QPainter& painter) {
  painter.drawPolygon(QPolygonF({{3, 4}, {21, 4}, {14, 12.5}, {14, 18}, {10, 20.5}, {10, 12.5}}));
}

/// Filled, and with a mark of another colour.
void DrawActiveFilter(QPainter& painter) {
  painter.save();
  painter.setBrush(painter.pen().color());
  DrawFilter(painter);
  painter.setPen(Qt::NoPen);
  painter.setBrush(QColor(0xE8, 0x59, 0x0C));
  painter.drawEllipse(QPointF(18, 17), 5.5, 5.5);
  painter.restore();
}

void DrawPrint(QPainter& painter) {
  Polyline(painter, {{7, 8}, {7, 3}, {17, 3}, {17, 8}});
  Polyline(painter, {{7, 17}, {3, 17}, {3, 8}, {21, 8}, {21, 17}, {17, 17}});
  painter.drawRect(QRectF(7, 14, 10, 7));
}

/// With a gear that its lines make room for.
void DrawPrintSetup(QPainter& painter) {
  Polyline(painter, {{7, 8}, {7, 3}, {17, 3}, {17, 8}});
  Polyline(painter, {{7, 17}, {3, 17}, {3, 8}, {21, 8}, {21, 10}});
  Polyline(painter, {{10, 14}, {7, 14}, {7, 21}, {10, 21}});
  const QPointF centre(17, 17);
  painter.drawEllipse(centre, 3, 3);
  constexpr int Teeth = 8;
  for (int tooth = 0; tooth < Teeth; ++tooth) {
    const QLineF spoke = QLineF::fromPolar(1, tooth * 360.0 / Teeth);
    painter.drawLine(centre + spoke.p2() * 4, centre + spoke.p2() * 5.3);
  }
}

/// A sheet with its margins.
void DrawPageSetup(QPainter& painter) {
  painter.drawRect(QRectF(4, 3, 16, 18));
  QPen margin = painter.pen();
  margin.setWidthF(LineWidth / 2);
  painter.setPen(margin);
  for (const double x : {7.5, 16.5}) painter.drawLine(QPointF(x, 4), QPointF(x, 20));
  for (const double y : {6.5, 17.5}) painter.drawLine(QPointF(5, y), QPointF(19, y));
}

void DrawZoom(QPainter& painter) {
  painter.drawEllipse(QPointF(10, 10), 6.5, 6.5);
  painter.drawLine(QPointF(15, 15), QPointF(21, 21));
}

void DrawOpen(QPainter& painter) {
  Polyline(painter, {{4, 19}, {3, 19}, {3, 5}, {9, 5}, {11, 8}, {19, 8}, {19, 11}});
  painter.drawPolygon(QPolygonF({{4, 19}, {7, 11}, {22, 11}, {19, 19}}));
}

void DrawSave(QPainter& painter) {
  painter.drawPolygon(QPolygonF({{4, 4}, {16, 4}, {20, 8}, {20, 20}, {4, 20}}));
  Polyline(painter, {{8, 4}, {8, 9}, {15, 9}, {15, 4}});
  Polyline(painter, {{7, 20}, {7, 14}, {17, 14}, {17, 20}});
}

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

/// Opaque, so that lines which cross show no darker spot.
QColor Faded(const QColor& text, const QColor& back) {
  const auto mix = [](int a, int b) { return (35 * a + 65 * b) / 100; };
  return QColor(mix(text.red(), back.red()), mix(text.green(), back.green()),
                mix(text.blue(), back.blue()));
}

class LineIcon : public QIconEngine {
 public:
  LineIcon(Draw draw, const QPalette& palette)
      : draw_(draw),
        text_(palette.color(QPalette::Active, QPalette::WindowText)),
        faded_(Faded(text_, palette.color(QPalette::Active, QPalette::Window))) {}

  QIconEngine* clone() const override { return new LineIcon(*this); }

  QPixmap pixmap(const QSize& size, QIcon::Mode mode, QIcon::State state) override {
    QPixmap result(size);
    result.fill(Qt::transparent);
    QPainter painter(&result);
    paint(&painter, QRect(QPoint(0, 0), size), mode, state);
    return result;
  }

  void paint(QPainter* painter, const QRect& rect, QIcon::Mode mode, QIcon::State) override {
    const QColor colour = mode == QIcon::Disabled ? faded_ : text_;
    const double scale = std::min(rect.width(), rect.height()) / Side;
    painter->save();
    painter->setRenderHint(QPainter::Antialiasing);
    painter->translate(rect.x() + (rect.width() - Side * scale) / 2,
                       rect.y() + (rect.height() - Side * scale) / 2);
    painter->scale(scale, scale);
    painter->setPen(QPen(colour, LineWidth, Qt::SolidLine, Qt::RoundCap, Qt::RoundJoin));
    draw_(*painter);
    painter->restore();
  }

 private:
  Draw draw_;
  QColor text_;
  QColor faded_;
};

}  // namespace

QIcon IconFor(int image, const QPalette& palette) {
  static constexpr std::array<std::pair<int, Draw>, 10> Icons{{
      {toolbar_images::Back, DrawBack},
      {toolbar_images::Next, DrawNext},
      {toolbar_images::Print, DrawPrint},
      {toolbar_images::Filter, DrawFilter},
      {toolbar_images::ActiveFilter, DrawActiveFilter},
      {toolbar_images::Open, DrawOpen},
      {toolbar_images::Save, DrawSave},
      {toolbar_images::PrintSetup, DrawPrintSetup},
      {toolbar_images::PageSetup, DrawPageSetup},
      {toolbar_images::Zoom, DrawZoom},
  }};
  for (const auto& [number, draw] : Icons) {
    if (number == image) return QIcon(new LineIcon(draw, palette));
  }
  return {};
}

QIcon ProgramIcon() {
  return QIcon(new LineIcon(DrawProgram, QPalette()));
}

}  // namespace velkor
