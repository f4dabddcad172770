// hosts/windows/TryOut/FormBar.cpp: the bar's windows, its layout, and its way to the control.
#include "hosts/windows/TryOut/FormBar.h"

#include <algorithm>

#include "platform/windows/com/Automation.h"
#include "platform/windows/elements/WindowText.h"

namespace velkor {
namespace {

/// Lengths in pixels of 96 to the inch.
constexpr int Margin = 8;
constexpr int Gap = 6;
constexpr int LineMargin = 8;
constexpr int BoxWidth = 22;
constexpr int ButtonPadding = 24;
/// In dialog units.
constexpr int LeastEdit = 66;

/// Calls the control for as long as a bar's operation takes.
class ControlCalls {
 public:
  explicit ControlCalls(IDispatch& control) : control_(program_, kind_, &control) {}

  Variant Get(const char* property) const { return control_.Get(property); }
  void Put(const char* property, const Variant& value) const { control_.Put(property, value); }

 private:
  DialogOwner owner_;
  AutomationProgram program_{"Year planner", owner_};
  AutomationClass kind_{"YearPlan"};
  AutomationObject control_;
};

std::string TextIn(HWND edit) {
  return ToUtf8(TextOfWindow(edit));
}

bool IsChecked(HWND box) {
  return ::SendMessageW(box, BM_GETCHECK, 0, 0) == BST_CHECKED;
}

}  // namespace

/// Places windows from left to right, in lines.
class BarLines {
 public:
  /// @param height  of a line's windows
  BarLines(int width, int height, Density units)
      : width_(width), margin_(units.Length(Margin)), gap_(units.Length(Gap)), height_(height) {
    x_ = margin_;
    y_ = gap_;
  }

  /// What is left of the line, in pixels.
  int Room() const { return width_ - margin_ - x_; }
  int Bottom() const { return y_ + height_ + gap_; }
  void Next() {
    x_ = margin_;
    y_ += height_ + gap_;
  }
  /// Begins a line where so much does not fit beside what stands in this one.
  void KeepTogether(int width) {
    if (x_ > margin_ && width > Room()) Next();
  }
  /// What follows, of this width, stands at the right end.
  void SkipTo(int width) { x_ = std::max(width_ - margin_ - width, margin_); }
  void Place(HWND window, int width) {
    // Neighbours lie over one another for a moment: nothing of what is seen then may be kept.
    ::SetWindowPos(window, nullptr, x_, y_, width, height_,
                   SWP_NOZORDER | SWP_NOACTIVATE | SWP_NOCOPYBITS);
    x_ += width + gap_;
  }

 private:
  int width_;
  int margin_;
  int gap_;
  int height_;
  int x_;
  int y_;
};

FormBar::FormBar(HWND form) : form_(form) {
  const auto addText = [&](const char* property, const wchar_t* label) {
    const HWND before = Make(L"STATIC", label, SS_CENTERIMAGE, -1);
    texts_.push_back(
        {property, before, Make(L"EDIT", L"", WS_TABSTOP | ES_AUTOHSCROLL, -1, WS_EX_CLIENTEDGE)});
  };
  addText("Folder", L"&Folder");
  addText("TitleName", L"&Title name");
  addText("AppointmentForm", L"Appointment f&orm");
  const auto addTruth = [&](const char* property, const wchar_t* label) {
    truths_.push_back(
        {property, nullptr, Make(L"BUTTON", label, WS_TABSTOP | BS_AUTOCHECKBOX, -1)});
  };
  addTruth("AllEvents", L"&All events");
  addTruth("HideNonCategoryItems", L"&Hide items without category");
  addTruth("DisplaySubject", L"&Display subject");
  buttons_ = {
      Make(L"BUTTON", L"A&pply", WS_TABSTOP | BS_DEFPUSHBUTTON, form_commands::Apply),
      Make(L"BUTTON", L"&Save properties", WS_TABSTOP | BS_PUSHBUTTON, form_commands::Save),
      Make(L"BUTTON", L"&Restore properties", WS_TABSTOP | BS_PUSHBUTTON, form_commands::Restore)};
}

HWND FormBar::Make(const wchar_t* windowClass, const wchar_t* text, DWORD style, int id,
                   DWORD extendedStyle) const {
  const HWND window =
      ::CreateWindowExW(extendedStyle, windowClass, text, WS_CHILD | WS_VISIBLE | style, 0, 0, 0, 0,
                        form_, reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), nullptr, nullptr);
  return window;
}

