// hosts/yearplan/window/PlannerWidget.cpp: the peers of a control's elements, one over the other.
#include "hosts/yearplan/window/PlannerWidget.h"

#include <QEvent>
#include <QPainter>
#include <utility>

#include "control/YearPlan.h"
#include "platform/desktop/QtPages.h"
#include "platform/desktop/QtPeers.h"
#include "platform/desktop/QtText.h"
#include "view/Face.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

constexpr double CaptionPoints = 13;
constexpr QSize LeastSize{480, 320};

QColor ToQt(Colour colour) {
  return QColor(colour.Red(), colour.Green(), colour.Blue());
}

QWidget* Named(QWidget* widget, const QString& name) {
  widget->setAccessibleName(name);
  return widget;
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
    font.setPointSizeF(CaptionPoints);
    painter.setFont(font);
    const QRect words = painter.boundingRect(rect().adjusted(Air, Air, -Air, -Air),
                                             Qt::AlignCenter | Qt::TextWordWrap, text);
    painter.setRenderHint(QPainter::Antialiasing);
    painter.setPen(ToQt(face_colours::Frame));
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
  colours.setColor(QPalette::Window, ToQt(face_colours::Back));
  colours.setColor(QPalette::WindowText, Qt::black);
  setPalette(colours);
  setAutoFillBackground(true);
  MakePeers();
}

void PlannerWidget::MakePeers() {
  YearPlanElements& elements = plan_.Elements();
  Named(MakePeer(elements.Toolbar1, this), tr("Commands"));
  QWidget* const caption = MakePeer(elements.lblSelectedYear, this);
  QFont font = caption->font();
  font.setPointSizeF(CaptionPoints);
  font.setBold(true);
  caption->setFont(font);
  MakePeer(elements.lblDate, this);
  MakePeer(elements.Command1, this);
  status_ = Named(MakePeer(elements.imgLogo, this), tr("Status"));
  status_->installEventFilter(this);
  // What holds the surfaces lies below them.
  MakePeer(elements.picParent, this);
  Named(MakePeer(elements.picHeadCol, this), tr("Weekdays"));
  Named(MakePeer(elements.picHeadRow, this), tr("Months"));
  QWidget* const grid = Named(MakePeer(elements.pic1, this), tr("Year"));
  notice_ = new EmptyNotice(grid, plan_);
  Named(MakePeer(elements.VScroll1, this), tr("Scroll the months"));
  MakeLegend(elements.legend);
  peers_.push_back(MakePeer(elements.mnuPop, this));
  peers_.push_back(MakePeer(elements.tmrStart));
  peers_.push_back(MakePeer(elements.tmrBackground));
  peers_.push_back(MakePeer(elements.tmrItems));
}

void PlannerWidget::MakeLegend(LegendElements& legend) {
  legendView_ = MakePeer(legend.picCatView, this);
  legendRows_ = Named(MakePeer(legend.picCats, legendView_), tr("Categories"));
  Named(MakePeer(legend.txtEdit, legendRows_), tr("Name of the category"));
  Named(MakePeer(legend.vScrollCat, this), tr("Scroll the categories"));
  legendRows_->installEventFilter(this);
  peers_.push_back(MakePeer(legend.mnuCatPop, this));
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
