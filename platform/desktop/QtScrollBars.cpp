// platform/desktop/QtScrollBars.cpp: scroll bars at the edges of a widget.
#include "platform/desktop/QtScrollBars.h"

#include <QChildEvent>
#include <QPointer>
#include <QScrollBar>
#include <QSignalBlocker>
#include <QStyle>
#include <QWheelEvent>
#include <QWidget>
#include <algorithm>
#include <array>

#include "platform/Elements.h"

namespace velkor {
namespace {

using Side = ScrollBarSide;

/// What a user's action asks for; none where the bar does not move by it.
std::optional<std::uint64_t> RequestOf(int action) {
  switch (action) {
    case QAbstractSlider::SliderSingleStepAdd:
      return scroll_requests::LineForward;
    case QAbstractSlider::SliderSingleStepSub:
      return scroll_requests::LineBack;
    case QAbstractSlider::SliderPageStepAdd:
      return scroll_requests::PageForward;
    case QAbstractSlider::SliderPageStepSub:
      return scroll_requests::PageBack;
    case QAbstractSlider::SliderToMinimum:
      return scroll_requests::First;
    case QAbstractSlider::SliderToMaximum:
      return scroll_requests::Last;
    default:
      return std::nullopt;
  }
}

/// Above 0: away from the user, and to the right, which Qt counts the other way.
struct WheelDelta {
  int vertical = 0;
  int horizontal = 0;
};

WheelDelta DeltaOf(const QWheelEvent& event) {
  const QPoint angle = event.angleDelta();
  // With Alt, Qt has turned the wheel's direction already; with Shift it leaves that to others.
  const bool turned = event.modifiers().testFlag(Qt::ShiftModifier) && angle.x() == 0;
  return turned ? WheelDelta{0, -angle.y()} : WheelDelta{angle.y(), -angle.x()};
}

int ThicknessOf(const QWidget& window) {
  return window.style()->pixelMetric(QStyle::PM_ScrollBarExtent, nullptr, &window);
}

/// Its widgets belong to the window and may end with it at any time. Whoever hears a message may
/// destroy this, so that telling one comes last.
class Bars : public QObject, public WindowScrollBars {
 public:
  explicit Bars(QWidget* window) : window_(window) {
    if (!window_) return;
    Make(Side::Horizontal, Qt::Horizontal, "Scroll left and right");
    Make(Side::Vertical, Qt::Vertical, "Scroll up and down");
    corner_ = new QWidget(window_);
    corner_->setAutoFillBackground(true);
    corner_->setAttribute(Qt::WA_NoMousePropagation);
    corner_->setCursor(Qt::ArrowCursor);
    corner_->installEventFilter(this);
    corner_->hide();
    window_->installEventFilter(this);
  }
  ~Bars() override {
    // Later, since a bar may be in the midst of telling what its user did.
    for (QWidget* const widget : Widgets()) {
      if (!widget) continue;
      widget->hide();
      widget->deleteLater();
    }
  }
  Bars(const Bars&) = delete;
  Bars& operator=(const Bars&) = delete;

  ScrollInfo Info(Side side) override { return Of(side).info; }
  void SetInfo(Side side, const ScrollInfo& info) override {
    Bar& bar = Of(side);
    bar.info = KeptWithinRange(info);
    if (!bar.widget) return;
    const QSignalBlocker silent(bar.widget);
    const int last = bar.info.max - std::max(bar.info.page - 1, 0);
    bar.widget->setRange(bar.info.min, last);
    bar.widget->setPageStep(bar.info.page);
    bar.widget->setValue(bar.info.position);
  }
  void Enable(Side side, bool enabled) override {
    if (QScrollBar* const widget = Of(side).widget) widget->setEnabled(enabled);
  }
  void Show(Side side, bool visible) override {
    if (QScrollBar* const widget = Of(side).widget) widget->setVisible(visible);
    Place();
  }
  void SetFlat(bool) override {}
  Extent Thickness() override {
    if (!window_) return {};
    const Twips thickness = ThicknessOf(*window_) * TwipsPerPixel;
    return {thickness, thickness};
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    switch (event->type()) {
      case QEvent::Wheel:
        return HearWheel(*static_cast<QWheelEvent*>(event));
      case QEvent::Resize:
      case QEvent::StyleChange:
        if (watched == window_) Place();
        return false;
      case QEvent::ChildPolished:
        // A child that came after the bars.
        for (QWidget* const widget : Widgets()) {
          if (watched == window_ && widget) widget->raise();
        }
        return false;
      default:
        return false;
    }
  }

