// tests/platform/windows/WindowsPeersTest.cpp: windows mirror their elements, and the other way.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/MessageWindow.h"
#include "tests/platform/windows/DensitySteps.h"
#include "tests/platform/windows/HeldHandles.h"
#include "tests/platform/windows/PeersWindow.h"

namespace velkor {
namespace {

using testing::ElementsAre;

TEST(WindowsPeers, WhatAllElementsHaveIsMirrored) {
  Label label("lblDate");
  label.SetBounds({150, 30, 1650, 330});
  const PeersWindow window;
  const auto peer = MakePeer(label, window.Get());
  RECT place{};
  ::GetWindowRect(peer->Window(), &place);
  EXPECT_TRUE(place.left == 10 && place.top == 2 && place.right == 110 && place.bottom == 22);
  EXPECT_TRUE(::IsWindowVisible(peer->Window()));
  label.SetVisible(false);
  label.SetEnabled(false);
  EXPECT_FALSE(::IsWindowVisible(peer->Window()));
  EXPECT_FALSE(::IsWindowEnabled(peer->Window()));
}

TEST(WindowsPeers, ALabelThatIsTooLongForItsPlaceTellsTheRestInItsToolTip) {
  Label label("lblDate");
  label.SetBounds({0, 0, 1500, 300});
  const PeersWindow window;
  const auto peer = MakePeer(label, window.Get());
  label.SetCaption("Date:");
  EXPECT_EQ(AskToolTip(peer->Window()), "");
  label.SetCaption("Date:  11/23/2026  A & B about everything (1 of 3)");
  EXPECT_EQ(AskToolTip(peer->Window()), label.Caption());
  const WindowPicture picture(peer->Window());
  int ink = 0;
  for (int i = 0; i < 100 * 20; ++i) {
    ink += picture.At(i % 100, i / 100) == Colour::FromRgb(250, 240, 230) ? 0 : 1;
  }
  EXPECT_TRUE(ink > 100 && ink < 1000) << ink << ": text on the background of the parent";
}

TEST(WindowsPeers, ALabelOfALayoutNeedsMoreHeightWhereItIsNarrow) {
  Label label("lblText");
  label.SetCaption("A text of several words that is much too long for a narrow place");
  const PeersWindow window;
  const auto peer = MakePeer(label, window.Get(), Placement::Layout);
  EXPECT_GT(peer->NeededSize(0).cx, 250);
  EXPECT_LE(peer->NeededSize(100).cx, 100);
  EXPECT_GE(peer->NeededSize(100).cy, 3 * peer->NeededSize(0).cy);
}

TEST(WindowsPeers, ButtonsLabelsAndMarksPressTheirElements) {
  std::string pressed;
  CommandButton button("Command1");
  Label link("lblMaker");
  Image image("imgLogo");
  Label plain("lblText");
  button.onClick = [&] { pressed += "B"; };
  link.onClick = [&] { pressed += "L"; };
  image.onClick = [&] { pressed += "I"; };
  const Rect bounds{0, 0, 1500, 450};
  button.SetBounds(bounds);
  link.SetBounds(bounds);
  image.SetBounds(bounds);
  const PeersWindow window;
  const std::unique_ptr<WindowsPeer> peers[]{
      MakePeer(button, window.Get()), MakePeer(link, window.Get()), MakePeer(image, window.Get()),
      MakePeer(plain, window.Get())};
  for (const auto& peer : peers) ClickAt(peer->Window(), 20, 10);
  EXPECT_EQ(pressed, "BLI");
  PressKey(peers[1]->Window(), VK_RETURN);
  PressKey(peers[2]->Window(), VK_SPACE);
  PressKey(peers[2]->Window(), VK_TAB);
  EXPECT_EQ(pressed, "BLILI");
  SendAt(peers[1]->Window(), WM_LBUTTONDOWN, MK_LBUTTON, 20, 10);
  SendAt(peers[1]->Window(), WM_LBUTTONUP, 0, 20, 100);
  SendAt(peers[2]->Window(), WM_LBUTTONUP, 0, 20, 10);
  EXPECT_EQ(pressed, "BLILI") << "let go elsewhere, or pressed elsewhere";
  EXPECT_EQ(::GetCapture(), nullptr);
  EXPECT_TRUE(::GetWindowLongW(peers[1]->Window(), GWL_STYLE) & WS_TABSTOP);
  EXPECT_FALSE(::GetWindowLongW(peers[3]->Window(), GWL_STYLE) & WS_TABSTOP);
}

TEST(WindowsPeers, APressOfAControlsButtonLeavesTheKeyboardWhereItWas) {
  CommandButton first("Command1");
  CommandButton second("Command2");
  for (CommandButton* button : {&first, &second}) button->SetBounds({0, 0, 1500, 450});
  const PeersWindow window;
  const auto keeps = MakePeer(first, window.Get());
  const auto pressed = MakePeer(second, window.Get());
  first.SetFocus();
  ASSERT_EQ(::GetFocus(), keeps->Window());
  ClickAt(pressed->Window(), 20, 10);
  EXPECT_EQ(::GetFocus(), keeps->Window());
}

TEST(WindowsPeers, AWindowMayEndInItsOwnPress) {
  Label link("lblMaker");
  CommandButton button("Command1");
  link.SetToolTip("Opens a page");
  for (const bool label : {true, false}) {
    const PeersWindow window;
    link.onClick = button.onClick = [&] { ::DestroyWindow(window.Get()); };
    const auto peer = label ? MakePeer(link, window.Get()) : MakePeer(button, window.Get());
    ::MoveWindow(peer->Window(), 0, 0, 100, 30, FALSE);
    ClickAt(peer->Window(), 20, 10);
    EXPECT_EQ(peer->Window(), nullptr);
    link.SetCaption("later");
  }
}

class WindowsToolbar : public testing::Test {
 protected:
  WindowsToolbar() {
    toolbar_.onButtonClick = [this](std::string_view key) { keys_.emplace_back(key); };
    toolbar_.SetBounds({0, 0, 3000, 450});
    peer_ = MakePeer(toolbar_, window_.Get());
  }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(peer_->Window(), message, wParam, lParam);
  }
  void ClickButton(int place) const {
    RECT area{};
    Send(TB_GETITEMRECT, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&area));
    ClickAt(peer_->Window(), (area.left + area.right) / 2, (area.top + area.bottom) / 2);
  }
  std::vector<std::string> keys_;
  Toolbar toolbar_{"Toolbar1",
                   {{.key = "Back", .toolTip = "Year before", .image = toolbar_images::Back},
                    {.key = "Filter", .toolTip = "", .image = toolbar_images::Filter},
                    {.key = "Zoom", .toolTip = "Larger", .image = toolbar_images::Zoom}}};
  PeersWindow window_;
  std::unique_ptr<WindowsPeer> peer_;
};

