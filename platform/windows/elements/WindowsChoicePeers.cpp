// platform/windows/elements/WindowsChoicePeers.cpp: check boxes, option buttons and combo boxes.
#include <algorithm>
#include <string>
#include <vector>

#include "platform/windows/elements/MakePeer.h"
#include "values/FlagScope.h"

namespace velkor {
namespace {

/// A mark and a caption beside it.
class MarkedPeer : public WindowsPeer {
 public:
  MarkedPeer(CaptionedElement& element, HWND parent, Placement placement, DWORD style)
      : WindowsPeer(element, parent, placement, L"BUTTON", style), captioned_(element) {}

  SIZE NeededSize(int /*width*/) override {
    const int mark = Units().Length(13);
    const SIZE text = LineSize(Window(), ToWide(captioned_.Caption()));
    return {mark + Units().Length(12) + text.cx, std::max<LONG>(mark, text.cy) + Units().Length(4)};
  }

 protected:
  void MirrorMark(bool marked) {
    SetText(ToCaption(captioned_.Caption()));
    ::SendMessageW(Window(), BM_SETCHECK, marked ? BST_CHECKED : BST_UNCHECKED, 0);
  }

 private:
  CaptionedElement& captioned_;
};

class CheckBoxPeer : public MarkedPeer {
 public:
  CheckBoxPeer(CheckBox& box, HWND parent, Placement placement)
      : MarkedPeer(box, parent, placement, BS_CHECKBOX | WS_TABSTOP), box_(box) {
    Changed();
  }

 protected:
  void Mirror() override { MirrorMark(box_.Checked()); }
  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM /*lParam*/) override {
    if (message != WM_COMMAND + Reflected) return std::nullopt;
    if (HIWORD(wParam) == BN_CLICKED) box_.Toggle();
    return 0;
  }

 private:
  CheckBox& box_;
};

/// Of a choice the chosen button is the one that the tab key comes to.
class OptionButtonPeer : public MarkedPeer {
 public:
  OptionButtonPeer(OptionButton& button, HWND parent, Placement placement)
      : MarkedPeer(button, parent, placement, BS_RADIOBUTTON), button_(button) {
    Changed();
  }

 protected:
  void Mirror() override {
    MirrorMark(button_.Chosen());
    const bool noneChosen = std::none_of(button_.group.begin(), button_.group.end(),
                                         [](const OptionButton* one) { return one->Chosen(); });
    const auto style = static_cast<DWORD>(::GetWindowLongW(Window(), GWL_STYLE));
    const DWORD wanted =
        button_.Chosen() || noneChosen ? style | WS_TABSTOP : style & ~DWORD{WS_TABSTOP};
    ::SetWindowLongW(Window(), GWL_STYLE, static_cast<LONG>(wanted));
  }

  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_GETDLGCODE:
        return Default(message, wParam, lParam) | DLGC_WANTARROWS;
      case WM_KEYDOWN:
        if (wParam == VK_UP || wParam == VK_LEFT) return ChooseNeighbour(-1);
        if (wParam == VK_DOWN || wParam == VK_RIGHT) return ChooseNeighbour(1);
        break;
      case WM_SETFOCUS: {
        // The system clicks a button that gets the keyboard, which is no choice of the user's.
        const FlagScope focusing(focusing_);
        return Default(message, wParam, lParam);
      }
      case WM_COMMAND + Reflected:
        if (HIWORD(wParam) == BN_CLICKED && !focusing_) button_.Choose();
        return 0;
    }
    return std::nullopt;
  }

 private:
  /// The next button of the group that can be chosen, beyond its end the first.
  LRESULT ChooseNeighbour(int step) {
    const std::vector<OptionButton*>& group = button_.group;
    const auto count = static_cast<int>(group.size());
    const auto self = std::find(group.begin(), group.end(), &button_);
    if (self == group.end()) return 0;
    for (int i = 1; i < count; ++i) {
      const auto place = (static_cast<int>(self - group.begin()) + step * i + count * i) % count;
      OptionButton& next = *group[static_cast<std::size_t>(place)];
      if (!next.Enabled() || !next.Visible()) continue;
      next.SetFocus();
      next.Choose();
      break;
    }
    return 0;
  }

  OptionButton& button_;
  bool focusing_ = false;
};