 private:
  struct Bar {
    QPointer<QScrollBar> widget;
    ScrollInfo info;
  };

  Bar& Of(Side side) { return bars_[static_cast<std::size_t>(side)]; }
  std::array<QWidget*, 3> Widgets() { return {bars_[0].widget, bars_[1].widget, corner_}; }

  void Make(Side side, Qt::Orientation orientation, const char* name) {
    auto* const widget = new QScrollBar(orientation, window_);
    Of(side).widget = widget;
    widget->setAccessibleName(QString::fromUtf8(name));
    widget->setCursor(Qt::ArrowCursor);
    // Else the value follows the thumb, and it is not this that sets it.
    widget->setTracking(false);
    widget->hide();
    SetInfo(side, {});
    widget->installEventFilter(this);
    connect(widget, &QScrollBar::actionTriggered, this, [this, side](int action) {
      const auto request = RequestOf(action);
      HoldStill(side);
      if (request) Tell(side, *request);
    });
    connect(widget, &QScrollBar::sliderPressed, this, [this, side] {
      // Some presses take the thumb to the pointer.
      const int position = Of(side).widget->sliderPosition();
      if (position != Of(side).info.position) Track(side, position);
    });
    connect(widget, &QScrollBar::sliderMoved, this,
            [this, side](int position) { Track(side, position); });
    connect(widget, &QScrollBar::sliderReleased, this,
            [this, side] { LetGo(side, Of(side).widget->sliderPosition()); });
    // By the bar's own menu or a screen reader.
    connect(widget, &QScrollBar::valueChanged, this,
            [this, side](int value) { LetGo(side, value); });
  }

  /// The thumb as it was last set.
  void HoldStill(Side side) {
    const QSignalBlocker silent(Of(side).widget);
    Of(side).widget->setValue(Of(side).info.position);
  }

  void Track(Side side, int position) {
    Of(side).info.trackPosition = position;
    Tell(side, scroll_requests::ThumbTrack);
  }

  void LetGo(Side side, int position) {
    Of(side).info.trackPosition = position;
    HoldStill(side);
    Tell(side, scroll_requests::ThumbPosition);
  }

  void Tell(Side side, std::uint64_t request) {
    const QPointer<Bars> alive(this);
    Tell(ScrollMessage(side, request));
    if (alive && request != scroll_requests::ThumbTrack) {
      Tell(ScrollMessage(side, scroll_requests::EndScroll));
    }
  }

  void Tell(const WindowMessage& message) {
    const auto heard = onMessage;
    if (heard) heard(message);
  }

  bool HearWheel(QWheelEvent& event) {
    const WheelDelta delta = DeltaOf(event);
    if (delta.vertical == 0 && delta.horizontal == 0) return false;
    event.accept();
    const QPointer<Bars> alive(this);
    if (delta.vertical != 0) Tell(WheelMessage(Side::Vertical, delta.vertical));
    if (alive && delta.horizontal != 0) Tell(WheelMessage(Side::Horizontal, delta.horizontal));
    return true;
  }

  /// Only bars that are visible take room.
  void Place() {
    QScrollBar* const across = Of(Side::Horizontal).widget;
    QScrollBar* const down = Of(Side::Vertical).widget;
    if (!window_ || !across || !down || !corner_) return;
    const QRect room = window_->rect();
    const int thickness = ThicknessOf(*window_);
    const int right = down->isHidden() ? 0 : thickness;
    const int bottom = across->isHidden() ? 0 : thickness;
    across->setGeometry(0, room.height() - thickness, room.width() - right, thickness);
    down->setGeometry(room.width() - thickness, 0, thickness, room.height() - bottom);
    corner_->setGeometry(room.width() - thickness, room.height() - thickness, thickness, thickness);
    corner_->setVisible(right > 0 && bottom > 0);
    for (QWidget* const widget : Widgets()) widget->raise();
  }

  QPointer<QWidget> window_;
  QPointer<QWidget> corner_;
  std::array<Bar, 2> bars_;
};

}  // namespace

std::unique_ptr<WindowScrollBars> QtScrollBars::Attach(Element& window) {
  return std::make_unique<Bars>(dynamic_cast<QWidget*>(window.Peer()));
}

std::uint32_t QtScrollBars::RegisterMessage(std::string_view name) {
  constexpr std::uint32_t First = 0xC000;
  auto at = std::find(names_.begin(), names_.end(), name);
  if (at == names_.end()) at = names_.insert(names_.end(), std::string(name));
  return First + static_cast<std::uint32_t>(at - names_.begin());
}

}  // namespace velkor