TEST_F(WindowsToolbar, ButtonsTellTheirKeysAndStayAsTheElementSays) {
  ClickButton(0);
  toolbar_.SetButtonChecked("Filter", true);
  toolbar_.SetButtonImage("Filter", toolbar_images::ActiveFilter);
  ClickButton(1);
  EXPECT_EQ(Send(TB_GETSTATE, 1), TBSTATE_ENABLED | TBSTATE_CHECKED);
  EXPECT_EQ(Send(TB_GETBITMAP, 1), toolbar_images::ActiveFilter - 1);
  toolbar_.SetButtonEnabled("Back", false);
  ClickButton(0);
  EXPECT_THAT(keys_, ElementsAre("Back", "Filter"));
}

TEST_F(WindowsToolbar, KeysGoFromButtonToButtonThatCanBePressed) {
  toolbar_.SetButtonEnabled("Filter", false);
  toolbar_.SetFocus();
  PressKey(peer_->Window(), VK_RIGHT);
  PressKey(peer_->Window(), VK_RIGHT);
  PressKey(peer_->Window(), VK_SPACE);
  PressKey(peer_->Window(), VK_LEFT);
  PressKey(peer_->Window(), VK_RETURN);
  EXPECT_THAT(keys_, ElementsAre("Zoom", "Back"));
}