class ComboBoxPeer : public WindowsPeer {
 public:
  ComboBoxPeer(ComboBox& box, HWND parent, Placement placement)
      : WindowsPeer(box, parent, placement, L"COMBOBOX",
                    CBS_DROPDOWNLIST | WS_VSCROLL | WS_TABSTOP),
        box_(box) {
    Changed();
  }

  SIZE NeededSize(int /*width*/) override {
    std::vector<std::wstring> texts;
    for (const std::string& item : shown_) texts.push_back(ToWide(item));
    const int widest = WidestLine(Window(), texts);
    RECT window{};
    ::GetWindowRect(Window(), &window);
    return {widest + Units().Metric(SM_CXVSCROLL) + Units().Length(16), window.bottom - window.top};
  }

 protected:
  void Mirror() override {
    const std::vector<std::string>& items = box_.Items();
    if (shown_ != items) {
      ::SendMessageW(Window(), CB_RESETCONTENT, 0, 0);
      for (const std::string& item : items) {
        ::SendMessageW(Window(), CB_ADDSTRING, 0, reinterpret_cast<LPARAM>(ToWide(item).c_str()));
      }
      shown_ = items;
    }
    ::SendMessageW(Window(), CB_SETCURSEL, static_cast<WPARAM>(box_.Index()), 0);
  }

  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_WINDOWPOSCHANGING:
        if (!shrinking_) MakeRoomForList(*reinterpret_cast<WINDOWPOS*>(lParam));
        break;
      case WM_SIZE: {
        // The box makes itself as high as its field.
        const FlagScope shrinking(shrinking_);
        return Default(message, wParam, lParam);
      }
      case WM_COMMAND + Reflected:
        if (HIWORD(wParam) == CBN_SELCHANGE && !IsMirroring()) Choose();
        if (HIWORD(wParam) == CBN_SELENDCANCEL) Changed();
        return 0;
    }
    return std::nullopt;
  }

 private:
  void Choose() {
    const LRESULT index = ::SendMessageW(Window(), CB_GETCURSEL, 0, 0);
    if (index == CB_ERR) return;
    box_.Choose(static_cast<int>(index));
    // A disabled box does not choose.
    Changed();
  }

  /// The height of a combo box is that of its dropped list; the field is as high as its font.
  void MakeRoomForList(WINDOWPOS& position) const {
    if ((position.flags & SWP_NOSIZE) != 0) return;
    constexpr std::size_t MostRows = 12;
    const auto rows = static_cast<int>(std::clamp<std::size_t>(box_.Items().size(), 1, MostRows));
    const LRESULT row = ::SendMessageW(Window(), CB_GETITEMHEIGHT, 0, 0);
    const LRESULT field = ::SendMessageW(Window(), CB_GETITEMHEIGHT, static_cast<WPARAM>(-1), 0);
    if (row == CB_ERR || field == CB_ERR) return;
    position.cy = static_cast<int>(field + row * rows) + Units().Length(12);
  }

  ComboBox& box_;
  std::vector<std::string> shown_;
  bool shrinking_ = false;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(CheckBox& box, HWND parent, Placement placement) {
  return std::make_unique<CheckBoxPeer>(box, parent, placement);
}

std::unique_ptr<WindowsPeer> MakePeer(OptionButton& button, HWND parent, Placement placement) {
  return std::make_unique<OptionButtonPeer>(button, parent, placement);
}

std::unique_ptr<WindowsPeer> MakePeer(ComboBox& box, HWND parent, Placement placement) {
  return std::make_unique<ComboBoxPeer>(box, parent, placement);
}

}  // namespace velkor
