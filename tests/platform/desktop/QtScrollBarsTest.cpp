// tests/platform/desktop/QtScrollBarsTest.cpp: what users do with bars at a widget's edges.
#include "platform/desktop/QtScrollBars.h"

#include <gmock/gmock.h>

#include <QApplication>
#include <QScrollBar>
#include <QStyle>
#include <QTest>
#include <QWheelEvent>
#include <string>
#include <vector>

#include "platform/desktop/QtPeers.h"
#include "support/cScrollBars.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using enum ScrollBarSide;

/// A picture of 400 by 300 pixels with both bars, a thousand twips in range and a hundred in sight.
class QtScrollBarsCase : public testing::Test {
 protected:
  QtScrollBarsCase() {
    picture.SetBounds({0, 0, 6000, 4500});
    control.resize(400, 300);
    peer = MakePeer(picture, &control);
    control.show();
    bars.Create(picture);
    bars.onScroll = [this](ScrollBarSide side) { Note("scroll", side); };
    bars.onChange = [this](ScrollBarSide side) { Note("change", side); };
    bars.onScrollClick = [this](ScrollBarSide side) { Note("click", side); };
    bars.onMouseWheel = [this](ScrollBarSide side, double notches) {
      events.push_back((side == Vertical ? "wheel " : "tilt ") + std::to_string(notches));
    };
    for (const ScrollBarSide side : {Horizontal, Vertical}) {
      bars.SetMax(side, 999);
      bars.SetLargeChange(side, 100);
      bars.SetSmallChange(side, 10);
      bars.SetVisible(side, true);
    }
  }

