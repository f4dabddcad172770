// hosts/windows/OutlookVelkor/PageWindow.cpp: the window of a page, and its keys.
#include "hosts/windows/OutlookVelkor/PageWindow.h"

#include "platform/windows/elements/PaintedWindow.h"
#include "platform/windows/system/Modules.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

constexpr UINT_PTR PageId = 5;
constexpr UINT ToldMessage = WM_APP;
/// Dialogs may take another size after they gave the page its place.
constexpr UINT FitMessage = WM_APP + 1;

/// Whether Tab goes beyond the fields, or with Shift before them.
bool IsPastEnd(HWND page) {
  const HWND focus = ::GetFocus();
  const HWND first = ::GetNextDlgTabItem(page, nullptr, FALSE);
  if (::GetKeyState(VK_SHIFT) < 0) return focus == first;
  return ::GetNextDlgTabItem(page, focus, FALSE) == first;
}

}  // namespace

PageWindow::PageWindow(const Form& form, HWND parent) {
  const AwarenessScope awareness(parent);
  window_ = ::CreateWindowExW(WS_EX_CONTROLPARENT, PaintedWindowClass(), L"",
                              (parent != nullptr ? WS_CHILD : WS_POPUP) | WS_CLIPSIBLINGS, 0, 0, 0,
                              0, parent, nullptr, ThisModule(), nullptr);
  ::SetWindowSubclass(window_, Procedure, PageId, reinterpret_cast<DWORD_PTR>(this));
  density_ = DensityOf(window_);
  LRESULT font = parent != nullptr ? ::SendMessageW(parent, WM_GETFONT, 0, 0) : 0;
  if (font == 0) {
    font_ = MakeDialogFont(density_);
    font = reinterpret_cast<LRESULT>(font_.get());
  }
  ::SendMessageW(window_, WM_SETFONT, static_cast<WPARAM>(font), FALSE);
  rows_ = std::make_unique<WindowsFormRows>(form, window_);
}

PageWindow::~PageWindow() {
  onTold = nullptr;
  if (window_ != nullptr) ::DestroyWindow(window_);
}

void PageWindow::Move(const RECT& place) {
  if (window_ == nullptr) return;
  place_ = place;
  LayOut(place);
  ::PostMessageW(window_, FitMessage, 0, 0);
}

void PageWindow::LayOut(const RECT& place) {
  const SIZE area{place.right - place.left, place.bottom - place.top};
  ::SetWindowPos(window_, nullptr, place.left, place.top, area.cx, area.cy,
                 SWP_NOZORDER | SWP_NOACTIVATE);
  rows_->Arrange(area, {});
}

/// What lies beyond the dialog would not be seen.
void PageWindow::FitToDialog() {
  RECT dialog{};
  RECT seen{};
  if (::GetClientRect(::GetParent(window_), &dialog) && ::IntersectRect(&seen, &dialog, &place_)) {
    LayOut(seen);
  }
}

void PageWindow::Show(bool visible) {
  if (window_ != nullptr) ::ShowWindow(window_, visible ? SW_SHOWNA : SW_HIDE);
}

void PageWindow::TellSoon() {
  if (window_ != nullptr) ::PostMessageW(window_, ToldMessage, 0, 0);
}

bool PageWindow::TranslateKey(MSG& message) const {
  if (window_ == nullptr || !::IsChild(window_, message.hwnd)) return false;
  if (message.message == WM_KEYDOWN) {
    if (message.wParam == VK_RETURN || message.wParam == VK_ESCAPE) return false;
    if (message.wParam == VK_TAB && IsPastEnd(window_)) return false;
  }
  return ::IsDialogMessageW(window_, &message);
}

LRESULT CALLBACK PageWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR /*id*/, DWORD_PTR self) {
  auto& page = *reinterpret_cast<PageWindow*>(self);
  if (const auto answer = ReflectMessage(message, wParam, lParam)) return *answer;
  switch (message) {
    case WM_NCDESTROY:
      ::RemoveWindowSubclass(window, Procedure, PageId);
      page.window_ = nullptr;
      break;
    case WM_ERASEBKGND: {
      RECT area{};
      ::GetClientRect(window, &area);
      ::FillRect(reinterpret_cast<HDC>(wParam), &area, ::GetSysColorBrush(COLOR_BTNFACE));
      return TRUE;
    }
    case FitMessage:
      page.FitToDialog();
      return 0;
    case ToldMessage:
      // Who is told may let the page go.
      if (const std::function<void()> told = page.onTold) told();
      return 0;
    default:
      break;
  }
  return ::DefSubclassProc(window, message, wParam, lParam);
}

}  // namespace velkor
