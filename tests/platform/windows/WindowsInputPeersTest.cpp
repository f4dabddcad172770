// tests/platform/windows/WindowsInputPeersTest.cpp: what a user types and clicks, and what a script
// calls, leave an input element in the same state.
#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "tests/platform/windows/OwnerWindow.h"
#include "tests/platform/windows/UserSteps.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

using testing::ElementsAre;

/// Holds elements as the control does: in a picture of its window.
class WindowsInput : public testing::Test {
 protected:
  HWND Show(auto& element) {
    if (element.Bounds() == Rect{}) element.SetBounds({0, 0, 3000, 3000});
    peers_.push_back(MakePeer(element, holder_->Window()));
    return peers_.back()->Window();
  }
  static void Type(HWND window, const std::wstring& text) {
    for (const wchar_t unit : text) ::SendMessageW(window, WM_CHAR, unit, 1);
  }
  /// Some windows wait for the button's way up within its way down.
  static void Click(HWND window, POINT at = {3, 3}, bool left = true) {
    const LPARAM place = MAKELPARAM(at.x, at.y);
    ::PostMessageW(window, left ? WM_LBUTTONUP : WM_RBUTTONUP, 0, place);
    ::SendMessageW(window, left ? WM_LBUTTONDOWN : WM_RBUTTONDOWN, left ? MK_LBUTTON : MK_RBUTTON,
                   place);
    MSG message;
    while (::PeekMessageW(&message, nullptr, 0, 0, PM_REMOVE)) ::DispatchMessageW(&message);
  }

  OwnerWindow owner_;
  PictureBox picture_{"picCats"};
  std::unique_ptr<WindowsPeer> holder_ = Hold();
  std::vector<std::unique_ptr<WindowsPeer>> peers_;

 private:
  std::unique_ptr<WindowsPeer> Hold() {
    picture_.SetBounds({0, 0, 9000, 9000});
    return MakePeer(picture_, owner_.window);
  }
};

void Copy(const std::wstring& text) {
  ASSERT_TRUE(::OpenClipboard(nullptr));
  ::EmptyClipboard();
  const HGLOBAL memory = ::GlobalAlloc(GMEM_MOVEABLE, (text.size() + 1) * sizeof(wchar_t));
  text.copy(static_cast<wchar_t*>(::GlobalLock(memory)), text.size());
  static_cast<wchar_t*>(::GlobalLock(memory))[text.size()] = L'\0';
  ::SetClipboardData(CF_UNICODETEXT, memory);
  ::CloseClipboard();
}

TEST_F(WindowsInput, TextBoxTellsEachChangeAsItIsTypedOrPastedAndNoEchoOfItsOwner) {
  TextBox box("tbFilter");
  std::vector<std::string> heard;
  box.onChange = [&] { heard.push_back(box.Text()); };
  const HWND window = Show(box);
  box.SetText("Leave");
  EXPECT_EQ(WindowText(window), L"Leave");
  box.SetFocus();
  Type(window, L"ab\U0001F4C5");
  Copy(L"x y\r\nz");
  ::SendMessageW(window, WM_PASTE, 0, 0);
  EXPECT_THAT(heard, testing::Contains("ab\U0001F4C5"));
  EXPECT_EQ(box.Text(), ToUtf8(WindowText(window)));
  EXPECT_THAT(box.Text(), testing::EndsWith("x y"));
  ::SendMessageW(window, EM_SETSEL, 1, 1);
  box.SetText(box.Text() + "!");
  DWORD caret = 0;
  ::SendMessageW(window, EM_GETSEL, reinterpret_cast<WPARAM>(&caret), 0);
  EXPECT_EQ(caret, 1U);
  const std::string damaged = "a\xFFz";
  heard.clear();
  box.SetText(damaged);
  EXPECT_EQ(box.Text(), damaged);
  EXPECT_THAT(heard, ElementsAre(damaged));
}

TEST_F(WindowsInput, KeysAreHeardBeforeTheyCountAndStayInTheBox) {
  TextBox box("txtEdit");
  std::vector<int> codes;
  int lost = 0;
  box.onKeyPress = [&](int code) {
    codes.push_back(code);
    return code != 'b' && code != 0x1F4C5 && code != key_codes::Escape;
  };
  box.onLostFocus = [&] { ++lost; };
  const HWND window = Show(box);
  box.SetFocus();
  Type(window, L"ab\u00e9\U0001F4C5\r\x1b");
  EXPECT_THAT(codes, ElementsAre('a', 'b', 0xE9, 0x1F4C5, key_codes::Enter, key_codes::Escape));
  EXPECT_EQ(box.Text(), "a\u00e9");
  // A dialog that holds the control leaves these keys to the box.
  MSG enter{window, WM_KEYDOWN, VK_RETURN, 1, 0, {}};
  EXPECT_TRUE(::SendMessageW(window, WM_GETDLGCODE, VK_RETURN, reinterpret_cast<LPARAM>(&enter)) &
              DLGC_WANTMESSAGE);
  {
    const OwnerWindow other;
    ::SetFocus(other.window);
  }
  EXPECT_EQ(lost, 0) << "another window is not another element";
  box.SetFocus();
  ::SetFocus(holder_->Window());
  EXPECT_EQ(lost, 1);
  box.SetFocus();
  box.SetVisible(false);
  EXPECT_EQ(lost, 1);
  box.SetVisible(true);
  box.onKeyPress = [&](int) {
    ::DestroyWindow(owner_.window);
    return true;
  };
  box.SetFocus();
  Type(window, L"c");
  EXPECT_EQ(box.Text(), "a\u00e9");
}