  void Note(const std::string& event, ScrollBarSide side) {
    events.push_back(event + (side == Vertical ? " v " : " h ") + std::to_string(bars.Value(side)));
  }
  std::vector<std::string> TakeEvents() { return std::exchange(events, {}); }
  QScrollBar* Widget(ScrollBarSide side) const {
    const QString name = side == Vertical ? "Scroll up and down" : "Scroll left and right";
    for (auto* const bar : peer->findChildren<QScrollBar*>()) {
      if (bar->accessibleName() == name) return bar;
    }
    return nullptr;
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
  QWidget control;
  QWidget* peer = nullptr;
  QtScrollBars qt;
  cScrollBars bars{qt};
  std::vector<std::string> events;
};

TEST_F(QtScrollBarsCase, BarsStandAtTheEdgesAndOnlyVisibleOnesTakeRoom) {
  const int thick = peer->style()->pixelMetric(QStyle::PM_ScrollBarExtent);
  EXPECT_EQ(bars.Thickness().width, thick * TwipsPerPixel);
  EXPECT_EQ(Widget(Vertical)->geometry(), QRect(400 - thick, 0, thick, 300 - thick));
  EXPECT_EQ(Widget(Horizontal)->geometry(), QRect(0, 300 - thick, 400 - thick, thick));
  picture.SetBounds({0, 0, 3000, 3000});
  EXPECT_EQ(Widget(Vertical)->geometry(), QRect(200 - thick, 0, thick, 200 - thick));
  bars.SetVisible(Horizontal, false);
  EXPECT_EQ(Widget(Vertical)->geometry(), QRect(200 - thick, 0, thick, 200));
  EXPECT_FALSE(Widget(Horizontal)->isVisible());
  bars.SetEnabled(Vertical, false);
  EXPECT_FALSE(Widget(Vertical)->isEnabled());
  PictureBox page("pic1");
  page.SetBounds({0, 0, 3000, 3000});
  const QWidget* const later = MakePeer(page, peer);
  EXPECT_TRUE(later->isVisible());
  EXPECT_EQ(peer->childAt(199, 5), Widget(Vertical)) << "above what came later";
  delete later;
}

TEST_F(QtScrollBarsCase, ClicksAndDragsReachTheOwner) {
  QScrollBar* const down = Widget(Vertical);
  const int end = down->height() - 3;
  const int middle = down->width() / 2;
  QTest::mouseClick(down, Qt::LeftButton, {}, {middle, end});
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 10", "click v 10"));
  QTest::mouseClick(down, Qt::LeftButton, {}, {middle, 3});
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 0", "click v 0"));
  QTest::mouseClick(down, Qt::LeftButton, {}, {middle, end - 40});
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 100", "click v 100"));
  bars.SetValue(Vertical, 0);
  events.clear();

  const QPoint thumb(middle, 25);
  QTest::mousePress(down, Qt::LeftButton, {}, thumb);
  QTest::mouseMove(down, thumb + QPoint(0, 60));
  EXPECT_GT(bars.Value(), 100);
  const std::string first = std::to_string(bars.Value());
  QTest::mouseMove(down, thumb + QPoint(0, 500));
  QTest::mouseRelease(down, Qt::LeftButton, {}, thumb + QPoint(0, 500));
  EXPECT_THAT(TakeEvents(), ElementsAre("scroll v " + first, "scroll v 900", "change v 900"));
  EXPECT_EQ(down->value(), 900);

  down->setValue(300);  // as the bar's menu and screen readers do
  EXPECT_THAT(TakeEvents(), ElementsAre("change v 300"));
  Widget(Horizontal)->triggerAction(QAbstractSlider::SliderToMaximum);
  EXPECT_THAT(TakeEvents(), ElementsAre("change h 900"));
}

TEST_F(QtScrollBarsCase, BarsDoNotMoveByThemselves) {
  const auto own = qt.Attach(picture);
  QScrollBar* bar = nullptr;
  for (auto* const found : peer->findChildren<QScrollBar*>()) {
    if (found->orientation() == Qt::Vertical && found->isHidden()) bar = found;
  }
  own->SetInfo(Vertical, {.min = 0, .max = 999, .page = 100, .position = 50});
  own->Show(Vertical, true);
  std::vector<std::int32_t> tracked;
  own->onMessage = [&](const WindowMessage&) {
    tracked.push_back(own->Info(Vertical).trackPosition);
  };
  bar->triggerAction(QAbstractSlider::SliderPageStepAdd);
  bar->setValue(70);
  bar->setSliderDown(true);
  bar->setSliderPosition(80);
  bar->setSliderDown(false);
  EXPECT_THAT(tracked, ElementsAre(0, 0, 70, 70, 80, 80, 80));
  EXPECT_EQ(bar->value(), 50);
  EXPECT_EQ(bar->sliderPosition(), 50);
}

TEST_F(QtScrollBarsCase, WheelsOfTheWidgetItsChildrenAndItsBarsAreHeard) {
  struct Row {
    QPoint angle;
    Qt::KeyboardModifiers keys;
    std::vector<std::string> events;
  };
  const std::vector<Row> rows{
      {{0, 120}, Qt::NoModifier, {"wheel 1.000000"}},
      {{0, -30}, Qt::NoModifier, {"wheel -0.250000"}},
      {{-120, 0}, Qt::AltModifier, {"tilt 1.000000"}},
      {{0, 120}, Qt::ShiftModifier, {"tilt -1.000000"}},
      {{60, 240}, Qt::NoModifier, {"wheel 2.000000", "tilt -0.500000"}},
      {{0, 120'000}, Qt::NoModifier, {"wheel 273.058333"}},
      {{0, 0}, Qt::NoModifier, {}},
  };
  PictureBox page("pic1");
  page.SetBounds({0, 0, 3000, 3000});
  QWidget* const child = MakePeer(page, peer);
  for (QWidget* const widget : {peer, child, static_cast<QWidget*>(Widget(Horizontal))}) {
    for (const Row& row : rows) {
      Turn(widget, row.angle, row.keys);
      EXPECT_EQ(TakeEvents(), row.events)
          << widget->objectName().toStdString() << ' ' << row.angle.x() << ' ' << row.angle.y();
    }
  }
  EXPECT_EQ(bars.Value(Horizontal), 0);
  page.onMouseWheel = [](double) {};
  Turn(child, {0, 120});
  EXPECT_THAT(events, IsEmpty()) << "the child had a use for it";
  delete child;
}

TEST_F(QtScrollBarsCase, BarsAndWidgetMayEndInAnyOrder) {
  bars.SetValue(Vertical, 300);
  bars.onChange = [this](ScrollBarSide) { bars.Create(picture); };
  QTest::mouseClick(Widget(Vertical), Qt::LeftButton, {}, {3, 3});
  EXPECT_EQ(bars.Max(Vertical), 0) << "attached anew within the click";
  QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
  EXPECT_EQ(peer->findChildren<QScrollBar*>().size(), 2);
  bars.SetMax(Vertical, 1000);
  bars.onChange = nullptr;
  delete peer;
  bars.SetVisible(Vertical, true);
  bars.SetValue(Vertical, 40);
  EXPECT_EQ(bars.Value(), 40);
  EXPECT_EQ(bars.Thickness().width, 0);
  bars.Create(picture);
  bars.SetMax(Vertical, 10);
  EXPECT_EQ(bars.Max(), 10) << "held without a widget";
  EXPECT_THROW(bars.SetStyle(ScrollBarStyle::Flat), Error);
}

}  // namespace
}  // namespace velkor
