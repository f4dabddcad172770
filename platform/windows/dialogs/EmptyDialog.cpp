// platform/windows/dialogs/EmptyDialog.cpp: the template in memory, and items one below the other.
#include "platform/windows/dialogs/EmptyDialog.h"

#include <algorithm>

#include "platform/windows/dialogs/DialogPlace.h"
#include "platform/windows/drawing/ScreenUnits.h"
#include "platform/windows/system/Modules.h"

namespace velkor {
namespace {

int Across(double twips) {
  return ToPixel(twips, ScreenPixel().width);
}

int Down(double twips) {
  return ToPixel(twips, ScreenPixel().height);
}

}  // namespace

EmptyDialog::EmptyDialog(DWORD style) : font_(MakeDialogFont()) {
  template_.header.style = WS_POPUP | WS_CAPTION | WS_SYSMENU | style;
}

INT_PTR EmptyDialog::ShowModal(HWND owner, DLGPROC procedure, LPARAM parameter) const {
  return ::DialogBoxIndirectParamW(ThisModule(), &template_.header, owner, procedure, parameter);
}

HWND EmptyDialog::Open(HWND owner, DLGPROC procedure, LPARAM parameter) const {
  return ::CreateDialogIndirectParamW(ThisModule(), &template_.header, owner, procedure, parameter);
}

DialogFiller::DialogFiller(HWND dialog, const EmptyDialog& kind, double width)
    : dialog_(dialog),
      font_(kind.Font()),
      margin_{Across(Margin), Down(Margin)},
      width_(Across(width)),
      top_(margin_.cy),
      lineHeight_(HeightOf(L"X")) {}

void DialogFiller::AddText(const std::wstring& text) {
  const int height = std::min<int>(HeightOf(text), SizeOf(WorkAreaAround(dialog_)).cy / 2);
  Add(L"STATIC", text, SS_LEFT | SS_NOPREFIX | SS_EDITCONTROL, 0, -1,
      {margin_.cx, top_, margin_.cx + width_, top_ + height});
  top_ += height + margin_.cy;
}

HWND DialogFiller::AddLine(const wchar_t* windowClass, DWORD style, DWORD extendedStyle, int id,
                           double lines) {
  const int height = static_cast<int>(lineHeight_ * lines);
  const HWND item = Add(windowClass, {}, style, extendedStyle, id,
                        {margin_.cx, top_, margin_.cx + width_, top_ + height});
  top_ += height + margin_.cy;
  return item;
}

void DialogFiller::AddButtons(std::initializer_list<Button> buttons) {
  const int width = Across(ButtonWidth);
  const int gap = margin_.cx / 2;
  const int height = lineHeight_ * 7 / 4;
  int left = margin_.cx + width_ - static_cast<int>(buttons.size()) * (width + gap) + gap;
  DWORD style = WS_TABSTOP | BS_DEFPUSHBUTTON;
  for (const Button& button : buttons) {
    Add(L"BUTTON", button.text, style, 0, button.id, {left, top_, left + width, top_ + height});
    left += width + gap;
    style = WS_TABSTOP | BS_PUSHBUTTON;
  }
  top_ += height + margin_.cy;
}

void DialogFiller::Fit(HWND owner) {
  PutInMiddle(dialog_, owner, WithFrame(dialog_, {width_ + 2 * margin_.cx, top_}));
}

HWND DialogFiller::Add(const wchar_t* windowClass, const std::wstring& text, DWORD style,
                       DWORD extendedStyle, int id, RECT place) {
  const HWND item = ::CreateWindowExW(
      extendedStyle, windowClass, text.c_str(), style | WS_CHILD | WS_VISIBLE, place.left,
      place.top, place.right - place.left, place.bottom - place.top, dialog_,
      reinterpret_cast<HMENU>(static_cast<INT_PTR>(id)), ThisModule(), nullptr);
  ::SendMessageW(item, WM_SETFONT, reinterpret_cast<WPARAM>(font_), FALSE);
  return item;
}

int DialogFiller::HeightOf(const std::wstring& text) const {
  const HDC dc = ::GetDC(dialog_);
  const HGDIOBJ before = ::SelectObject(dc, font_);
  RECT bounds{0, 0, width_, 0};
  ::DrawTextW(dc, text.c_str(), static_cast<int>(text.size()), &bounds,
              DT_CALCRECT | DT_WORDBREAK | DT_EDITCONTROL | DT_NOPREFIX | DT_EXPANDTABS);
  ::SelectObject(dc, before);
  ::ReleaseDC(dialog_, dc);
  return bounds.bottom;
}

}  // namespace velkor