TEST_F(WindowsInput, MaskedBoxTakesWhatFitsItsMaskAndShowsWhatItsOwnerSets) {
  MaskedBox box("tbFrom", "99/99/9999");
  const HWND window = Show(box);
  const std::vector<std::pair<std::wstring, std::string>> cases{
      {L"1/2/2026", "1/2/2026"},
      {L"01022026", "01/02/2026"},
      {L"31/12/20267", "31/12/2026"},
      {L"1a.-/1//2 6", "1/1/26"},
      {L"//", "//"},
  };
  const auto select = [&](int from, int to) { ::SendMessageW(window, EM_SETSEL, from, to); };
  for (const auto& [typed, text] : cases) {
    box.SetText("");
    Type(window, typed);
    EXPECT_EQ(box.Text(), text);
    EXPECT_EQ(ToUtf8(WindowText(window)), text);
    select(0, -1);
    Copy(typed);
    ::SendMessageW(window, WM_PASTE, 0, 0);
    EXPECT_EQ(box.Text(), text) << "pasted";
  }
  box.SetText("some day");
  EXPECT_EQ(WindowText(window), L"some day");
  select(8, 8);
  Type(window, L"5");
  EXPECT_EQ(box.Text(), "some day");
  select(0, -1);
  Type(window, L"5");
  EXPECT_EQ(box.Text(), "5");
}

TEST_F(WindowsInput, CheckBoxAndOptionButtonsAreClickedOnceForEachClick) {
  CheckBox box("cbAND");
  int clicks = 0;
  box.onClick = [&] { ++clicks; };
  box.SetCaption("This & that");
  const HWND check = Show(box);
  const auto isChecked = [](HWND window) {
    return ::SendMessageW(window, BM_GETCHECK, 0, 0) == BST_CHECKED;
  };
  EXPECT_EQ(WindowText(check), L"This && that");
  Click(check);
  EXPECT_TRUE(box.Checked() && isChecked(check));
  box.Toggle();
  EXPECT_FALSE(isChecked(check));
  ::SendMessageW(check, WM_KEYDOWN, VK_SPACE, 1);
  ::SendMessageW(check, WM_KEYUP, VK_SPACE, 1);
  EXPECT_TRUE(isChecked(check));
  EXPECT_EQ(clicks, 3);

  OptionButton one("one"), two("two"), off("off"), other("other");
  one.group = two.group = off.group = {&one, &off, &two};
  other.group = {&other};
  other.SetChosen();
  off.SetEnabled(false);
  const HWND first = Show(one);
  const HWND second = Show(two);
  Show(off);
  const HWND third = Show(other);
  int choices = 0;
  one.onClick = two.onClick = [&] { ++choices; };
  const auto expectChosen = [&](bool isOne, bool isTwo) {
    EXPECT_EQ(std::pair(one.Chosen(), two.Chosen()), std::pair(isOne, isTwo));
    EXPECT_EQ(std::pair(isChecked(first), isChecked(second)), std::pair(isOne, isTwo));
    EXPECT_TRUE(isChecked(third));
  };
  for (int i = 0; i < 2; ++i) Click(first);
  expectChosen(true, false);
  two.SetFocus();
  expectChosen(true, false);
  one.SetFocus();
  ::SendMessageW(first, WM_KEYDOWN, VK_DOWN, 1);
  expectChosen(false, true);
  EXPECT_EQ(::GetFocus(), second);
  EXPECT_EQ(choices, 3);
}

