// hosts/yearplan/PlannerWidget.cpp: the peers of a control's elements, one over the other.
#include "hosts/yearplan/PlannerWidget.h"

#include <QEvent>
#include <QPainter>

#include "control/YearPlan.h"
#include "platform/desktop/QtPeers.h"
#include "view/Face.h"

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
  Named(MakePeer(elements.imgLogo, this), tr("Status"));
  // What holds the surfaces lies below them.
  MakePeer(elements.picParent, this);
  Named(MakePeer(elements.picHeadCol, this), tr("Weekdays"));
  Named(MakePeer(elements.picHeadRow, this), tr("Months"));
  QWidget* const grid = Named(MakePeer(elements.pic1, this), tr("Year"));
  Named(MakePeer(elements.VScroll1, this), tr("Scroll the months"));
  MakeLegend(elements.legend);
  setFocusProxy(grid);
  peers_.push_back(MakePeer(elements.mnuPop, this));
  peers_.push_back(MakePeer(elements.tmrStart));
  peers_.push_back(MakePeer(elements.tmrBackground));
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
  plan_.Resize({width() * TwipsPerPixel, height() * TwipsPerPixel}, {pixel, pixel});
}

}  // namespace velkor