TEST_F(WindowsToolbar, EachButtonHasItsToolTip) {
  const auto ask = [&](int place) {
    wchar_t text[8] = L"";
    NMTBGETINFOTIPW asked{{peer_->Window(), 0, TBN_GETINFOTIPW}, text, 8, place, 0};
    ::SendMessageW(window_.Get(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    return ToUtf8(text);
  };
  EXPECT_EQ(ask(0), "Year be") << "as much as there is room for";
  EXPECT_EQ(ask(1), "");
  EXPECT_EQ(ask(7), "");
}

TEST_F(WindowsToolbar, ButtonsFollowTheHeightWithPicturesOfTheirOwn) {
  for (const int wanted : {18, 12}) {
    toolbar_.SetBounds({0, 0, 3000, (wanted + 12) * TwipsPerPixel});
    const auto list = reinterpret_cast<HIMAGELIST>(Send(TB_GETIMAGELIST));
    int side = 0;
    int height = 0;
    ::ImageList_GetIconSize(list, &side, &height);
    ASSERT_EQ(side, wanted);
    const DibSection picture(side, side);
    ::PatBlt(picture.Dc(), 0, 0, side, side, WHITENESS);
    ::ImageList_Draw(list, toolbar_images::Zoom - 1, picture.Dc(), 0, (side - height) / 2,
                     ILD_TRANSPARENT);
    int ink = 0;
    for (int i = 0; i < side * side; ++i) {
      ink += picture.At(i % side, i / side) == colours::White ? 0 : 100;
    }
    EXPECT_TRUE(ink > 15 * side * side && ink < 60 * side * side) << ink << ": the rest is free";
  }
  ClickButton(2);
  EXPECT_THAT(keys_, ElementsAre("Zoom"));
}

TEST_F(WindowsToolbar, PicturesGrowWithTheDensityAndStandInTheMiddle) {
  toolbar_.SetBounds({0, 0, 3000, 510});
  const HeldHandles before;
  for (const UINT dots : {96u, 144u, 192u, 96u}) {
    KeepDotsPerInch(window_.Get(), dots);
    peer_->TakeDensity(DensityOf(window_.Get()));
    int side = 0;
    int height = 0;
    ::ImageList_GetIconSize(reinterpret_cast<HIMAGELIST>(Send(TB_GETIMAGELIST)), &side, &height);
    EXPECT_EQ(side, static_cast<int>(20 * dots / 96));
    const WindowPicture picture(peer_->Window());
    const int rows = static_cast<int>(34 * dots / 96);
    int top = rows;
    int bottom = 0;
    for (int y = 0; y < rows; ++y) {
      for (int x = 0; x < side * 3 / 2; ++x) {
        if (picture.At(x, y) == Colour::FromRgb(250, 240, 230)) continue;
        top = std::min(top, y);
        bottom = y;
      }
    }
    EXPECT_GT(bottom - top, side / 3);
    EXPECT_NEAR(top, rows - 1 - bottom, 2) << "at " << dots;
  }
  ExpectNoMoreThan(before);
}

TEST(WindowsPeers, AControlsTextsGrowWithTheUsersYetStayWithinTheirPlaces) {
  Label year("lblSelectedYear");
  year.style = {13, true};
  year.SetBounds({0, 0, 1650, 510});
  year.SetCaption("Year 2026");
  CommandButton button("Command1");
  button.SetBounds({0, 0, 3000, 480});
  button.SetCaption("Force refresh of current year");
  MessageFontSize font;
  LONG smaller = 0;
  for (const int points : {9, 12, 18}) {
    font.Set(points);
    const PeersWindow window;
    const auto peer = MakePeer(year, window.Get());
    const auto pressed = MakePeer(button, window.Get());
    const SIZE line = LineSize(peer->Window(), L"Year 2026");
    EXPECT_GE(line.cy, smaller);
    EXPECT_TRUE(line.cx <= 110 && line.cy <= 34);
    EXPECT_LE(LineSize(pressed->Window(), ToWide(button.Caption())).cx, 192);
    smaller = line.cy;
  }
}

TEST(WindowsPeers, ScrollBarAndElementFollowEachOtherOnce) {
  int changes = 0;
  ScrollBar scrollBar("VScroll1");
  scrollBar.onChange = [&] { ++changes; };
  scrollBar.SetBounds({0, 0, 255, 3000});
  const PeersWindow window;
  const auto peer = MakePeer(scrollBar, window.Get());
  scrollBar.SetRange(1000, 10, 100);
  scrollBar.SetValue(40);
  SCROLLINFO info{sizeof info, SIF_ALL, 0, 0, 0, 0, 0};
  ::GetScrollInfo(peer->Window(), SB_CTL, &info);
  EXPECT_TRUE(info.nPos == 40 && info.nMax == 1099 && info.nPage == 100);
  const auto ask = [&](WORD request) {
    ::SendMessageW(window.Get(), WM_VSCROLL, request, reinterpret_cast<LPARAM>(peer->Window()));
    return scrollBar.Value();
  };
  EXPECT_EQ(ask(SB_PAGEDOWN), 140);
  EXPECT_EQ(ask(SB_LINEUP), 130);
  EXPECT_EQ(ask(SB_BOTTOM), 1000);
  EXPECT_EQ(ask(SB_LINEDOWN), 1000);
  EXPECT_EQ(changes, 4);
  const auto turn = [&](int delta) {
    ::SendMessageW(peer->Window(), WM_MOUSEWHEEL, MAKEWPARAM(0, delta), 0);
    return scrollBar.Value();
  };
  EXPECT_EQ(turn(WHEEL_DELTA / 30), 999) << "three lines of ten to a notch";
  EXPECT_EQ(turn(WHEEL_DELTA / 60), 999) << "half a step waits";
  EXPECT_EQ(turn(WHEEL_DELTA / 60), 998);
  scrollBar.SetRange(INT32_MAX, 1, INT32_MAX);
  EXPECT_EQ(ask(SB_PAGEDOWN), INT32_MAX);
}

TEST(WindowsPeers, TimerTicksWhileItIsEnabled) {
  // Tells when the other one would have ticked.
  int rounds = 0;
  const MessageWindow clock([&](UINT, WPARAM) { ++rounds; });
  ::SetTimer(clock.Get(), 1, USER_TIMER_MINIMUM, nullptr);
  const auto await = [&] {
    EXPECT_TRUE(PumpUntil([&, end = rounds + 4] { return rounds >= end; }));
  };
  int ticks = 0;
  Timer timer("tmrStart", 10);
  timer.onTimer = [&] {
    ++ticks;
    await();
    timer.SetEnabled(ticks == 1);
  };
  const auto peer = MakePeer(timer);
  await();
  EXPECT_EQ(ticks, 0);
  timer.SetEnabled(true);
  EXPECT_TRUE(PumpUntil([&] { return ticks == 2; }));
  await();
  EXPECT_EQ(ticks, 2) << "none in a tick, none after the end";
}

TEST(WindowsPeers, ATimersPeerMayEndInItsOwnTick) {
  Timer timer("tmrStart", 10);
  std::unique_ptr<ElementPeer> peer = MakePeer(timer);
  timer.onTimer = [&] { peer.reset(); };
  timer.SetEnabled(true);
  EXPECT_TRUE(PumpUntil([&] { return peer == nullptr; }));
}

class WindowsMenu : public testing::Test {
 protected:
  WindowsMenu() {
    menu_.entries = {&separator_, &edit_, &hidden_, &separator_, &mode_, &separator_};
    mode_.entries = {&automatic_, &always_};
    hidden_.SetVisible(false);
    always_.SetChecked(true);
    always_.onClick = [this] {
      chosen_ = true;
      menusAtClick_ = ::FindWindowW(L"#32768", nullptr) != nullptr;
      busyAtClick_ = owner_.IsBusy();
    };
  }
  /// Opens the menu while a timer of its own does something once it is there.
  void PopUpAnd(std::function<void(HWND shown)> act) {
    Timer timer("tmrTest", 10);
    timer.onTimer = [&] {
      const HWND shown = ::FindWindowW(L"#32768", nullptr);
      if (shown == nullptr) return;
      timer.SetEnabled(false);
      act(shown);
    };
    const auto ticks = MakePeer(timer);
    timer.SetEnabled(true);
    menu_.PopUp({150, 150});
    EXPECT_FALSE(timer.Enabled());
  }

  MenuItem edit_{"mnuEdit", "Edit"};
  MenuItem hidden_{"mnuHidden", "Hidden"};
  MenuItem separator_{"mnuSeparator1", ""};
  MenuItem mode_{"mnuSelectionMode", "Selection"};
  MenuItem automatic_{"mnuSelection", "Automatic", 0};
  MenuItem always_{"mnuSelection", "Always", 1};
  Menu menu_{"mnuPop"};
  PeersWindow window_;
  DialogOwner owner_{window_.Get()};
  std::unique_ptr<ElementPeer> peer_ = MakePeer(menu_, window_.Get(), owner_);
  bool chosen_ = false;
  bool menusAtClick_ = false;
  bool busyAtClick_ = false;
};

TEST_F(WindowsMenu, ShowsItsEntriesAsTheyAreWhenItOpens) {
  edit_.SetEnabled(false);
  std::vector<UINT> states;
  const auto read = [&](HMENU from) {
    for (int i = 0; i < ::GetMenuItemCount(from); ++i) {
      const UINT state = ::GetMenuState(from, static_cast<UINT>(i), MF_BYPOSITION);
      const bool separates = (state & MF_SEPARATOR) != 0;
      states.push_back(state & (separates ? MF_SEPARATOR : MF_GRAYED | MF_CHECKED | MF_POPUP));
    }
  };
  PopUpAnd([&](HWND shown) {
    const auto menu = reinterpret_cast<HMENU>(::SendMessageW(shown, MN_GETHMENU, 0, 0));
    read(menu);
    read(::GetSubMenu(menu, 2));
    ::SendMessageW(window_.Get(), WM_CANCELMODE, 0, 0);
  });
  EXPECT_THAT(states, testing::ContainerEq(
                          std::vector<UINT>{MF_GRAYED, MF_SEPARATOR, MF_POPUP, 0, MF_CHECKED}));
  EXPECT_FALSE(chosen_);
}

TEST_F(WindowsMenu, WhatIsChosenRunsWhenTheMenuIsGone) {
  PopUpAnd([&](HWND shown) {
    for (const WPARAM key : {VK_DOWN, VK_DOWN, VK_RIGHT, VK_DOWN, VK_RETURN}) {
      ::PostMessageW(shown, WM_KEYDOWN, key, 0);
    }
  });
  EXPECT_TRUE(chosen_);
  EXPECT_FALSE(menusAtClick_);
  EXPECT_TRUE(busyAtClick_);
  EXPECT_FALSE(owner_.IsBusy());
}

TEST_F(WindowsMenu, APeerThatGoesLeavesItsSuccessor) {
  const auto successor = MakePeer(menu_, window_.Get(), owner_);
  peer_.reset();
  EXPECT_EQ(menu_.Peer(), successor.get());
}

TEST_F(WindowsMenu, EndsWithTheWindowUnderIt) {
  PopUpAnd([&](HWND) { ::DestroyWindow(window_.Get()); });
  EXPECT_FALSE(chosen_);
  EXPECT_EQ(::FindWindowW(L"#32768", nullptr), nullptr);
  menu_.PopUp({0, 0});
}

}  // namespace
}  // namespace velkor
