// platform/desktop/QtPeers.cpp: labels, buttons, marks, scroll bars and timers.
#include "platform/desktop/QtPeers.h"

#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QMouseEvent>
#include <QPainter>
#include <QPushButton>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QTimer>
#include <QToolTip>

#include "platform/desktop/QtText.h"

namespace velkor {

QRect ToQtPixels(const Rect& bounds) {
  const PixelRect pixels = ToPixels(bounds, {});
  return QRect(pixels.left, pixels.top, pixels.Width(), pixels.Height());
}

QString ToolTipText(std::string_view text) {
  if (text.empty()) return {};
  return QStringLiteral("<p style='white-space:pre-wrap; margin:0'>%1</p>")
      .arg(ToQt(text).toHtmlEscaped());
}

void SetToolTip(QWidget& widget, std::string_view text, std::string_view description) {
  widget.setToolTip(ToolTipText(text));
  // Without one Qt hands the tool tip's markup out.
  const QString spoken = ToQt(description.empty() ? text : description);
  if (widget.accessibleDescription() != spoken) widget.setAccessibleDescription(spoken);
}

void MirrorShared(QWidget& widget, const Element& element, Placement placement) {
  if (placement == Placement::Bounds) widget.setGeometry(ToQtPixels(element.Bounds()));
  widget.setVisible(element.Visible());
  widget.setEnabled(element.Enabled());
  SetToolTip(widget, element.ToolTip(), element.Description());
  if (!element.AccessibleName().empty()) widget.setAccessibleName(ToQt(element.AccessibleName()));
}

namespace {

/// A label or image that can be pressed, by the keyboard too.
template <typename Widget, typename ElementType>
class PressablePeer : public QtPeer<Widget, ElementType> {
 public:
  using QtPeer<Widget, ElementType>::QtPeer;

 protected:
  void Mirror() override {
    const bool pressable = static_cast<bool>(this->Mirrored().onClick);
    this->setCursor(pressable ? Qt::PointingHandCursor : Qt::ArrowCursor);
    this->setFocusPolicy(pressable ? Qt::TabFocus : Qt::NoFocus);
  }
  void mouseReleaseEvent(QMouseEvent* event) override {
    if (event->button() == Qt::LeftButton && this->rect().contains(event->position().toPoint())) {
      this->Mirrored().Click();
    }
  }
  void keyPressEvent(QKeyEvent* event) override {
    if (this->Mirrored().onClick && (event->key() == Qt::Key_Space || IsEnter(*event))) {
      this->Mirrored().Click();
    } else {
      event->ignore();
    }
  }

 private:
  static bool IsEnter(const QKeyEvent& event) {
    return event.key() == Qt::Key_Return || event.key() == Qt::Key_Enter;
  }
};

class LabelPeer : public PressablePeer<QLabel, Label> {
 public:
  LabelPeer(Label& label, QWidget* parent, Placement placement)
      : PressablePeer(label, parent, placement) {
    setTextFormat(Qt::PlainText);
    setWordWrap(placement == Placement::Layout);
    if (label.style) {
      QFont written = font();
      written.setPointSizeF(label.style->points);
      written.setBold(label.style->bold);
      setFont(written);
    }
    Changed();
  }

 protected:
  void Mirror() override {
    PressablePeer::Mirror();
    const QString caption = ToQt(Mirrored().Caption());
    if (text() != caption) setText(caption);
    setForegroundRole(Mirrored().onClick ? QPalette::Link : QPalette::WindowText);
  }
  /// A text that is too long for its place ends in an ellipsis; the tool tip has the rest.
  void paintEvent(QPaintEvent* event) override {
    if (!IsTooLong()) {
      QLabel::paintEvent(event);
      return;
    }
    QPainter painter(this);
    painter.setPen(palette().color(foregroundRole()));
    painter.drawText(contentsRect(), Qt::AlignLeft | Qt::AlignVCenter,
                     fontMetrics().elidedText(text(), Qt::ElideRight, contentsRect().width()));
  }
  bool event(QEvent* event) override {
    if (event->type() == QEvent::ToolTip && toolTip().isEmpty() && IsTooLong()) {
      QToolTip::showText(static_cast<QHelpEvent*>(event)->globalPos(),
                         ToolTipText(Mirrored().Caption()), this);
      return true;
    }
    return PressablePeer::event(event);
  }

