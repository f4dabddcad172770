// tests/platform/windows/WindowsScrollBarsTest.cpp: real messages of a window's own scroll bars.
#include "platform/windows/elements/WindowsScrollBars.h"

#include <gmock/gmock.h>

#include "platform/windows/elements/PaintedWindow.h"
#include "platform/windows/elements/WindowsPeer.h"
#include "platform/windows/system/Modules.h"
#include "support/cScrollBars.h"
#include "tests/support/ScrollBarLog.h"

namespace velkor {
namespace {

using Side = ScrollBarSide;
using testing::ElementsAre;
using testing::IsEmpty;

class PlainPeer : public WindowsPeer {
 public:
  PlainPeer(Element& element, HWND parent)
      : WindowsPeer(element, parent, Placement::Bounds, PaintedWindowClass(), 0) {
    Changed();
  }
};

class WindowsScrollBarsTest : public testing::Test {
 protected:
  WindowsScrollBarsTest() {
    picture_.SetBounds({0, 0, 3000, 3000});
    bars_->Create(picture_);
    for (const Side side : {Side::Horizontal, Side::Vertical}) {
      bars_->SetMax(side, 100000);
      bars_->SetLargeChange(side, 1000);
      bars_->SetSmallChange(side, 300);
      bars_->SetVisible(side, true);
    }
  }
  ~WindowsScrollBarsTest() override { ::DestroyWindow(parent_); }

  HWND Window() const { return peer_->Window(); }
  bool HasBar(LONG style) const { return (::GetWindowLongW(Window(), GWL_STYLE) & style) != 0; }
  LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam = 0) {
    return ::SendMessageW(Window(), message, wParam, lParam);
  }
  static WPARAM Notches(int delta) { return MAKEWPARAM(0, delta); }

