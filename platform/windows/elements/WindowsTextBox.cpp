// platform/windows/elements/WindowsTextBox.cpp: text boxes, with and without a mask.
#include <algorithm>
#include <string>
#include <utility>
#include <vector>

#include "platform/windows/elements/MakePeer.h"
#include "values/Font.h"
#include "values/Twips.h"

namespace velkor {
namespace {

constexpr wchar_t SelectAll = 1;
constexpr wchar_t FirstCharacter = L' ';
constexpr wchar_t Rubout = 127;

bool IsFormKey(WPARAM key) {
  return key == VK_RETURN || key == VK_ESCAPE;
}

struct Selection {
  DWORD begin = 0;
  DWORD end = 0;
};

class TextBoxPeer : public WindowsPeer {
 public:
  TextBoxPeer(TextBox& box, HWND parent, Placement placement)
      : WindowsPeer(box, parent, placement, L"EDIT",
                    ES_AUTOHSCROLL | WS_TABSTOP | (placement == Placement::Bounds ? WS_BORDER : 0),
                    placement == Placement::Layout ? WS_EX_CLIENTEDGE : 0),
        box_(box),
        placement_(placement) {
    FitToDensity();
    ::SendMessageW(Window(), EM_SETLIMITTEXT, 0, 0);
    Changed();
  }

  void SetFocus() override {
    WindowsPeer::SetFocus();
    ::SendMessageW(Window(), EM_SETSEL, 0, -1);
  }

  SIZE NeededSize(int /*width*/) override {
    constexpr int Letters = 14;
    return WithFrame(MetricsOfFont(Window()).tmAveCharWidth * Letters);
  }

 protected:
  void FitToDensity() override {
    if (placement_ == Placement::Bounds) TakeSmallFont();
  }
  void Mirror() override {
    if (placement_ == Placement::Bounds) LeadTabKeyHere();
    const std::wstring wanted = ToWide(box_.Text());
    if (Text() == wanted) return;
    const Selection before = Selected();
    ::SetWindowTextW(Window(), wanted.c_str());
    if (::GetFocus() != Window()) return;
    const auto caret = std::min<std::size_t>(before.end, wanted.size());
    ::SendMessageW(Window(), EM_SETSEL, caret, static_cast<LPARAM>(caret));
  }

  std::optional<LRESULT> Handle(UINT message, WPARAM wParam, LPARAM lParam) override {
    switch (message) {
      case WM_GETDLGCODE:
        return Default(message, wParam, lParam) |
               (lParam != 0 && IsFormKey(wParam) ? DLGC_WANTMESSAGE : 0);
      case WM_KEYDOWN:
        // They count as characters.
        if (IsFormKey(wParam)) return 0;
        break;
      case WM_CHAR:
        Type(static_cast<wchar_t>(wParam), lParam);
        return 0;
      case WM_KILLFOCUS: {
        const LRESULT answer = Default(message, wParam, lParam);
        LoseFocus(reinterpret_cast<HWND>(wParam));
        return answer;
      }
      case WM_COMMAND + Reflected:
        if (HIWORD(wParam) == EN_CHANGE && !IsMirroring()) TakeText();
        return 0;
    }
    return std::nullopt;
  }

  /// Whether the user may leave the box with this text.
  virtual bool Takes(const std::wstring& /*text*/) const { return true; }
  /// Has a typed character, of one or two units, do its work.
  virtual void Take(const std::wstring& typed, LPARAM details) {
    if (typed.size() == 1) {
      Default(WM_CHAR, typed[0], details);
    } else {
      // Its units one by one would be told as texts that are none.
      Default(EM_REPLACESEL, TRUE, reinterpret_cast<LPARAM>(typed.c_str()));
    }
  }

  std::wstring Text() const { return TextOfWindow(Window()); }
  Selection Selected() const {
    Selection selection;
    ::SendMessageW(Window(), EM_GETSEL, reinterpret_cast<WPARAM>(&selection.begin),
                   reinterpret_cast<LPARAM>(&selection.end));
    return selection;
  }
  SIZE WithFrame(int textWidth) const {
    const int edge = Units().Metric(SM_CXEDGE);
    return {textWidth + 2 * edge + Units().Length(8),
            MetricsOfFont(Window()).tmHeight + 2 * edge + Units().Length(4)};
  }

 private:
  /// As large as the texts that are painted around it.
  void TakeSmallFont() {
    LOGFONTW wanted{};
    if (::GetObjectW(ParentFont(), sizeof(wanted), &wanted) == 0) return;
    wanted.lfHeight = -Units().ToPixels(Font().size * TwipsPerPoint);
    FontHandle made(::CreateFontIndirectW(&wanted));
    ::SendMessageW(Window(), WM_SETFONT, reinterpret_cast<WPARAM>(made.get()), FALSE);
    font_ = std::move(made);
  }

