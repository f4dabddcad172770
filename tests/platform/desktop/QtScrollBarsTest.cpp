// tests/platform/desktop/QtScrollBarsTest.cpp: what users do with bars at a widget's edges.
#include "platform/desktop/QtScrollBars.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QScrollBar>
#include <QStyle>
#include <QTest>
#include <QWheelEvent>

#include "platform/desktop/QtPeers.h"
#include "tests/support/ScrollBarLog.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using enum ScrollBarSide;

/// A picture of 400 by 300 pixels, with both bars and a child that came after them.
class QtScrollBarsCase : public testing::Test {
 protected:
  QtScrollBarsCase() {
    picture.SetBounds({0, 0, 6000, 4500});
    page.SetBounds({0, 0, 6000, 3000});
    peer = MakePeer(picture, &control);
    control.show();
    bars.Create(picture);
    for (const ScrollBarSide side : {Horizontal, Vertical}) {
      bars.SetMax(side, 999);
      bars.SetLargeChange(side, 100);
      bars.SetSmallChange(side, 10);
      bars.SetVisible(side, true);
    }
    child = MakePeer(page, peer);
  }

  QScrollBar* Widget(ScrollBarSide side) const {
    const auto all = peer->findChildren<QScrollBar*>();
    const auto* const name = side == Vertical ? "Scroll up and down" : "Scroll left and right";
    return *std::find_if(all.begin(), all.end(),
                         [&](auto* bar) { return bar->accessibleName() == name; });
  }
  static void Turn(QWidget* widget, QPoint angle, Qt::KeyboardModifiers keys = Qt::NoModifier) {
    const QPointF at(5, 5);
    QWheelEvent event(at, widget->mapToGlobal(at), {}, angle, Qt::NoButton, keys, Qt::NoScrollPhase,
                      false);
    // Only events of the system go on to the parent of who ignores them.
    QSpontaneKeyEvent::setSpontaneous(&event);
    qApp->notify(widget, &event);
  }

  PictureBox picture{"picParent"};
  PictureBox page{"pic1"};
  QWidget control;
  QWidget* peer = nullptr;
  QWidget* child = nullptr;
  QtScrollBars qt;
  cScrollBars bars{qt};
  ScrollBarLog log{bars};
};

TEST_F(QtScrollBarsCase, BarsStandAtTheEdgesAboveTheRestAndOnlyVisibleOnesTakeRoom) {
  const int thick = peer->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  EXPECT_EQ(peer->childAt(399, 5), Widget(Vertical));
  EXPECT_EQ(bars.Thickness().width, thick * TwipsPerPixel);
  EXPECT_EQ(Widget(Vertical)->geometry(), QRect(400 - thick, 0, thick, 300 - thick));
  EXPECT_EQ(Widget(Horizontal)->geometry(), QRect(0, 300 - thick, 400 - thick, thick));
  bars.SetVisible(Horizontal, false);
  picture.SetBounds({0, 0, 3000, 3000});
  EXPECT_EQ(Widget(Vertical)->geometry(), QRect(200 - thick, 0, thick, 200));
}

TEST_F(QtScrollBarsCase, ClicksAndDragsReachTheOwner) {
  QScrollBar* const down = Widget(Vertical);
  const int end = down->height() - 3;
  QTest::mouseClick(down, Qt::LeftButton, {}, {5, end});
  EXPECT_THAT(log.Take(), ElementsAre("change v 10", "click v 10"));
  QTest::mouseClick(down, Qt::LeftButton, {}, {5, end - 40});
  EXPECT_THAT(log.Take(), ElementsAre("change v 110", "click v 110"));
  QTest::mouseClick(down, Qt::LeftButton, {}, {5, 3});
  EXPECT_THAT(log.Take(), ElementsAre("change v 100", "click v 100"));

  const QPoint thumb(5, 50);
  QTest::mousePress(down, Qt::LeftButton, {}, thumb);
  QTest::mouseMove(down, thumb + QPoint(0, 60));
  const std::string first = std::to_string(bars.Value());
  QTest::mouseMove(down, thumb + QPoint(0, 500));
  QTest::mouseRelease(down, Qt::LeftButton, {}, thumb + QPoint(0, 500));
  EXPECT_THAT(log.Take(), ElementsAre("scroll v " + first, "scroll v 900", "change v 900"));

  down->setValue(300);  // as the bar's menu and screen readers do
  Widget(Horizontal)->triggerAction(QAbstractSlider::SliderToMaximum);
  EXPECT_THAT(log.Take(), ElementsAre("change v 300", "change h 900"));
}

TEST_F(QtScrollBarsCase, BarsDoNotMoveByThemselves) {
  const auto own = qt.Attach(page);
  own->SetInfo(Horizontal, {.min = 0, .max = 999, .page = 100, .position = 50});
  std::vector<std::int32_t> tracked;
  own->onMessage = [&](const WindowMessage&) {
    tracked.push_back(own->Info(Horizontal).trackPosition);
  };
  auto* const bar = child->findChild<QScrollBar*>();
  bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
  bar->setValue(70);
  bar->setSliderDown(true);
  bar->setSliderPosition(80);
  bar->setSliderDown(false);
  EXPECT_THAT(tracked, ElementsAre(0, 0, 70, 70, 80, 80, 80));
  EXPECT_EQ(bar->sliderPosition(), 50);
}

TEST_F(QtScrollBarsCase, WheelsOfTheWidgetItsChildrenAndItsBarsAreHeard) {
  struct Row {
    QPoint angle;
    Qt::KeyboardModifiers keys;
    std::vector<std::string> events;
  };
  const std::vector<Row> rows{
      {{0, -30}, Qt::NoModifier, {"wheel v -0.25"}},
      {{-120, 0}, Qt::AltModifier, {"wheel h 1"}},
      {{0, 120}, Qt::ShiftModifier, {"wheel h -1"}},
      {{60, 240}, Qt::NoModifier, {"wheel v 2", "wheel h -0.5"}},
      {{0, 120'000}, Qt::NoModifier, {"wheel v 273"}},
      {{0, 0}, Qt::NoModifier, {}},
  };
  for (QWidget* const widget : {peer, child, static_cast<QWidget*>(Widget(Horizontal))}) {
    for (const Row& row : rows) {
      Turn(widget, row.angle, row.keys);
      EXPECT_EQ(log.Take(), row.events) << widget->objectName().toStdString();
    }
  }
  page.onMouseWheel = [](double) {};
  Turn(child, {0, 120});
  EXPECT_THAT(log.Take(), ElementsAre()) << "the child had a use for it";
}

TEST_F(QtScrollBarsCase, BarsAndWidgetMayEndInAnyOrder) {
  bars.onChange = [this](ScrollBarSide) { bars.Create(picture); };
  QTest::mouseClick(Widget(Vertical), Qt::LeftButton, {}, {3, 250});
  EXPECT_EQ(bars.Max(Vertical), 0) << "attached anew within the click";
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(peer->findChildren<QScrollBar*>().size(), 2);
  bars.onChange = nullptr;
  delete peer;
  bars.SetVisible(Vertical, true);
  bars.SetMax(Vertical, 1000);
  bars.SetValue(Vertical, 40);
  EXPECT_EQ(bars.Value(), 40);
  EXPECT_EQ(bars.Thickness().width, 0);
}

}  // namespace
}  // namespace velkor
