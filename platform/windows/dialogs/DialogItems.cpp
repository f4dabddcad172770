// platform/windows/dialogs/DialogItems.cpp: measures items by their font and puts them in place.
#include "platform/windows/dialogs/DialogItems.h"

#include <algorithm>
#include <utility>

#include "platform/windows/dialogs/DialogPlace.h"
#include "platform/windows/elements/WindowText.h"
#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

/// In pixels of 96 to the inch.
constexpr int Margin = 10;

constexpr UINT WrappedText = DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS;

}  // namespace

DialogItems::DialogItems(HWND dialog, int letters) : dialog_(dialog), letters_(letters) {
  TakeFont();
}

void DialogItems::AddText(const std::wstring& text) {
  items_.push_back({Add(L"STATIC", text, SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL, 0, -1)});
}

void DialogItems::AddLine(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, int id,
                          double lines) {
  items_.push_back({Add(windowClass, {}, style, extendedStyle, id), lines});
}

void DialogItems::AddButtons(const std::vector<Button>& buttons) {
  DWORD style = WS_TABSTOP | BS_DEFPUSHBUTTON;
  for (const Button& button : buttons) {
    buttons_.push_back(Add(L"BUTTON", button.text, style, 0, button.id));
    style = WS_TABSTOP | BS_PUSHBUTTON;
  }
}

HWND DialogItems::Add(const wchar_t* windowClass, const std::wstring& text, DWORD style,
                      DWORD extendedStyle, int id) {
  const HWND item = ::CreateWindowExW(
      extendedStyle, windowClass, text.c_str(), style | WS_CHILD | WS_VISIBLE, 0, 0, 0, 0, dialog_,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(), nullptr);
  ::SendMessageW(item, WM_SETFONT, reinterpret_cast<WPARAM>(font_.get()), FALSE);
  return item;
}

void DialogItems::TakeFont() {
  density_ = DensityOf(dialog_);
  FontHandle font = MakeDialogFont(density_);
  const auto give = [&](HWND window) {
    ::SendMessageW(window, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
  };
  for (const Item& item : items_) give(item.window);
  for (const HWND button : buttons_) give(button);
  give(dialog_);
  font_ = std::move(font);
}

int DialogItems::HeightOf(const Item& item, int width) const {
  if (item.lines > 0) {
    return static_cast<int>(LineSize(item.window, L"X").cy * item.lines);
  }
  const SIZE text = TextSize(item.window, TextOfWindow(item.window), WrappedText, width);
  return std::min<int>(text.cy, SizeOf(WorkAreaAround(dialog_)).cy / 2);
}

SIZE DialogItems::Arrange() const {
  const int margin = density_.Length(Margin);
  const SIZE units = DialogUnits(buttons_.front(), {4 * letters_, 14});
  const int most = SizeOf(WorkAreaAround(dialog_)).cx - 4 * margin;
  const int width = std::min<int>(units.cx, most);
  int top = margin;
  for (const Item& item : items_) {
    const int height = HeightOf(item, width);
    ::SetWindowPos(item.window, nullptr, margin, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    top += height + margin;
  }
  ArrangeButtons(top, margin + width, units.cy);
  return {width + 2 * margin, top + units.cy + margin};
}

void DialogItems::ArrangeButtons(int top, int right, int height) const {
  const int gap = density_.Length(Margin) / 2;
  int width = 0;
  for (const HWND button : buttons_) {
    const SIZE text = LineSize(button, TextOfWindow(button));
    const SIZE usual = DialogUnits(button, {50, 0});
    width = std::max<int>(width, std::max(usual.cx, text.cx + usual.cx / 3));
  }
  int left = right - static_cast<int>(buttons_.size()) * (width + gap) + gap;
  for (const HWND button : buttons_) {
    ::SetWindowPos(button, nullptr, left, top, width, height, SWP_NOZORDER | SWP_NOACTIVATE);
    left += width + gap;
  }
}

void DialogItems::Open(HWND owner) {
  PutInMiddle(dialog_, owner, WithFrame(dialog_, Arrange()));
}

bool DialogItems::Hear(UINT message, WPARAM wParam, LPARAM lParam) {
  POINT corner{};
  if (message == WM_DPICHANGED) {
    KeepDotsPerInch(dialog_, LOWORD(wParam));
    const auto& suggested = *reinterpret_cast<const RECT*>(lParam);
    corner = {suggested.left, suggested.top};
  } else if (message == WM_SETTINGCHANGE && wParam == SPI_SETNONCLIENTMETRICS) {
    RECT now{};
    ::GetWindowRect(dialog_, &now);
    corner = {now.left, now.top};
  } else {
    if (message == WM_NCDESTROY) KeepDotsPerInch(dialog_, 0);
    return false;
  }
  TakeFont();
  const SIZE size = WithFrame(dialog_, Arrange());
  ::SetWindowPos(dialog_, nullptr, corner.x, corner.y, size.cx, size.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  ::InvalidateRect(dialog_, nullptr, TRUE);
  return true;
}

}  // namespace velkor
