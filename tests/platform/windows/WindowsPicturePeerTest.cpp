// tests/platform/windows/WindowsPicturePeerTest.cpp: pictures hear and paint; no handle is left.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/Surface.h"
#include "platform/windows/system/DialogOwner.h"
#include "tests/platform/PictureLog.h"
#include "tests/platform/windows/HeldHandles.h"
#include "tests/platform/windows/PeersWindow.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class WindowsPicture : public testing::Test {
 protected:
  WindowsPicture() {
    picture_.SetBounds({150, 150, 3150, 3150});
    picture_.onPaint = [this](Surface& surface, const Rect& visible) {
      surface.Fill({0, 0, 3000, 3000}, fill_);
      painted_.push_back(visible);
    };
    picture_.onToolTip = [this] {
      ++asked_;
      return toolTip_;
    };
    peer_ = MakePeer(picture_, window_.Get());
    ::UpdateWindow(peer_->Window());
  }

  std::vector<Rect> painted_;
  std::string toolTip_ = "Leave & return";
  int asked_ = 0;
  Colour fill_ = Colour::FromRgb(1, 2, 3);
  PictureBox picture_{"pic1"};
  PictureLog log_{picture_};
  PeersWindow window_;
  std::unique_ptr<WindowsPeer> peer_;
};

TEST_F(WindowsPicture, HearsThePointerInTwips) {
  const HWND window = peer_->Window();
  SendAt(window, WM_MOUSEMOVE, 0, 4, 6);
  SendAt(window, WM_LBUTTONDOWN, MK_LBUTTON, 10, 20);
  EXPECT_EQ(::GetCapture(), window);
  EXPECT_EQ(::GetFocus(), window);
  SendAt(window, WM_MOUSEMOVE, MK_LBUTTON, -3, 250);
  SendAt(window, WM_RBUTTONDOWN, MK_LBUTTON | MK_RBUTTON, 1, 1);
  SendAt(window, WM_RBUTTONUP, MK_LBUTTON, 1, 1);
  EXPECT_EQ(::GetCapture(), window) << "the other button is still down";
  SendAt(window, WM_LBUTTONUP, 0, 250, 20);
  EXPECT_EQ(::GetCapture(), nullptr);
  SendAt(window, WM_LBUTTONDBLCLK, MK_LBUTTON, 1, 1);
  ClickAt(window, 2, 2);
  SendAt(window, WM_MBUTTONDOWN, MK_MBUTTON, 1, 1);
  ::SendMessageW(window, WM_MOUSEWHEEL, MAKEWPARAM(0, -180), MAKELPARAM(9000, 9000));
  ::SendMessageW(window, WM_MOUSELEAVE, 0, 0);
  EXPECT_THAT(log_.heard, ElementsAre("move 60,90", "left 150,300", "move -45,3750", "right 15,15",
                                      "up 15,15", "up 3750,300", "left 15,15", "left 30,30",
                                      "up 30,30", "-15 tenths", "leave"));
}

TEST_F(WindowsPicture, HearsItsKeysAndGivesTheOthersOn) {
  std::vector<Key> outer;
  PictureBox holder("picParent");
  holder.onKeyDown = [&](Key key) {
    outer.push_back(key);
    return true;
  };
  const auto around = MakePeer(holder, window_.Get());
  ::SetParent(peer_->Window(), around->Window());
  const HWND window = peer_->Window();
  for (const WPARAM key : {VK_NEXT, VK_DELETE, VK_SPACE, VK_F5}) PressKey(window, key);
  ::SendMessageW(window, WM_CONTEXTMENU, reinterpret_cast<WPARAM>(window), -1);
  EXPECT_THAT(log_.heard, ElementsAre(Named(Key::PageDown), Named(Key::Delete), Named(Key::Space),
                                      Named(Key::Menu)));
  EXPECT_THAT(outer, ElementsAre(Key::Space));
  const auto wants = [&](WPARAM key) { return ::SendMessageW(window, WM_GETDLGCODE, key, 0); };
  EXPECT_TRUE(wants(VK_RETURN) & DLGC_WANTALLKEYS);
  EXPECT_FALSE(wants(VK_TAB) & DLGC_WANTALLKEYS) << "Tab leaves the picture";
  EXPECT_TRUE(wants(VK_UP) & DLGC_WANTARROWS);
}

TEST_F(WindowsPicture, ItsTextIsWhatScreenReadersSay) {
  PictureBox months("picHeadRow");
  months.SetAccessibleName("Months");
  Toolbar toolbar("Toolbar1", {});
  toolbar.SetAccessibleName("Commands");
  ScrollBar bar("VScroll1");
  bar.SetAccessibleName("Scroll the months");
  const auto monthsPeer = MakePeer(months, window_.Get());
  const auto toolbarPeer = MakePeer(toolbar, window_.Get());
  const auto barPeer = MakePeer(bar, window_.Get());
  const auto textOf = [](const std::unique_ptr<WindowsPeer>& peer) {
    wchar_t text[40]{};
    return std::wstring(text, static_cast<std::size_t>(::GetWindowTextW(peer->Window(), text, 40)));
  };
  EXPECT_EQ(textOf(monthsPeer), L"Months");
  EXPECT_EQ(textOf(toolbarPeer), L"Commands");
  EXPECT_EQ(textOf(barPeer), L"Scroll the months");
  months.SetDescription("January to December");
  EXPECT_EQ(textOf(monthsPeer), L"January to December");
}