  const HWND parent_ = ::CreateWindowExW(0, PaintedWindowClass(), L"", WS_OVERLAPPEDWINDOW, 0, 0,
                                         400, 400, nullptr, nullptr, ThisModule(), nullptr);
  PictureBox picture_{"pic"};
  std::unique_ptr<PlainPeer> peer_ = std::make_unique<PlainPeer>(picture_, parent_);
  WindowsScrollBars seam_;
  std::unique_ptr<cScrollBars> bars_ = std::make_unique<cScrollBars>(seam_);
};

TEST_F(WindowsScrollBarsTest, MessagesOfTheWindowBecomeEvents) {
  ScrollBarLog log(*bars_);
  Send(WM_VSCROLL, SB_LINEDOWN);
  EXPECT_THAT(log.Take(), ElementsAre("change v 300", "click v 300"));
  Send(WM_HSCROLL, SB_PAGERIGHT);
  EXPECT_THAT(log.Take(), ElementsAre("change h 1000", "click h 1000"));
  Send(WM_VSCROLL, SB_BOTTOM);
  EXPECT_THAT(log.Take(), ElementsAre("change v 99001"));
  EXPECT_EQ(::GetScrollPos(Window(), SB_VERT), 99001) << "more than a message has room for";
  Send(WM_MOUSEWHEEL, Notches(-180));
  Send(WM_MOUSEHWHEEL, Notches(WHEEL_DELTA));
  EXPECT_THAT(log.Take(), ElementsAre("wheel v -1.5", "wheel h 1"));
  // A child's own bar.
  Send(WM_VSCROLL, SB_LINEUP, reinterpret_cast<LPARAM>(parent_));
  EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(WindowsScrollBarsTest, ThumbIsDraggedByTheMouse) {
  ScrollBarLog log(*bars_);
  ::ShowWindow(parent_, SW_SHOW);
  RECT window;
  ::GetWindowRect(Window(), &window);
  // The thumb stands below the upper arrow; both are within the bar at the right edge.
  const int thickness = ::GetSystemMetrics(SM_CXVSCROLL);
  const POINT thumb{window.right - thickness / 2, window.top + thickness + 3};
  const POINT down{window.right - window.left - thickness / 2, thickness + 60};
  ::PostMessageW(Window(), WM_MOUSEMOVE, MK_LBUTTON, MAKELPARAM(down.x, down.y));
  ::PostMessageW(Window(), WM_LBUTTONUP, 0, MAKELPARAM(down.x, down.y));
  Send(WM_NCLBUTTONDOWN, HTVSCROLL, MAKELPARAM(thumb.x, thumb.y));
  const auto events = log.Take();
  ASSERT_EQ(events.size(), 2U);
  EXPECT_THAT(events[0], testing::StartsWith("scroll v "));
  EXPECT_EQ(events[1], "change v " + std::to_string(bars_->Value(Side::Vertical)));
  EXPECT_GT(bars_->Value(Side::Vertical), 10000);
}

TEST_F(WindowsScrollBarsTest, RegisteredMessagesOfOlderDriversTurnTheWheel) {
  ScrollBarLog log(*bars_);
  const UINT roll = ::RegisterWindowMessageA("MSWHEEL_ROLLMSG");
  Send(roll, static_cast<WPARAM>(-240));
  EXPECT_THAT(log.Take(), ElementsAre("wheel v -2"));
  Send(::RegisterWindowMessageA("Of somebody else"), static_cast<WPARAM>(-240));
  EXPECT_THAT(log.Take(), IsEmpty());

  // The driver's window says that the wheel is off.
  WNDCLASSA driver{};
  driver.lpfnWndProc = ::DefWindowProcA;
  driver.hInstance = ThisModule();
  driver.lpszClassName = "MouseZ";
  ASSERT_NE(::RegisterClassA(&driver), 0);
  const HWND window = ::CreateWindowExA(0, "MouseZ", "Magellan MSWHEEL", 0, 0, 0, 0, 0, nullptr,
                                        nullptr, driver.hInstance, nullptr);
  ASSERT_NE(window, nullptr);
  EXPECT_EQ(seam_.Ask("MouseZ", "Magellan MSWHEEL", WM_USER), 0);
  Send(roll, static_cast<WPARAM>(-240));
  ::DestroyWindow(window);
  ::UnregisterClassA("MouseZ", driver.hInstance);
  EXPECT_THAT(log.Take(), IsEmpty());
  EXPECT_EQ(seam_.Ask("MouseZ", "Magellan MSWHEEL", roll), std::nullopt);
}

TEST_F(WindowsScrollBarsTest, WheelThatTheUserSetToScrollNothingIsLeftToTheParent) {
  ScrollBarLog log(*bars_);
  UINT lines = 3;
  ::SystemParametersInfoA(SPI_GETWHEELSCROLLLINES, 0, &lines, 0);
  ::SystemParametersInfoA(SPI_SETWHEELSCROLLLINES, 0, nullptr, 0);
  Send(WM_MOUSEWHEEL, Notches(-120));
  ::SystemParametersInfoA(SPI_SETWHEELSCROLLLINES, lines, nullptr, 0);
  EXPECT_THAT(log.Take(), IsEmpty());
}

TEST_F(WindowsScrollBarsTest, BarsAreShownAndEnabledAsSetWhateverTheRange) {
  EXPECT_TRUE(HasBar(WS_VSCROLL) && HasBar(WS_HSCROLL));
  bars_->SetVisible(Side::Vertical, false);
  bars_->SetMax(Side::Vertical, 5000);
  bars_->SetValue(Side::Vertical, 700);
  EXPECT_FALSE(HasBar(WS_VSCROLL)) << "a range brings no bar";
  bars_->SetVisible(Side::Vertical, true);
  EXPECT_EQ(::GetScrollPos(Window(), SB_VERT), 700);
  const auto isEnabled = [&] {
    // Tells whether that changed anything.
    const bool was = ::EnableScrollBar(Window(), SB_VERT, ESB_DISABLE_BOTH) != FALSE;
    if (was) ::EnableScrollBar(Window(), SB_VERT, ESB_ENABLE_BOTH);
    return was;
  };
  EXPECT_TRUE(isEnabled());
  bars_->SetMax(Side::Vertical, 0);
  EXPECT_TRUE(HasBar(WS_VSCROLL)) << "a bar with nothing to scroll stays";
  bars_->SetEnabled(Side::Vertical, false);
  bars_->SetMax(Side::Vertical, 9000);
  EXPECT_FALSE(isEnabled()) << "a range enables no bar";
  bars_->SetEnabled(Side::Vertical, true);
  EXPECT_TRUE(isEnabled());
  EXPECT_EQ(bars_->Thickness().width, ::GetSystemMetrics(SM_CXVSCROLL) * 15);
}

TEST_F(WindowsScrollBarsTest, FlatBarsHoldTheSameValuesAndTellTheSame) {
  ASSERT_TRUE(bars_->CanBeFlat());
  bars_->SetValue(Side::Vertical, 700);
  for (const ScrollBarStyle style :
       {ScrollBarStyle::Flat, ScrollBarStyle::Regular, ScrollBarStyle::Encarta}) {
    bars_->SetStyle(style);
    EXPECT_EQ(bars_->Value(Side::Vertical), 700);
    EXPECT_EQ(bars_->Max(Side::Vertical), 100000);
    ScrollBarLog log(*bars_);
    Send(WM_VSCROLL, SB_LINEDOWN);
    Send(WM_VSCROLL, SB_LINEUP);
    EXPECT_THAT(log.Take(),
                ElementsAre("change v 1000", "click v 1000", "change v 700", "click v 700"));
    EXPECT_TRUE(HasBar(WS_VSCROLL));
  }
}

TEST_F(WindowsScrollBarsTest, WindowThatIsGoneKeepsItsValuesAndHandlersMayDestroyTheBars) {
  bars_->SetValue(Side::Vertical, 700);
  auto second = std::make_unique<cScrollBars>(seam_);
  second->Create(picture_);
  second->onScrollClick = [&](Side) { second.reset(); };
  Send(WM_VSCROLL, SB_LINEDOWN);
  EXPECT_EQ(second, nullptr);
  Send(WM_VSCROLL, SB_LINEDOWN);
  EXPECT_EQ(bars_->Value(Side::Vertical), 1000);
  ::DestroyWindow(Window());
  EXPECT_EQ(bars_->Value(Side::Vertical), 1000);
  bars_->SetValue(Side::Vertical, 5);
  bars_->SetVisible(Side::Vertical, false);
  bars_->SetStyle(ScrollBarStyle::Flat);
  EXPECT_EQ(bars_->Value(Side::Vertical), 5);
  EXPECT_EQ(bars_->Thickness().width, 0);
}

TEST(WindowsScrollBars, HoldTheirValuesWithoutAWindow) {
  PictureBox picture("pic");
  WindowsScrollBars seam;
  cScrollBars bars(seam);
  bars.Create(picture);
  bars.SetMax(Side::Vertical, 100);
  bars.SetLargeChange(Side::Vertical, 11);
  bars.SetValue(Side::Vertical, 95);
  EXPECT_EQ(bars.Value(Side::Vertical), 90);
}

}  // namespace
}  // namespace velkor
