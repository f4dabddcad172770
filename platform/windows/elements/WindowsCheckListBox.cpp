// platform/windows/elements/WindowsCheckListBox.cpp: lists with check boxes.
#include <algorithm>
#include <string>
#include <vector>

#include "platform/windows/elements/MakePeer.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

constexpr DWORD ListStyle = LVS_REPORT | LVS_NOCOLUMNHEADER | LVS_SINGLESEL | LVS_SHOWSELALWAYS |
                            LVS_OWNERDATA | WS_TABSTOP;

/// Loads the class of list views.
const wchar_t* ListViewClass() {
  INITCOMMONCONTROLSEX wanted{sizeof(wanted), ICC_LISTVIEW_CLASSES};
  ::InitCommonControlsEx(&wanted);
  return WC_LISTVIEWW;
}

/// A list view that asks for its rows, so that thousands of them cost nothing until they are seen.
/// Such a list leaves it to its parent to turn the boxes.
class CheckListBoxPeer : public WindowsPeer {
 public:
  CheckListBoxPeer(CheckListBox& list, HWND parent, Placement placement)
      : WindowsPeer(list, parent, placement, ListViewClass(), ListStyle, WS_EX_CLIENTEDGE),
        list_(list) {
    Send(LVM_SETCALLBACKMASK, LVIS_STATEIMAGEMASK, 0);
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, 0,
         LVS_EX_CHECKBOXES | LVS_EX_FULLROWSELECT | LVS_EX_DOUBLEBUFFER);
    LVCOLUMNW column{};
    Send(LVM_INSERTCOLUMNW, 0, reinterpret_cast<LPARAM>(&column));
    Changed();
  }

  SIZE NeededSize(int /*width*/) override {
    constexpr int Letters = 40;
    constexpr int Rows = 12;
    const LRESULT rows = Send(LVM_APPROXIMATEVIEWRECT, Rows, MAKELPARAM(-1, -1));
    return {MetricsOfFont(Window()).tmAveCharWidth * Letters,
            HIWORD(rows) + 2 * Units().Metric(SM_CYEDGE)};
  }

 protected:
  /// The system makes the boxes when the style is set, and in the size of that moment.
  void FitToDensity() override {
    const LRESULT boxes = Send(LVM_SETIMAGELIST, LVSIL_STATE, 0);
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, 0);
    Send(LVM_SETEXTENDEDLISTVIEWSTYLE, LVS_EX_CHECKBOXES, LVS_EX_CHECKBOXES);
    if (boxes != 0) ::ImageList_Destroy(reinterpret_cast<HIMAGELIST>(boxes));
    MeasureTexts();
    FitColumn();
  }
  /// What stays the same is not touched, so that the list neither scrolls nor loses its row.
  void Mirror() override {
    const std::vector<CheckListBox::Item>& items = list_.Items();
    if (shown_ == items) return;
    const auto sameText = [](const auto& a, const auto& b) { return a.text == b.text; };
    const bool renamed =
        !std::equal(shown_.begin(), shown_.end(), items.begin(), items.end(), sameText);
    if (!renamed) return MirrorBoxes();
    const int current = Current();
    const std::string kept = current < 0 ? std::string() : shown_[AsIndex(current)].text;
    const bool counted = shown_.size() != items.size();
    shown_ = items;
    if (counted) Send(LVM_SETITEMCOUNT, shown_.size(), LVSICF_NOSCROLL);
    if (!kept.empty()) Follow(kept);
    MeasureTexts();
    FitColumn();
    ::InvalidateRect(Window(), nullptr, TRUE);
  }

  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_SIZE: {
        const LRESULT answer = Default(message, wParam, lParam);
        FitColumn();
        return answer;
      }
      case WM_SETFOCUS:
        if (Current() < 0) MakeCurrent(0);
        break;
      case WM_NOTIFY + Reflected:
        return Hear(lParam);
    }
    return std::nullopt;
  }

 private:
  static std::size_t AsIndex(int row) { return static_cast<std::size_t>(row); }

  LRESULT Send(UINT message, WPARAM wParam, LPARAM lParam) const {
    return ::SendMessageW(Window(), message, wParam, lParam);
  }

  std::optional<LRESULT> Hear(LPARAM notice) {
    switch (reinterpret_cast<const NMHDR*>(notice)->code) {
      case LVN_GETDISPINFOW:
        Give(reinterpret_cast<NMLVDISPINFOW*>(notice)->item);
        return 0;
      case LVN_ODFINDITEMW:
        return Find(*reinterpret_cast<const NMLVFINDITEMW*>(notice));
      // The second press of two quick ones counts as the first did.
      case NM_CLICK:
      case NM_DBLCLK:
        Toggle(RowAt(reinterpret_cast<const NMITEMACTIVATE*>(notice)->ptAction));
        return 0;
      case LVN_KEYDOWN:
        if (reinterpret_cast<const NMLVKEYDOWN*>(notice)->wVKey == VK_SPACE) Toggle(Current());
        return 0;
    }
    return std::nullopt;
  }

  void Give(LVITEMW& asked) {
    if (asked.iItem < 0 || AsIndex(asked.iItem) >= shown_.size()) return;
    const CheckListBox::Item& item = shown_[AsIndex(asked.iItem)];
    if ((asked.mask & LVIF_TEXT) != 0 && asked.cchTextMax > 0) {
      const std::wstring text = ToWide(item.text);
      const std::size_t room = AsIndex(asked.cchTextMax) - 1;
      asked.pszText[text.copy(asked.pszText, room)] = L'\0';
    }
    if ((asked.mask & LVIF_STATE) != 0) {
      asked.state = INDEXTOSTATEIMAGEMASK(item.checked ? 2u : 1u);
      asked.stateMask = LVIS_STATEIMAGEMASK;
    }
  }

  /// The row whose text begins as the user typed, from a row on and around the end.
  LRESULT Find(const NMLVFINDITEMW& asked) const {
    constexpr LRESULT NotFound = -1;
    if ((asked.lvfi.flags & (LVFI_STRING | LVFI_PARTIAL)) == 0 || shown_.empty()) return NotFound;
    const std::wstring typed(asked.lvfi.psz);
    const std::size_t start = asked.iStart < 0 ? 0 : AsIndex(asked.iStart);
    for (std::size_t i = 0; i < shown_.size(); ++i) {
      const std::size_t row = (start + i) % shown_.size();
      const std::wstring text = ToWide(shown_[row].text).substr(0, typed.size());
      if (::CompareStringW(LOCALE_USER_DEFAULT, NORM_IGNORECASE, text.c_str(), -1, typed.c_str(),
                           -1) == CSTR_EQUAL) {
        return static_cast<LRESULT>(row);
      }
    }
    return NotFound;
  }

  int RowAt(POINT point) const {
    LVHITTESTINFO place{};
    place.pt = point;
    return static_cast<int>(Send(LVM_HITTEST, 0, reinterpret_cast<LPARAM>(&place)));
  }

  void Toggle(int row) {
    if (row < 0) return;
    list_.ToggleItem(AsIndex(row));
    if (Window() == nullptr) return;
    ::NotifyWinEvent(EVENT_OBJECT_STATECHANGE, Window(), OBJID_CLIENT, row + 1);
  }

  int Current() const {
    return static_cast<int>(Send(LVM_GETNEXTITEM, static_cast<WPARAM>(-1), LVNI_FOCUSED));
  }
  void MakeCurrent(int row) const {
    LVITEMW item{};
    item.state = item.stateMask = LVIS_FOCUSED | LVIS_SELECTED;
    Send(LVM_SETITEMSTATE, static_cast<WPARAM>(row), reinterpret_cast<LPARAM>(&item));
  }
  /// The current row stays with its text where that is still offered.
  void Follow(const std::string& text) const {
    const auto place = std::find_if(shown_.begin(), shown_.end(),
                                    [&](const auto& item) { return item.text == text; });
    if (place != shown_.end()) MakeCurrent(static_cast<int>(place - shown_.begin()));
  }

  void MirrorBoxes() {
    const std::vector<CheckListBox::Item>& items = list_.Items();
    for (std::size_t i = 0; i < items.size(); ++i) {
      if (shown_[i].checked == items[i].checked) continue;
      shown_[i].checked = items[i].checked;
      Send(LVM_REDRAWITEMS, i, static_cast<LPARAM>(i));
    }
  }

  void MeasureTexts() {
    std::vector<std::wstring> texts;
    for (const CheckListBox::Item& item : shown_) texts.push_back(ToWide(item.text));
    widest_ = WidestLine(Window(), texts);
  }
  /// As wide as the list, or as its longest text, which is then scrolled to.
  void FitColumn() const {
    const RECT area = Area();
    const int wanted = std::max(static_cast<int>(area.right), widest_ + Units().Length(32));
    if (Send(LVM_GETCOLUMNWIDTH, 0, 0) != wanted) Send(LVM_SETCOLUMNWIDTH, 0, wanted);
  }

  CheckListBox& list_;
  std::vector<CheckListBox::Item> shown_;
  int widest_ = 0;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(CheckListBox& list, HWND parent, Placement placement) {
  return std::make_unique<CheckListBoxPeer>(list, parent, placement);
}

}  // namespace velkor