void FormBar::TakeFont(HFONT font, Density units) {
  units_ = units;
  const auto give = [font](HWND window) {
    ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font), FALSE);
  };
  for (const auto* fields : {&texts_, &truths_}) {
    for (const Field& field : *fields) {
      if (field.label != nullptr) give(field.label);
      give(field.window);
    }
  }
  for (const HWND button : buttons_) give(button);
}

int FormBar::WidthOf(HWND window) const {
  return TextSize(window, TextOfWindow(window), DT_SINGLELINE).cx;
}

int FormBar::Arrange(int width) {
  const int text = static_cast<int>(MetricsOfFont(buttons_.front()).tmHeight);
  BarLines lines(width, text + units_.Length(LineMargin), units_);
  PlaceTexts(lines);
  for (const Field& field : truths_) {
    const int wide = WidthOf(field.window) + units_.Length(BoxWidth);
    lines.KeepTogether(wide);
    lines.Place(field.window, wide);
  }
  int wanted = -units_.Length(Gap);
  for (const HWND button : buttons_)
    wanted += WidthOf(button) + units_.Length(ButtonPadding) + units_.Length(Gap);
  lines.KeepTogether(wanted);
  lines.SkipTo(wanted);
  for (const HWND button : buttons_) {
    const int wide = WidthOf(button) + units_.Length(ButtonPadding);
    lines.KeepTogether(wide);
    lines.Place(button, wide);
  }
  return lines.Bottom();
}

/// Edits share what their labels leave, or have a line each.
void FormBar::PlaceTexts(BarLines& lines) const {
  int labels = 0;
  for (const Field& field : texts_) labels += WidthOf(field.label) + 2 * units_.Length(Gap);
  const int count = static_cast<int>(texts_.size());
  const int share = (lines.Room() + units_.Length(Gap) - labels) / count;
  const bool oneRow = share >= DialogUnits(buttons_.front(), {LeastEdit, 0}).cx;
  for (const Field& field : texts_) {
    lines.Place(field.label, WidthOf(field.label));
    lines.Place(field.window, oneRow ? share : std::max(lines.Room(), 0));
    if (!oneRow) lines.Next();
  }
  if (oneRow) lines.Next();
}

void FormBar::Show(IDispatch& control) const {
  const ControlCalls calls(control);
  for (const Field& field : texts_) {
    const std::string text = calls.Get(field.property).ToText();
    if (text != TextIn(field.window)) ::SetWindowTextW(field.window, ToWide(text).c_str());
  }
  for (const Field& field : truths_) {
    const bool truth = calls.Get(field.property).ToBool();
    ::SendMessageW(field.window, BM_SETCHECK, truth ? BST_CHECKED : BST_UNCHECKED, 0);
  }
}

void FormBar::Apply(IDispatch& control) const {
  // All fields are read before the first change shows them anew.
  std::vector<std::pair<const char*, Variant>> wanted;
  for (const Field& field : texts_)
    wanted.emplace_back(field.property, Variant(TextIn(field.window)));
  for (const Field& field : truths_) {
    wanted.emplace_back(field.property, Variant(IsChecked(field.window)));
  }
  const ControlCalls calls(control);
  for (const auto& [property, value] : wanted) {
    if (calls.Get(property).ToText() != value.ToText()) calls.Put(property, value);
  }
}

void FormBar::Enable(bool enabled) const {
  for (const auto* fields : {&texts_, &truths_}) {
    for (const Field& field : *fields) ::EnableWindow(field.window, enabled);
  }
  for (const HWND button : buttons_) {
    if (::GetDlgCtrlID(button) != form_commands::Restore) ::EnableWindow(button, enabled);
  }
}

}  // namespace velkor