TEST_F(WindowsPicture, PaintsOnlyWhatIsExposed) {
  ASSERT_FALSE(painted_.empty());
  painted_.clear();
  picture_.RefreshPart({300, 300, 600, 460});
  picture_.RefreshPart({1e300, 0, -1e300, 100});
  ::UpdateWindow(peer_->Window());
  EXPECT_THAT(painted_, ElementsAre(Rect{300, 300, 600, 465}));
  painted_.clear();
  picture_.SetBounds({150, 150, 150, 150});
  picture_.Refresh();
  ::UpdateWindow(peer_->Window());
  EXPECT_THAT(painted_, IsEmpty());
}

TEST_F(WindowsPicture, ShowsItsPaintOnTheDeviceAndTheBackgroundBesides) {
  picture_.onPaint = [this](Surface& surface, const Rect&) {
    surface.Fill({150, 150, 900, 900}, fill_);
  };
  const WindowPicture picture(peer_->Window());
  EXPECT_EQ(picture.At(10, 10), fill_);
  EXPECT_EQ(picture.At(59, 59), fill_);
  EXPECT_EQ(picture.At(60, 60), Colour::FromRgb(250, 240, 230));
}

TEST_F(WindowsPicture, AsksForTheToolTipAgainWhereTheAnswerIsAnother) {
  const HWND window = peer_->Window();
  SendAt(window, WM_MOUSEMOVE, 0, 4, 6);
  EXPECT_EQ(asked_, 0) << "a move before it is due costs nothing";
  EXPECT_EQ(AskToolTip(window), "Leave & return");
  SendAt(window, WM_MOUSEMOVE, 0, 5, 6);
  const int asked = asked_;
  toolTip_.clear();
  SendAt(window, WM_MOUSEMOVE, 0, 6, 6);
  EXPECT_EQ(asked_, asked + 1);
  SendAt(window, WM_MOUSEMOVE, 0, 7, 6);
  EXPECT_EQ(asked_, asked + 1) << "it is off, and waits for the pointer to rest";
  EXPECT_EQ(AskToolTip(window), "");
}

TEST_F(WindowsPicture, MayEndInWhatItHears) {
  picture_.onMouseDown = [this](MouseButton, Point) { ::DestroyWindow(window_.Get()); };
  ClickAt(peer_->Window(), 5, 5);
  EXPECT_EQ(peer_->Window(), nullptr);
  picture_.Refresh();
}

/// Where the system does not count, handles that are left push the numbers of others up.
TEST(WindowsPeers, LeaveNoHandleBehind) {
  const PeersWindow outer;
  const auto live = [&](bool windowsGoFirst) {
    PictureBox control("Control");
    control.SetBounds({0, 0, 6000, 4500});
    const auto holder = MakePeer(control, outer.Get());
    const HWND window = holder->Window();
    Label label("lblDate");
    label.SetToolTip("Tip");
    CommandButton button("Command1");
    Image image("imgLogo");
    PictureBox picture("pic1");
    picture.onToolTip = [] { return std::string("Tip"); };
    picture.onPaint = [](Surface& surface, const Rect& all) {
      surface.Text(all, "Text", {"Arial", 9}, colours::Black, text_flags::Left);
      surface.Line({0, 0}, {500, 400}, colours::Black, 1);
    };
    ScrollBar scrollBar("VScroll1");
    Toolbar toolbar("Toolbar1", {{.key = "Back", .toolTip = "", .image = 1}});
    Menu menu("mnuPop");
    Timer timer("tmrStart", 10);
    picture.SetBounds({0, 0, 1500, 450});
    image.SetBounds({1500, 0, 3000, 450});
    DialogOwner owner(window);
    std::vector<std::unique_ptr<ElementPeer>> peers;
    peers.push_back(MakePeer(label, window));
    peers.push_back(MakePeer(button, window));
    peers.push_back(MakePeer(image, window));
    peers.push_back(MakePeer(picture, window));
    peers.push_back(MakePeer(scrollBar, window));
    peers.push_back(MakePeer(toolbar, window));
    peers.push_back(MakePeer(menu, window, owner));
    peers.push_back(MakePeer(timer));
    timer.SetEnabled(true);
    timer.onTimer = [&] { ::SendMessageW(window, WM_CANCELMODE, 0, 0); };
    menu.PopUp({0, 0});
    ::RedrawWindow(window, nullptr, nullptr, RDW_INVALIDATE | RDW_ALLCHILDREN | RDW_UPDATENOW);
    if (windowsGoFirst) ::DestroyWindow(window);
  };
  live(true);
  live(false);
  const HeldHandles before;
  for (int i = 0; i < 20; ++i) live(i % 2 == 0);
  ExpectNoMoreThan(before);
}

}  // namespace
}  // namespace velkor