  void Type(wchar_t unit, LPARAM details) {
    if (IS_HIGH_SURROGATE(unit)) {
      lead_ = unit;
      return;
    }
    std::wstring typed(1, unit);
    int code = unit;
    if (const wchar_t lead = std::exchange(lead_, L'\0'); lead != 0 && IS_LOW_SURROGATE(unit)) {
      typed.insert(typed.begin(), lead);
      code = 0x10000 + ((lead - 0xD800) << 10) + (unit - 0xDC00);
    }
    const bool forForm = code == key_codes::Enter || code == key_codes::Escape;
    const bool isHeard = forForm || (code >= FirstCharacter && code != Rubout);
    if (isHeard && box_.onKeyPress && !box_.onKeyPress(code)) return;
    if (forForm) {
      GiveToForm(code);
    } else if (unit == SelectAll) {
      ::SendMessageW(Window(), EM_SETSEL, 0, -1);
    } else if (isHeard) {
      Take(typed, details);
    } else {
      Default(WM_CHAR, unit, details);
    }
  }

  /// What holds the box in a control has keys of its own.
  void GiveToForm(int code) {
    if (placement_ != Placement::Layout || Window() == nullptr) return;
    ::SendMessageW(::GetParent(Window()), WM_COMMAND, code == key_codes::Enter ? IDOK : IDCANCEL,
                   0);
  }

  void TakeText() {
    if (const std::wstring text = Text(); Takes(text)) {
      box_.SetText(ToUtf8(text));
    } else {
      Changed();
    }
  }

  /// What holds the box may be a stop of the Tab key: while the box is shown it is the stop
  /// instead. Dialogs find it only in a WS_EX_CONTROLPARENT, and look for ever where the keyboard
  /// is in a window of which they do not find the place (IsDialogMessage).
  void LeadTabKeyHere() const {
    const HWND holder = ::GetParent(Window());
    if ((::GetWindowLongW(holder, GWL_STYLE) & WS_TABSTOP) == 0) return;
    const LONG others = ::GetWindowLongW(holder, GWL_EXSTYLE) & ~WS_EX_CONTROLPARENT;
    ::SetWindowLongW(holder, GWL_EXSTYLE, others | (box_.Visible() ? WS_EX_CONTROLPARENT : 0));
  }

  /// The keyboard leaves the box when it goes to another element, not to another window; a box
  /// that was hidden or disabled is through with its text.
  void LoseFocus(HWND next) {
    const bool stays = next == nullptr || Window() == nullptr ||
                       ::GetAncestor(next, GA_ROOT) != ::GetAncestor(Window(), GA_ROOT);
    const bool usable = box_.Visible() && box_.Enabled();
    if (!stays && usable && box_.onLostFocus) box_.onLostFocus();
  }

  TextBox& box_;
  Placement placement_;
  FontHandle font_;
  /// The first unit of a character of two, until the second comes.
  wchar_t lead_ = L'\0';
};

bool IsDigit(wchar_t c) {
  return c >= L'0' && c <= L'9';
}

/// "99/99/9999": at most 2 digits, a stroke, at most 2 digits, a stroke, at most 4 digits.
class MaskedBoxPeer : public TextBoxPeer {
 public:
  MaskedBoxPeer(MaskedBox& box, HWND parent, Placement placement)
      : TextBoxPeer(box, parent, placement), mask_(ToWide(box.Mask())) {}

  SIZE NeededSize(int /*width*/) override {
    return WithFrame(LineSize(Window(), mask_).cx + Units().Length(8));
  }

 protected:
  bool Takes(const std::wstring& text) const override {
    // At which places of the mask the next character may stand.
    std::vector<bool> places(mask_.size() + 1);
    places[0] = true;
    const auto leaveOut = [&] {
      for (std::size_t i = 0; i < mask_.size(); ++i) {
        if (places[i] && mask_[i] == L'9') places[i + 1] = true;
      }
    };
    for (const wchar_t c : text) {
      leaveOut();
      for (std::size_t i = mask_.size(); i-- > 0;) {
        const bool fits = mask_[i] == L'9' ? IsDigit(c) : mask_[i] == c;
        places[i + 1] = places[i] && fits;
      }
      places[0] = false;
    }
    return std::find(places.begin(), places.end(), true) != places.end();
  }

  /// A digit that finds its group full goes to the next one.
  void Take(const std::wstring& typed, LPARAM details) override {
    const std::wstring text = Text();
    const Selection selection = Selected();
    std::wstring after = text;
    after.replace(selection.begin, selection.end - selection.begin, typed);
    if (Takes(after)) return TextBoxPeer::Take(typed, details);
    const bool atEnd = selection.begin == text.size();
    if (!atEnd || typed.size() != 1 || !IsDigit(typed[0])) return;
    for (const wchar_t c : mask_) {
      if (c == L'9' || !Takes(text + c + typed)) continue;
      TextBoxPeer::Take(std::wstring(1, c), details);
      TextBoxPeer::Take(typed, details);
      return;
    }
  }

 private:
  std::wstring mask_;
};

}  // namespace

std::unique_ptr<WindowsPeer> MakePeer(TextBox& box, HWND parent, Placement placement) {
  if (auto* const masked = dynamic_cast<MaskedBox*>(&box)) {
    return std::make_unique<MaskedBoxPeer>(*masked, parent, placement);
  }
  return std::make_unique<TextBoxPeer>(box, parent, placement);
}

}  // namespace velkor
