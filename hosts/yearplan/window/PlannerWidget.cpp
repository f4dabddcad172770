// hosts/yearplan/window/PlannerWidget.cpp: the peers of a control's elements, one over the other.
#include "hosts/yearplan/window/PlannerWidget.h"

#include <QEvent>
#include <QPainter>
#include <map>
#include <utility>

#include "control/Picture.h"
#include "control/YearPlan.h"
#include "platform/desktop/QtElementWidgets.h"
#include "platform/desktop/QtPages.h"
#include "platform/desktop/QtText.h"
#include "view/Frame.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

constexpr double NoticePoints = 13;
constexpr QSize LeastSize{480, 320};

QColor ToQt(Colour colour) {
  return QColor(colour.Red(), colour.Green(), colour.Blue());
}

/// Over the grid, and not in the way of the pointer. It is painted whenever the grid is, and so
/// asks anew whenever the year has changed. Hidden at first.
class EmptyNotice : public QWidget {
 public:
  EmptyNotice(QWidget* grid, const YearPlan& plan) : QWidget(grid), plan_(plan) {
    setObjectName("notice");
    setAttribute(Qt::WA_TransparentForMouseEvents);
    grid->installEventFilter(this);
    hide();
  }

 protected:
  bool eventFilter(QObject* watched, QEvent* event) override {
    if (event->type() == QEvent::Resize) resize(parentWidget()->size());
    return QWidget::eventFilter(watched, event);
  }

  void paintEvent(QPaintEvent* /*event*/) override {
    const QString text = velkor::ToQt(WhyEmpty(plan_.Grid()));
    // What is left of another text lies beyond what is painted now, perhaps.
    if (std::exchange(text_, text) != text) update();
    if (text.isEmpty()) return;
    constexpr int Air = 16;
    QPainter painter(this);
    QFont font = painter.font();
    font.setPointSizeF(NoticePoints);
    painter.setFont(font);
    const QRect words = painter.boundingRect(rect().adjusted(Air, Air, -Air, -Air),
                                             Qt::AlignCenter | Qt::TextWordWrap, text);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(ToQt(FrameColour));
    painter.setBrush(Qt::white);
    painter.drawRoundedRect(words.adjusted(-Air, -Air, Air, Air), Air / 2, Air / 2);
    painter.setPen(Qt::black);
    painter.drawText(words, Qt::AlignCenter | Qt::TextWordWrap, text);
  }

 private:
  const YearPlan& plan_;
  QString text_;
};

}  // namespace

PlannerWidget::PlannerWidget(YearPlan& plan, QWidget* parent) : QWidget(parent), plan_(plan) {
  setObjectName("PlannerWidget");
  setMinimumSize(LeastSize);
  setAccessibleName(tr("Year planner"));
  QPalette colours = palette();
  colours.setColor(QPalette::Window, ToQt(ControlLook().back));
  colours.setColor(QPalette::WindowText, Qt::black);
  setPalette(colours);
  setAutoFillBackground(true);
  MakePeers();
}

void PlannerWidget::MakePeers() {
  YearPlanElements& elements = plan_.Elements();
  std::map<const Element*, QWidget*> widgets{{nullptr, this}};
  for (const PlacedElement& placed : elements.Placed()) {
    widgets[placed.element] =
        MakePeerOf<Toolbar, Label, CommandButton, Image, PictureBox, ScrollBar, TextBox>(
            *placed.element, widgets.at(placed.holder), Placement::Bounds);
  }
  for (Menu* menu : elements.Menus()) peers_.push_back(MakePeer(*menu, this));
  for (Timer* timer : elements.Timers()) peers_.push_back(MakePeer(*timer));
  status_ = widgets[&elements.imgLogo];
  status_->installEventFilter(this);
  notice_ = new EmptyNotice(widgets[&elements.pic1], plan_);
  legendView_ = widgets[&elements.legend.picCatView];
  legendRows_ = widgets[&elements.legend.picCats];
  legendRows_->installEventFilter(this);
}

bool PlannerWidget::eventFilter(QObject* watched, QEvent* event) {
  if (watched == status_ && event->type() == QEvent::ToolTipChange) {
    // While something is told about the year it may not be whole.
    const bool telling = !plan_.Elements().imgLogo.ToolTip().empty();
    asked_ = asked_ || telling;
    notice_->setVisible(asked_ && !telling);
  }
  if (watched != legendRows_) return QWidget::eventFilter(watched, event);
  if (event->type() == QEvent::FocusIn || event->type() == QEvent::FocusOut) update();
  return QWidget::eventFilter(watched, event);
}

void PlannerWidget::paintEvent(QPaintEvent* event) {
  QWidget::paintEvent(event);
  if (!legendRows_->hasFocus()) return;
  QPainter painter(this);
  painter.setPen(palette().color(QPalette::Highlight));
  painter.drawRect(legendView_->geometry().adjusted(-1, -1, 0, 0));
}

bool PlannerWidget::event(QEvent* event) {
  const bool done = QWidget::event(event);
  // The window came to a screen of another scale.
  if (event->type() == QEvent::ScreenChangeInternal) Fit();
  return done;
}

void PlannerWidget::resizeEvent(QResizeEvent* event) {
  QWidget::resizeEvent(event);
  Fit();
}

void PlannerWidget::Fit() {
  const auto pixel = static_cast<float>(TwipsPerPixel / devicePixelRatioF());
  QtMeasuringPage measuring({pixel, pixel});
  plan_.KeepBandsReadable(measuring.Page());
  plan_.Resize({width() * TwipsPerPixel, height() * TwipsPerPixel}, {pixel, pixel});
}

}  // namespace velkor