TEST_F(WindowsInput, ComboBoxHasRoomForItsListAndTellsWhatIsChosen) {
  ComboBox box("cmbStart");
  box.SetItems({"Jan", "Feb", "M\u00e4r", "Apr"});
  box.SetIndex(1);
  std::vector<int> heard;
  box.onClick = [&] { heard.push_back(box.Index()); };
  const HWND window = Show(box);
  EXPECT_EQ(WindowText(window), L"Feb");
  ::SendMessageW(window, WM_KEYDOWN, VK_DOWN, 1);
  EXPECT_EQ(WindowText(window), L"M\u00e4r");
  box.SetIndex(3);
  EXPECT_THAT(heard, ElementsAre(2));
  RECT dropped{};
  ::SendMessageW(window, CB_GETDROPPEDCONTROLRECT, 0, reinterpret_cast<LPARAM>(&dropped));
  const RECT field = PlaceOf(window);
  EXPECT_GE(dropped.bottom - dropped.top, 3 * (field.bottom - field.top));
  box.SetItems({"Only"});
  EXPECT_EQ(::SendMessageW(window, CB_GETCURSEL, 0, 0), CB_ERR);
}

class WindowsCheckList : public WindowsInput {
 protected:
  WindowsCheckList() {
    list_.onItemCheck = [this](std::size_t index) { checked_.push_back(index); };
    for (int i = 0; i < 3000; ++i) items_.push_back({"Category " + std::to_string(i), false});
    list_.SetItems(items_);
  }
  LRESULT Send(UINT message, WPARAM wParam = 0, LPARAM lParam = 0) const {
    return ::SendMessageW(window_, message, wParam, lParam);
  }
  int Current() const {
    return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
  }
  std::string ShownText(int row) const {
    wchar_t text[100]{};
    LVITEMW item{};
    item.pszText = text;
    item.cchTextMax = 100;
    Send(LVM_GETITEMTEXTW, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
    return ToUtf8(text);
  }
  void ExpectMirrored() const {
    const auto& items = list_.Items();
    ASSERT_EQ(Send(LVM_GETITEMCOUNT), static_cast<LRESULT>(items.size()));
    for (std::size_t i = 0; i < items.size(); i += 7) {
      ASSERT_EQ(ShownText(static_cast<int>(i)), items[i].text);
      const auto state = static_cast<UINT>(Send(LVM_GETITEMSTATE, i, LVIS_STATEIMAGEMASK));
      ASSERT_EQ(state, INDEXTOSTATEIMAGEMASK(items[i].checked ? 2U : 1U)) << items[i].text;
    }
  }
  POINT MiddleOf(int row) const {
    RECT place{LVIR_BOUNDS, 0, 0, 0};
    Send(LVM_GETITEMRECT, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&place));
    return {(place.left + place.right) / 2, (place.top + place.bottom) / 2};
  }

  CheckListBox list_{"lbCategories"};
  std::vector<CheckListBox::Item> items_;
  std::vector<std::size_t> checked_;
  HWND window_ = Show(list_);
};

TEST_F(WindowsCheckList, BoxTextAndSpaceToggleAsACallDoes) {
  Click(window_, MiddleOf(2));
  Click(window_, {8, MiddleOf(2).y});
  Click(window_, MiddleOf(2), false);
  Send(WM_KEYDOWN, VK_DOWN, 1);
  Send(WM_KEYDOWN, VK_SPACE, 1);
  Send(WM_CHAR, L' ', 1);
  list_.ToggleItem(7);
  EXPECT_THAT(checked_, ElementsAre(2, 2, 3, 7));
  EXPECT_TRUE(list_.Items()[3].checked && list_.Items()[7].checked && !list_.Items()[2].checked);
  ExpectMirrored();
  Click(window_, {8, MiddleOf(2999).y + 100});
  EXPECT_EQ(checked_.size(), 4U);
  for (const wchar_t c : {L'c', L'a', L't', L'e', L'g', L'o', L'r', L'y', L' ', L'4'}) {
    Send(WM_CHAR, static_cast<WPARAM>(c), 1);
  }
  EXPECT_EQ(ShownText(Current()), "Category 4");
}

TEST_F(WindowsCheckList, StaysWhereItIsWhileItsEntriesChange) {
  LVITEMW focused{};
  focused.state = focused.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
  Send(LVM_SETITEMSTATE, 1000, reinterpret_cast<LPARAM>(&focused));
  Send(LVM_ENSUREVISIBLE, 1000);
  const LRESULT top = Send(LVM_GETTOPINDEX);
  ASSERT_GT(top, 0);
  for (CheckListBox::Item& item : items_) item.checked = true;
  list_.SetItems(items_);
  EXPECT_EQ(Send(LVM_GETTOPINDEX), top);
  EXPECT_EQ(Current(), 1000);
  ExpectMirrored();
  items_.erase(items_.begin(), items_.begin() + 10);
  list_.SetItems(items_);
  EXPECT_EQ(ShownText(Current()), "Category 1000");
  ExpectMirrored();
  list_.SetItems({});
  EXPECT_EQ(Send(LVM_GETITEMCOUNT), 0);
  EXPECT_TRUE(checked_.empty());
}

}  // namespace
}  // namespace velkor
