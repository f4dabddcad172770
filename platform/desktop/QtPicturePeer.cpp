// platform/desktop/QtPicturePeer.cpp: pictures: painted sharply, and hearing pointer and keys.
#include <QHelpEvent>
#include <QKeyEvent>
#include <QMouseEvent>
#include <QPaintEvent>
#include <QPainter>
#include <QToolTip>
#include <QWheelEvent>
#include <cmath>
#include <optional>

#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtSurface.h"

namespace velkor {
namespace {

/// Eighths of a degree to one notch of a wheel (QWheelEvent::angleDelta).
constexpr double AnglePerNotch = 120;

std::optional<MouseButton> ButtonOf(const QMouseEvent& event) {
  if (event.button() == Qt::LeftButton) return MouseButton::Left;
  if (event.button() == Qt::RightButton) return MouseButton::Right;
  return std::nullopt;
}

std::optional<Key> KeyOf(const QKeyEvent& event) {
  const Qt::KeyboardModifiers modifiers = event.modifiers() & ~Qt::KeypadModifier;
  if (event.key() == Qt::Key_F10 && modifiers == Qt::ShiftModifier) return Key::Menu;
  if ((modifiers & ~Qt::ShiftModifier) != Qt::NoModifier) return std::nullopt;
  switch (event.key()) {
    case Qt::Key_Left:
      return Key::Left;
    case Qt::Key_Right:
      return Key::Right;
    case Qt::Key_Up:
      return Key::Up;
    case Qt::Key_Down:
      return Key::Down;
    case Qt::Key_Home:
      return Key::Home;
    case Qt::Key_End:
      return Key::End;
    case Qt::Key_PageUp:
      return Key::PageUp;
    case Qt::Key_PageDown:
      return Key::PageDown;
    case Qt::Key_Return:
    case Qt::Key_Enter:
      return Key::Enter;
    case Qt::Key_Space:
      return Key::Space;
    case Qt::Key_Delete:
      return Key::Delete;
    case Qt::Key_Menu:
      return Key::Menu;
    default:
      return std::nullopt;
  }
}

Point ToTwips(QPointF pixels) {
  return {pixels.x() * TwipsPerPixel, pixels.y() * TwipsPerPixel};
}

class PicturePeer : public QtPeer<QWidget, PictureBox> {
 public:
  PicturePeer(PictureBox& picture, QWidget* parent, Placement placement)
      : QtPeer(picture, parent, placement) {
    setMouseTracking(true);
    if (Mirrored().onKeyDown) setFocusPolicy(Qt::StrongFocus);
    Changed();
  }

  void Invalidate(const Rect& part) override {
    const auto pixel = [](Twips length, auto round) {
      // Beyond any widget, so that no length leaves the range of an int.
      constexpr double Far = 1 << 24;
      return static_cast<int>(std::fmin(std::fmax(round(length / TwipsPerPixel), -Far), Far));
    };
    const auto floor = [](double value) { return std::floor(value); };
    const auto ceil = [](double value) { return std::ceil(value); };
    const QPoint from(pixel(part.left, floor), pixel(part.top, floor));
    const QPoint to(pixel(part.right, ceil), pixel(part.bottom, ceil));
    update(QRect(from, to - QPoint(1, 1)));
  }

 protected:
  bool event(QEvent* event) override {
    if (event->type() != QEvent::ToolTip || !Mirrored().onToolTip) return QWidget::event(event);
    const QString text = ToolTipText(Mirrored().onToolTip());
    const auto* const help = static_cast<QHelpEvent*>(event);
    if (text.isEmpty()) {
      QToolTip::hideText();
      event->ignore();
    } else {
      QToolTip::showText(help->globalPos(), text, this);
    }
    return true;
  }

  /// One pixel of the surface is one pixel of the screen, and they coincide, whatever the scale.
  void paintEvent(QPaintEvent* event) override {
    if (!Mirrored().onPaint) return;
    QPainter painter(this);
    const double ratio = devicePixelRatioF();
    const QPointF origin = painter.deviceTransform().map(QPointF(0, 0));
    painter.translate((std::round(origin.x()) - origin.x()) / ratio,
                      (std::round(origin.y()) - origin.y()) / ratio);
    const auto pixel = static_cast<float>(TwipsPerPixel / ratio);
    QtSurface surface(painter, {pixel, pixel}, 1 / ratio);
    // A pixel more on each side: a scaled pixel may belong to two neighbours.
    const QRect seen = event->rect().adjusted(-1, -1, 1, 1) & rect();
    const Point from = ToTwips(seen.topLeft());
    const Point to = ToTwips(seen.bottomRight() + QPoint(1, 1));
    Mirrored().onPaint(surface, {from.x, from.y, to.x, to.y});
  }

  void mouseMoveEvent(QMouseEvent* event) override {
    if (Mirrored().onMouseMove) Mirrored().onMouseMove(ToTwips(event->position()));
  }
  void mousePressEvent(QMouseEvent* event) override {
    const auto button = ButtonOf(*event);
    if (button && Mirrored().onMouseDown) {
      Mirrored().onMouseDown(*button, ToTwips(event->position()));
    }
  }
  /// The second press of a quick pair is a press like any other.
  void mouseDoubleClickEvent(QMouseEvent* event) override { mousePressEvent(event); }
  void mouseReleaseEvent(QMouseEvent* event) override {
    const auto button = ButtonOf(*event);
    if (button && Mirrored().onMouseUp) Mirrored().onMouseUp(*button, ToTwips(event->position()));
  }
  void leaveEvent(QEvent*) override {
    if (Mirrored().onMouseLeave) Mirrored().onMouseLeave();
  }
  void wheelEvent(QWheelEvent* event) override {
    const double notches = event->angleDelta().y() / AnglePerNotch;
    if (Mirrored().onMouseWheel && notches != 0) {
      Mirrored().onMouseWheel(notches);
    } else {
      event->ignore();
    }
  }
  void keyPressEvent(QKeyEvent* event) override {
    const auto key = KeyOf(*event);
    if (!key || !Mirrored().onKeyDown || !Mirrored().onKeyDown(*key)) event->ignore();
  }
};

}  // namespace

QWidget* MakePeer(PictureBox& picture, QWidget* parent, Placement placement) {
  return new PicturePeer(picture, parent, placement);
}

}  // namespace velkor
