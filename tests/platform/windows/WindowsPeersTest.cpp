// tests/platform/windows/WindowsPeersTest.cpp: windows mirror their elements, and the other way.
#include <gmock/gmock.h>

#include <string>
#include <vector>

#include "platform/windows/DialogOwner.h"
#include "tests/platform/windows/PeersWindow.h"

namespace velkor {
namespace {

using testing::ElementsAre;

RECT PlaceOf(const WindowsPeer& peer) {
  RECT place{};
  ::GetWindowRect(peer.Window(), &place);
  return place;
}

std::string TextOf(HWND window) {
  wchar_t text[200];
  return ToUtf8({text, static_cast<std::size_t>(::GetWindowTextW(window, text, 200))});
}

TEST(WindowsPeers, WhatAllElementsHaveIsMirrored) {
  Label label("lblDate");
  label.SetBounds({150, 30, 1650, 330});
  const PeersWindow window;
  const auto peer = MakePeer(label, window.Get());
  const RECT place = PlaceOf(*peer);
  EXPECT_THAT((std::vector<LONG>{place.left, place.top, place.right, place.bottom}),
              ElementsAre(10, 2, 110, 22));
  label.SetVisible(false);
  EXPECT_FALSE(::IsWindowVisible(peer->Window()));
  label.SetVisible(true);
  EXPECT_TRUE(::IsWindowVisible(peer->Window()));
  label.SetEnabled(false);
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
  label.SetToolTip("Its own");
  EXPECT_EQ(AskToolTip(peer->Window()), "Its own");
  const WindowPicture picture(peer->Window());
  int ink = 0;
  for (int x = 0; x < 100; ++x) {
    for (int y = 0; y < 20; ++y) ink += picture.At(x, y) == Colour::FromRgb(250, 240, 230) ? 0 : 1;
  }
  EXPECT_GT(ink, 100) << "text on the background of the parent";
  EXPECT_LT(ink, 1000);
}

TEST(WindowsPeers, ALabelOfALayoutNeedsMoreHeightWhereItIsNarrow) {
  Label label("lblText");
  label.SetCaption("A text of several words that is much too long for a narrow place");
  CommandButton button("cmdOK");
  button.SetCaption("OK");
  const PeersWindow window;
  const auto peer = MakePeer(label, window.Get(), Placement::Layout);
  const SIZE line = peer->NeededSize(0);
  const SIZE narrow = peer->NeededSize(100);
  EXPECT_GT(line.cx, 250);
  EXPECT_LE(narrow.cx, 100);
  EXPECT_GE(narrow.cy, 3 * line.cy);
  const auto pressed = MakePeer(button, window.Get(), Placement::Layout);
  EXPECT_EQ(pressed->NeededSize(0).cx, 75);
  button.SetCaption("A caption with many words");
  EXPECT_GT(pressed->NeededSize(0).cx, 120);
}

TEST(WindowsPeers, ButtonsLabelsAndMarksPressTheirElements) {
  std::string pressed;
  CommandButton button("Command1");
  button.onClick = [&] { pressed += "B"; };
  Label link("lblMaker");
  link.onClick = [&] { pressed += "L"; };
  Image image("imgLogo");
  image.onClick = [&] { pressed += "I"; };
  Label plain("lblText");
  const PeersWindow window;
  std::vector<std::unique_ptr<WindowsPeer>> peers;
  for (Element* element : {static_cast<Element*>(&button), static_cast<Element*>(&link),
                           static_cast<Element*>(&image), static_cast<Element*>(&plain)}) {
    element->SetBounds({0, 0, 1500, 450});
  }
  peers.push_back(MakePeer(button, window.Get()));
  peers.push_back(MakePeer(link, window.Get()));
  peers.push_back(MakePeer(image, window.Get()));
  peers.push_back(MakePeer(plain, window.Get()));
  button.SetCaption("Go");
  EXPECT_EQ(TextOf(peers[0]->Window()), "Go");
  for (const auto& peer : peers) ClickAt(peer->Window(), 20, 10);
  EXPECT_EQ(pressed, "BLI");
  pressed.clear();
  PressKey(peers[1]->Window(), VK_RETURN);
  PressKey(peers[2]->Window(), VK_SPACE);
  PressKey(peers[2]->Window(), VK_TAB);
  EXPECT_EQ(pressed, "LI");
  SendAt(peers[1]->Window(), WM_LBUTTONDOWN, MK_LBUTTON, 20, 10);
  SendAt(peers[1]->Window(), WM_LBUTTONUP, 0, 20, 100);
  SendAt(peers[2]->Window(), WM_LBUTTONUP, 0, 20, 10);
  EXPECT_EQ(pressed, "LI") << "let go elsewhere, or pressed elsewhere";
  EXPECT_EQ(::GetCapture(), nullptr);
  const auto isTabStop = [](const auto& peer) {
    return (::GetWindowLongW(peer->Window(), GWL_STYLE) & WS_TABSTOP) != 0;
  };
  EXPECT_TRUE(isTabStop(peers[1]));
  EXPECT_FALSE(isTabStop(peers[3]));
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
  for (Element* element : {static_cast<Element*>(&link), static_cast<Element*>(&button)}) {
    element->SetBounds({0, 0, 1500, 450});
  }
  for (const bool label : {true, false}) {
    const PeersWindow window;
    link.onClick = button.onClick = [&] { ::DestroyWindow(window.Get()); };
    const auto peer = label ? MakePeer(link, window.Get()) : MakePeer(button, window.Get());
    link.SetToolTip("Opens a page");
    ClickAt(peer->Window(), 20, 10);
    EXPECT_EQ(peer->Window(), nullptr);
    link.SetCaption("later");
  }
}

TEST(WindowsPeers, AMarkIsFilledWithItsColourInsideAFrame) {
  Image image("imgLogo");
  image.SetBounds({0, 0, 300, 300});
  const PeersWindow window;
  const auto peer = MakePeer(image, window.Get());
  for (const Colour colour : {Colour::FromRgb(0, 255, 0), Colour::FromRgb(255, 0, 0)}) {
    image.SetFillColour(colour);
    const WindowPicture picture(peer->Window());
    EXPECT_EQ(picture.At(10, 10), colour);
    EXPECT_NE(picture.At(10, 0), colour);
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
  TBBUTTON Button(int place) const {
    TBBUTTON button{};
    Send(TB_GETBUTTON, static_cast<WPARAM>(place), reinterpret_cast<LPARAM>(&button));
    return button;
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
  EXPECT_EQ(Button(1).fsState, TBSTATE_ENABLED | TBSTATE_CHECKED);
  EXPECT_EQ(Button(1).iBitmap, toolbar_images::ActiveFilter - 1);
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
  toolbar_.SetButtonToolTip("Filter", "Active Filter: " + std::string(300, 'x'));
  const auto ask = [&](int place) {
    wchar_t text[80] = L"";
    NMTBGETINFOTIPW asked{};
    asked.hdr = {peer_->Window(), 0, TBN_GETINFOTIPW};
    asked.iItem = place;
    asked.pszText = text;
    asked.cchTextMax = static_cast<int>(std::size(text));
    ::SendMessageW(window_.Get(), WM_NOTIFY, 0, reinterpret_cast<LPARAM>(&asked));
    return ToUtf8(text);
  };
  EXPECT_EQ(ask(0), "Year before");
  EXPECT_EQ(ask(1), "Active Filter: " + std::string(64, 'x'));
  EXPECT_EQ(ask(7), "");
}

TEST_F(WindowsToolbar, ButtonsFollowTheHeightWithPicturesOfTheirOwn) {
  const auto ink = [&] {
    const auto list = reinterpret_cast<HIMAGELIST>(Send(TB_GETIMAGELIST));
    int side = 0;
    ::ImageList_GetIconSize(list, &side, &side);
    const DibSection picture(side, side);
    ::SetDCBrushColor(picture.Dc(), RGB(1, 2, 3));
    const RECT all{0, 0, side, side};
    ::FillRect(picture.Dc(), &all, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
    ::ImageList_Draw(list, toolbar_images::Zoom - 1, picture.Dc(), 0, 0, ILD_TRANSPARENT);
    int marked = 0;
    for (int i = 0; i < side * side; ++i) {
      marked += picture.At(i % side, i / side) == Colour::FromRgb(1, 2, 3) ? 0 : 1;
    }
    return std::pair(side, marked * 100 / (side * side));
  };
  const auto [side, share] = ink();
  EXPECT_EQ(side, 18);
  EXPECT_GT(share, 15) << "per cent of the square, the rest is free";
  EXPECT_LT(share, 60);
  toolbar_.SetBounds({0, 0, 3000, 360});
  EXPECT_EQ(ink().first, 12);
  EXPECT_EQ(Send(TB_BUTTONCOUNT), 3);
  ClickButton(2);
  EXPECT_THAT(keys_, ElementsAre("Zoom"));
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
  const auto info = [&] {
    SCROLLINFO read{};
    read.cbSize = sizeof read;
    read.fMask = SIF_ALL;
    ::GetScrollInfo(peer->Window(), SB_CTL, &read);
    return std::vector<int>{read.nPos, read.nMax, static_cast<int>(read.nPage)};
  };
  EXPECT_THAT(info(), ElementsAre(40, 1099, 100));
  const auto ask = [&](WORD request) {
    ::SendMessageW(window.Get(), WM_VSCROLL, request, reinterpret_cast<LPARAM>(peer->Window()));
    return scrollBar.Value();
  };
  EXPECT_EQ(ask(SB_PAGEDOWN), 140);
  EXPECT_EQ(ask(SB_LINEUP), 130);
  EXPECT_EQ(ask(SB_ENDSCROLL), 130);
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
  scrollBar.SetRange(0, 10, 20);
  EXPECT_EQ(info()[0], 0);
  scrollBar.SetRange(INT32_MAX, 1, INT32_MAX);
  EXPECT_EQ(ask(SB_PAGEDOWN), INT32_MAX);
}

TEST(WindowsPeers, TimerTicksWhileItIsEnabled) {
  int ticks = 0;
  Timer timer("tmrStart", 10);
  timer.onTimer = [&] {
    ++ticks;
    PumpUntil([] { return false; }, 40);
    timer.SetEnabled(ticks == 1);
  };
  const auto peer = MakePeer(timer);
  PumpUntil([] { return false; }, 40);
  EXPECT_EQ(ticks, 0);
  timer.SetEnabled(true);
  EXPECT_TRUE(PumpUntil([&] { return ticks == 2; }));
  PumpUntil([] { return false; }, 60);
  EXPECT_EQ(ticks, 2) << "none in a tick, none after the end";
}

TEST(WindowsPeers, ATimersPeerMayEndInItsOwnTick) {
  int ticks = 0;
  Timer timer("tmrStart", 10);
  std::unique_ptr<ElementPeer> peer = MakePeer(timer);
  timer.onTimer = [&] {
    ++ticks;
    peer.reset();
  };
  timer.SetEnabled(true);
  EXPECT_TRUE(PumpUntil([&] { return ticks == 1; }));
  PumpUntil([] { return false; }, 40);
  EXPECT_EQ(ticks, 1);
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
  for (const bool enabled : {true, false}) {
    edit_.SetEnabled(enabled);
    std::vector<UINT> states;
    std::vector<UINT> modes;
    PopUpAnd([&](HWND shown) {
      const auto menu = reinterpret_cast<HMENU>(::SendMessageW(shown, MN_GETHMENU, 0, 0));
      const auto read = [](HMENU from, std::vector<UINT>& to) {
        for (int i = 0; i < ::GetMenuItemCount(from); ++i) {
          const UINT state = ::GetMenuState(from, static_cast<UINT>(i), MF_BYPOSITION);
          to.push_back(state &
                       (state & MF_SEPARATOR ? MF_SEPARATOR : MF_GRAYED | MF_CHECKED | MF_POPUP));
        }
      };
      read(menu, states);
      read(::GetSubMenu(menu, 2), modes);
      ::SendMessageW(window_.Get(), WM_CANCELMODE, 0, 0);
    });
    EXPECT_THAT(states,
                ElementsAre(enabled ? 0U : UINT{MF_GRAYED}, UINT{MF_SEPARATOR}, UINT{MF_POPUP}));
    EXPECT_THAT(modes, ElementsAre(0U, UINT{MF_CHECKED}));
    EXPECT_FALSE(chosen_);
  }
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

TEST_F(WindowsMenu, EndsWithTheWindowUnderIt) {
  PopUpAnd([&](HWND) { ::DestroyWindow(window_.Get()); });
  EXPECT_FALSE(chosen_);
  EXPECT_EQ(::FindWindowW(L"#32768", nullptr), nullptr);
  menu_.PopUp({0, 0});
}

}  // namespace
}  // namespace velkor