 private:
  bool IsTooLong() const {
    return !wordWrap() && fontMetrics().horizontalAdvance(text()) > contentsRect().width();
  }
};

class CommandButtonPeer : public QtPeer<QPushButton, CommandButton> {
 public:
  CommandButtonPeer(CommandButton& button, QWidget* parent, Placement placement)
      : QtPeer(button, parent, placement) {
    setAutoDefault(placement == Placement::Layout);
    // In a control a press leaves the keyboard where it is.
    if (placement == Placement::Bounds) setFocusPolicy(Qt::TabFocus);
    connect(this, &QPushButton::clicked, this, [this] { Mirrored().Click(); });
    Changed();
  }

 protected:
  void Mirror() override { setText(ToQt(Mirrored().Caption())); }
};

/// A filled mark within a frame.
class ImagePeer : public PressablePeer<QWidget, Image> {
 public:
  ImagePeer(Image& image, QWidget* parent, Placement placement)
      : PressablePeer(image, parent, placement) {
    setSizePolicy(QSizePolicy::Fixed, QSizePolicy::Fixed);
    Changed();
  }

  QSize sizeHint() const override {
    constexpr int UsualSide = 48;
    const QSize wanted = ToQtPixels(Mirrored().Bounds()).size();
    return wanted.isEmpty() ? QSize(UsualSide, UsualSide) : wanted;
  }

 protected:
  void Mirror() override {
    PressablePeer::Mirror();
    update();
  }
  void paintEvent(QPaintEvent*) override {
    QPainter painter(this);
    const Colour fill = Mirrored().FillColour();
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(palette().color(hasFocus() ? QPalette::Highlight : QPalette::Shadow));
    painter.setBrush(QColor(fill.Red(), fill.Green(), fill.Blue()));
    constexpr double Radius = 2.5;
    painter.drawRoundedRect(QRectF(rect()).adjusted(0.5, 0.5, -0.5, -0.5), Radius, Radius);
  }
};

class ScrollBarPeer : public QtPeer<QScrollBar, ScrollBar> {
 public:
  ScrollBarPeer(ScrollBar& scrollBar, QWidget* parent, Placement placement)
      : QtPeer(scrollBar, parent, placement) {
    connect(this, &QScrollBar::valueChanged, this,
            [this](int value) { Mirrored().SetValue(value); });
    Changed();
  }

 protected:
  void Mirror() override {
    const QSignalBlocker silent(this);
    const Rect& bounds = Mirrored().Bounds();
    setOrientation(bounds.Width() > bounds.Height() ? Qt::Horizontal : Qt::Vertical);
    setRange(0, Mirrored().Max());
    setSingleStep(Mirrored().SmallChange());
    setPageStep(Mirrored().LargeChange());
    setValue(Mirrored().Value());
  }
};

class TimerPeer : public ElementPeer {
 public:
  explicit TimerPeer(Timer& timer) : timer_(timer) {
    QObject::connect(&ticks_, &QTimer::timeout, [this] { timer_.Tick(); });
    timer_.Attach(this);
    Changed();
  }
  ~TimerPeer() override { timer_.Attach(nullptr); }
  TimerPeer(const TimerPeer&) = delete;
  TimerPeer& operator=(const TimerPeer&) = delete;

  void Changed() override {
    if (!timer_.Enabled()) {
      ticks_.stop();
    } else if (!ticks_.isActive()) {
      ticks_.start(timer_.Interval());
    }
  }

 private:
  Timer& timer_;
  QTimer ticks_;
};

}  // namespace

QWidget* MakePeer(Label& label, QWidget* parent, Placement placement) {
  return new LabelPeer(label, parent, placement);
}

QWidget* MakePeer(CommandButton& button, QWidget* parent, Placement placement) {
  return new CommandButtonPeer(button, parent, placement);
}

QWidget* MakePeer(Image& image, QWidget* parent, Placement placement) {
  return new ImagePeer(image, parent, placement);
}

QWidget* MakePeer(ScrollBar& scrollBar, QWidget* parent, Placement placement) {
  return new ScrollBarPeer(scrollBar, parent, placement);
}

std::unique_ptr<ElementPeer> MakePeer(Timer& timer) {
  return std::make_unique<TimerPeer>(timer);
}

}  // namespace velkor
