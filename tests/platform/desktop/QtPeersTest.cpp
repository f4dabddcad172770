// tests/platform/desktop/QtPeersTest.cpp: widgets mirror their elements, and the other way round.
#include "platform/desktop/QtPeers.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <QAction>
#include <QHelpEvent>
#include <QLabel>
#include <QMenu>
#include <QMouseEvent>
#include <QPushButton>
#include <QScrollBar>
#include <QTest>
#include <QToolButton>
#include <QToolTip>
#include <QWheelEvent>

#include "platform/Surface.h"
#include "tests/platform/PictureLog.h"

namespace velkor {
namespace {

using testing::ElementsAre;

/// The widget that holds the peers; made after their elements, since those outlive it.
class Control : public QWidget {
 public:
  Control() { resize(400, 300); }
  void Show() {
    show();
    ASSERT_TRUE(QTest::qWaitForWindowExposed(this));
  }
};

TEST(QtPeers, WhatAllElementsHaveIsMirrored) {
  Label label("lblDate");
  label.SetBounds({150, 30, 1650, 330});
  Control control;
  const QWidget* const peer = MakePeer(label, &control);
  EXPECT_EQ(peer->geometry(), QRect(10, 2, 100, 20)) << "fifteen twips are a pixel";
  control.Show();
  label.SetVisible(false);
  EXPECT_FALSE(peer->isVisible());
  label.SetVisible(true);
  EXPECT_TRUE(peer->isVisible());
  label.SetEnabled(false);
  EXPECT_FALSE(peer->isEnabled());
  label.SetToolTip("a <b> & c");
  EXPECT_TRUE(peer->toolTip().contains("a &lt;b&gt; &amp; c"));
  label.SetDescription("Shows the day");
  EXPECT_EQ(peer->accessibleDescription(), "Shows the day");
}

TEST(QtPeers, ALabelThatIsTooLongForItsPlaceTellsTheRestInItsToolTip) {
  Label label("lblDate");
  label.SetBounds({0, 0, 900, 300});
  QWidget control;
  QWidget* const peer = MakePeer(label, &control);
  control.show();
  const auto toolTip = [&] {
    QHelpEvent help(QEvent::ToolTip, {5, 5}, peer->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(peer, &help);
    return QToolTip::isVisible() ? QToolTip::text() : QString();
  };
  label.SetCaption("Date:");
  EXPECT_EQ(toolTip(), "");
  label.SetCaption("Date:  11/23/2026  A meeting about everything (1 of 3)");
  EXPECT_TRUE(toolTip().contains("(1 of 3)")) << toolTip().toStdString();
  QToolTip::hideText();
}

TEST(QtPeers, ElementOutlivesItsPeers) {
  Label label("lblDate");
  Timer timer("tmrStart", 1);
  Control control;
  delete MakePeer(label, &control);
  MakePeer(timer).reset();
  label.SetCaption("later");
  timer.SetEnabled(true);
  SUCCEED();
}

TEST(QtPeers, ButtonsAndLabelsPressTheirElements) {
  int pressed = 0;
  CommandButton button("Command1");
  button.onClick = [&] { ++pressed; };
  Label link("lblMaker");
  link.onClick = [&] { pressed += 10; };
  Label plain("lblText");
  link.SetBounds({0, 600, 1500, 900});
  button.SetBounds({0, 0, 1500, 450});
  Control control;
  QWidget* const native = MakePeer(button, &control);
  QWidget* const label = MakePeer(link, &control);
  const QWidget* const text = MakePeer(plain, &control);
  control.Show();
  button.SetCaption("Go");
  link.SetCaption("<b>as it is</b>");
  EXPECT_EQ(qobject_cast<QPushButton*>(native)->text(), "Go");
  EXPECT_EQ(qobject_cast<QLabel*>(label)->textFormat(), Qt::PlainText);

  QTest::mouseClick(native, Qt::LeftButton);
  QTest::mouseClick(label, Qt::LeftButton);
  QTest::keyClick(label, Qt::Key_Return);
  EXPECT_EQ(pressed, 21);
  button.SetEnabled(false);
  QTest::mouseClick(native, Qt::LeftButton);
  EXPECT_EQ(pressed, 21);
  EXPECT_EQ(text->focusPolicy(), Qt::NoFocus);
}

TEST(QtPeers, ImageIsFilledWithItsColourInsideAFrame) {
  Image image("imgLogo");
  image.SetBounds({0, 0, 300, 300});
  image.SetFillColour(Colour::FromRgb(0, 255, 0));
  Control control;
  QWidget* const peer = MakePeer(image, &control);
  EXPECT_EQ(peer->grab().toImage().pixelColor(10, 10), QColor(0, 255, 0));
  EXPECT_NE(peer->grab().toImage().pixelColor(10, 0), QColor(0, 255, 0));
  image.SetFillColour(Colour::FromRgb(255, 0, 0));
  EXPECT_EQ(peer->grab().toImage().pixelColor(10, 10), QColor(255, 0, 0));
}

TEST(QtPeers, ToolbarButtonsTellTheirKeysAndStayAsTheElementSays) {
  std::vector<std::string> keys;
  Toolbar toolbar("Toolbar1",
                  {{.key = "Back", .toolTip = "Year before", .image = toolbar_images::Back},
                   {.key = "Filter", .toolTip = "", .image = toolbar_images::Filter},
                   {.key = "PageSetup", .toolTip = "", .image = toolbar_images::PageSetup}});
  toolbar.onButtonClick = [&](std::string_view key) { keys.emplace_back(key); };
  toolbar.SetBounds({0, 0, 3000, 450});
  toolbar.SetAccessibleName("Commands");
  Control control;
  QWidget* const peer = MakePeer(toolbar, &control);
  control.Show();
  auto* const back = peer->findChild<QToolButton*>("Back");
  auto* const filter = peer->findChild<QToolButton*>("Filter");
  ASSERT_TRUE(back && filter);
  EXPECT_FALSE(back->icon().isNull());
  EXPECT_TRUE(back->toolTip().contains("Year before"));
  EXPECT_EQ(peer->accessibleName(), "Commands");
  EXPECT_EQ(back->accessibleName(), "Year before");
  EXPECT_EQ(peer->findChild<QToolButton*>("PageSetup")->accessibleName(), "Page setup");
  QTest::mouseClick(back, Qt::LeftButton);
  toolbar.SetButtonChecked("Filter", true);
  EXPECT_TRUE(filter->isChecked());
  QTest::mouseClick(filter, Qt::LeftButton);
  EXPECT_TRUE(filter->isChecked());
  toolbar.SetButtonEnabled("Back", false);
  QTest::mouseClick(back, Qt::LeftButton);
  EXPECT_THAT(keys, ElementsAre("Back", "Filter"));

  const QImage plain = filter->icon().pixmap(24, 24).toImage();
  toolbar.SetButtonImage("Filter", toolbar_images::ActiveFilter);
  EXPECT_NE(filter->icon().pixmap(24, 24).toImage(), plain);
  toolbar.SetButtonImage("Filter", toolbar_images::Filter);
  EXPECT_EQ(filter->icon().pixmap(24, 24).toImage(), plain);
}

TEST(QtPeers, ScrollBarAndElementFollowEachOtherOnce) {
  int changes = 0;
  ScrollBar scrollBar("VScroll1");
  scrollBar.onChange = [&] { ++changes; };
  scrollBar.SetBounds({0, 0, 255, 3000});
  Control control;
  auto* const peer = qobject_cast<QScrollBar*>(MakePeer(scrollBar, &control));
  control.Show();
  scrollBar.SetRange(1000, 10, 100);
  scrollBar.SetValue(40);
  EXPECT_EQ(peer->value(), 40);
  EXPECT_EQ(peer->orientation(), Qt::Vertical);
  peer->triggerAction(QAbstractSlider::SliderPageStepAdd);
  EXPECT_EQ(scrollBar.Value(), 140);
  EXPECT_EQ(changes, 2);
  scrollBar.SetRange(50, 10, 20);
  EXPECT_EQ(peer->maximum(), 50);
  EXPECT_EQ(peer->value(), 50);
  EXPECT_EQ(changes, 3);
}

TEST(QtPeers, TimerTicksWhileItIsEnabled) {
  int ticks = 0;
  Timer timer("tmrStart", 5);
  timer.onTimer = [&] {
    ++ticks;
    timer.SetEnabled(false);
  };
  // Tells when the other one would have ticked.
  int rounds = 0;
  Timer clock("clock", 10);
  clock.onTimer = [&] { ++rounds; };
  const auto peer = MakePeer(timer);
  const auto clockPeer = MakePeer(clock);
  clock.SetEnabled(true);
  for (const int expected : {0, 1}) {
    rounds = 0;
    timer.SetEnabled(expected == 1);
    EXPECT_TRUE(QTest::qWaitFor([&] { return rounds == 4; }, 5000));
    EXPECT_EQ(ticks, expected);
  }
}

TEST(QtPeers, MenuShowsItsEntriesAsTheyAreWhenItOpens) {
  int chosen = 0;
  MenuItem edit("mnuEdit", "Edit");
  MenuItem separator("mnuSeparator1", "");
  MenuItem mode("mnuSelectionMode", "Selection");
  MenuItem automatic("mnuSelection", "Automatic", 0);
  MenuItem always("mnuSelection", "Always", 1);
  Menu menu("mnuPop");
  menu.entries = {&edit, &separator, &mode};
  mode.entries = {&automatic, &always};
  always.SetChecked(true);
  always.onClick = [&] { chosen = always.Index() + 1; };
  Control control;
  const auto peer = MakePeer(menu, &control);
  control.Show();
  for (const bool enabled : {true, false}) {
    edit.SetEnabled(enabled);
    menu.PopUp({150, 150});
    auto* const shown = control.findChildren<QMenu*>("mnuPop").back();
    ASSERT_EQ(shown->actions().size(), 3);
    EXPECT_EQ(shown->pos(), control.mapToGlobal(QPoint(10, 10)));
    EXPECT_EQ(shown->actions()[0]->isEnabled(), enabled);
    EXPECT_TRUE(shown->actions()[1]->isSeparator());
    QMenu* const modes = shown->actions()[2]->menu();
    ASSERT_TRUE(modes);
    EXPECT_FALSE(modes->actions()[0]->isChecked());
    EXPECT_TRUE(modes->actions()[1]->isChecked());
    modes->actions()[1]->trigger();
    EXPECT_EQ(chosen, 2);
    chosen = 0;
    shown->hide();
  }
}

TEST(QtPeers, PictureHearsPointerWheelAndKeysInTwips) {
  PictureBox picture("pic1");
  picture.SetBounds({150, 150, 3150, 3150});
  const PictureLog log(picture);
  Control control;
  QWidget* const peer = MakePeer(picture, &control);
  control.Show();
  peer->setFocus();
  QTest::mouseMove(peer, QPoint(4, 6));
  QTest::mousePress(peer, Qt::RightButton, {}, QPoint(10, 20));
  QTest::mouseRelease(peer, Qt::RightButton, {}, QPoint(250, 20));
  QMouseEvent second(QEvent::MouseButtonDblClick, QPointF(1, 1), peer->mapToGlobal(QPointF(1, 1)),
                     Qt::LeftButton, Qt::LeftButton, Qt::NoModifier);
  QCoreApplication::sendEvent(peer, &second);
  QTest::mouseClick(peer, Qt::MiddleButton, {}, QPoint(1, 1));
  QWheelEvent wheel({5, 5}, peer->mapToGlobal(QPointF(5, 5)), {}, {0, -180}, Qt::NoButton,
                    Qt::NoModifier, Qt::NoScrollPhase, false);
  QCoreApplication::sendEvent(peer, &wheel);
  QTest::keyClick(peer, Qt::Key_PageDown);
  QTest::keyClick(peer, Qt::Key_F10, Qt::ShiftModifier);
  QTest::keyClick(peer, Qt::Key_PageDown, Qt::ControlModifier);
  QTest::keyClick(peer, Qt::Key_Space);
  QEvent leave(QEvent::Leave);
  QCoreApplication::sendEvent(peer, &leave);
  EXPECT_THAT(log.heard,
              ElementsAre("move 60,90", "right 150,300", "up 3750,300", "left 15,15", "-15 tenths",
                          Named(Key::PageDown), Named(Key::Menu), Named(Key::Space), "leave"));
}

TEST(QtPeers, PictureAsksForTheToolTipOfThePlaceUnderThePointer) {
  PictureBox picture("pic1");
  std::string text = "Leave <1 day>";
  picture.onToolTip = [&] { return text; };
  picture.SetBounds({0, 0, 3000, 3000});
  Control control;
  QWidget* const peer = MakePeer(picture, &control);
  control.Show();
  const auto ask = [&] {
    QHelpEvent event(QEvent::ToolTip, QPoint(5, 5), peer->mapToGlobal(QPoint(5, 5)));
    QCoreApplication::sendEvent(peer, &event);
  };
  ask();
  EXPECT_TRUE(QToolTip::text().contains("Leave &lt;1 day&gt;"));
  text.clear();
  ask();
  EXPECT_TRUE(QTest::qWaitFor([] { return !QToolTip::isVisible(); }, 2000));
}

TEST(QtPeers, PicturePaintsOnlyWhatIsExposed) {
  std::vector<Rect> painted;
  PictureBox picture("pic1");
  picture.SetBounds({0, 0, 3000, 3000});
  picture.onPaint = [&](Surface& surface, const Rect& visible) {
    surface.Fill({0, 0, 3000, 3000}, colours::White);
    painted.push_back(visible);
  };
  Control control;
  MakePeer(picture, &control);
  control.Show();
  ASSERT_TRUE(QTest::qWaitFor([&] { return !painted.empty(); }, 2000));
  QCoreApplication::processEvents();
  painted.clear();
  picture.RefreshPart({300, 300, 600, 460});
  ASSERT_TRUE(QTest::qWaitFor([&] { return !painted.empty(); }, 2000));
  EXPECT_THAT(painted, ElementsAre(Rect{285, 285, 615, 480}));
}

/// A line, an outline and a bar fill whole pixels of the device at each scale.
TEST(QtPeers, PictureIsSharpAtEachScaleOfTheDisplay) {
  PictureBox picture("pic1");
  picture.SetBounds({105, 75, 3105, 3075});
  picture.onPaint = [](Surface& surface, const Rect&) {
    surface.Fill({0, 0, 3000, 3000}, colours::White);
    surface.Fill({150, 150, 900, 301}, colours::Black);
    surface.Line({100, 700}, {2000, 700}, colours::Black, 1);
    surface.Outline({300, 1000, 1111, 2222}, colours::Black, 1);
  };
  Control control;
  QWidget* const peer = MakePeer(picture, &control);
  for (const double scale : {1.0, 1.25, 1.5, 2.0}) {
    QImage image(QSize(400, 300) * scale, QImage::Format_RGB32);
    image.setDevicePixelRatio(scale);
    image.fill(Qt::white);
    control.render(&image, {}, {}, QWidget::DrawChildren);
    int black = 0;
    for (int y = 0; y < image.height(); ++y) {
      for (int x = 0; x < image.width(); ++x) {
        const QColor colour = image.pixelColor(x, y);
        EXPECT_TRUE(colour == Qt::white || colour == Qt::black)
            << scale << ": " << x << "," << y << " " << colour.name().toStdString();
        black += colour == Qt::black ? 1 : 0;
      }
    }
    EXPECT_GT(black, 500) << peer->devicePixelRatioF();
  }
}

}  // namespace
}  // namespace velkor
