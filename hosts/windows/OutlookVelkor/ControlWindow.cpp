// hosts/windows/OutlookVelkor/ControlWindow.cpp: the peers of a control's elements, one over the
// other.
#include "hosts/windows/OutlookVelkor/ControlWindow.h"

#include <algorithm>
#include <map>
#include <utility>

#include "control/YearPlan.h"
#include "platform/windows/drawing/GdiSurface.h"
#include "platform/windows/elements/MakePeer.h"
#include "platform/windows/elements/PaintedWindow.h"
#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/MessagePump.h"
#include "platform/windows/system/Modules.h"
// After windows.h.
#include <commctrl.h>
#include <windowsx.h>

namespace velkor {
namespace {

constexpr UINT_PTR WindowId = 2;
constexpr UINT_PTR FocusId = 3;

COLORREF ToNative(Colour colour) {
  return RGB(colour.Red(), colour.Green(), colour.Blue());
}

FontHandle FontOf(const ControlLook& look, Density density) {
  return look.font ? MakeFont(*look.font, density.Pixel()) : MakeDialogFont(density);
}

/// Lines across a frame, and handles at its corners and sides. What its elements leave free along
/// the control's edge is 3 pixels wide above them and 6 elsewhere.
void DrawDesignFrame(HDC dc, const RECT& area, Density density, bool hatching, bool grabHandles) {
  if (hatching) {
    const int width = density.Length(3);
    const RECT inner{area.left + width, area.top + width, area.right - width, area.bottom - width};
    const BrushHandle lines(::CreateHatchBrush(HS_BDIAGONAL, ::GetSysColor(COLOR_WINDOWTEXT)));
    const SavedDc saved(dc);
    ::ExcludeClipRect(dc, inner.left, inner.top, inner.right, inner.bottom);
    ::SetBkColor(dc, ::GetSysColor(COLOR_WINDOW));
    ::FillRect(dc, &area, lines.get());
  }
  if (!grabHandles) return;
  const int side = density.Length(6);
  for (int x = 0; x < 3; ++x) {
    for (int y = 0; y < 3; ++y) {
      if (x == 1 && y == 1) continue;
      const LONG left = (area.right - side) * x / 2;
      const LONG top = (area.bottom - side) * y / 2;
      const RECT handle{left, top, left + side, top + side};
      ::FillRect(dc, &handle, ::GetSysColorBrush(COLOR_WINDOWTEXT));
    }
  }
}

bool IsDown(int virtualKey) {
  return ::GetKeyState(virtualKey) < 0;
}

/// Whether the Tab key stops at a window.
bool IsStop(HWND window) {
  return (::GetWindowLongW(window, GWL_STYLE) & WS_TABSTOP) != 0 && ::IsWindowVisible(window) &&
         ::IsWindowEnabled(window);
}

/// Whether a key belongs to the element that has the keyboard. Keys with which containers do things
/// of their own are theirs: function keys, Escape, and Ctrl with a letter, but for those that a
/// text knows.
/// @param wanted  the element's answer to WM_GETDLGCODE
bool IsForElement(WPARAM key, LRESULT wanted) {
  if ((wanted & (DLGC_WANTALLKEYS | DLGC_WANTMESSAGE)) != 0) return true;
  if ((wanted & DLGC_WANTARROWS) == 0) return false;
  if ((key >= VK_F1 && key <= VK_F24) || key == VK_ESCAPE) return false;
  const bool isLetter = key >= 'A' && key <= 'Z';
  return !isLetter || !IsDown(VK_CONTROL) || (wanted & DLGC_HASSETSEL) != 0;
}

}  // namespace

KeyboardEntry EntryByTab() {
  return IsDown(VK_SHIFT) ? KeyboardEntry::Last : KeyboardEntry::First;
}

ControlWindow::ControlWindow(YearPlan& plan, HWND parent, const RECT& place, DialogOwner& owner,
                             ControlWindowCalls calls)
    : plan_(plan), owner_(owner), calls_(std::move(calls)), accessible_(plan.Accessible(), owner) {
  const AwarenessScope awareness(parent);
  window_ = ::CreateWindowExW(WS_EX_CONTROLPARENT, PaintedWindowClass(), L"YearPlan",
                              WS_CHILD | WS_CLIPCHILDREN | WS_CLIPSIBLINGS, place.left, place.top,
                              place.right - place.left, place.bottom - place.top, parent, nullptr,
                              ThisModule(), nullptr);
  if (window_ == nullptr) return;
  TakeFont();
  ::SetWindowSubclass(window_, Procedure, WindowId, reinterpret_cast<DWORD_PTR>(this));
  accessible_.Begin(window_);
  Fit();
  MakePeers();
  ::ShowWindow(window_, SW_SHOWNA);
}

ControlWindow::~ControlWindow() {
  Destroy();
}

void ControlWindow::Destroy() {
  if (window_ != nullptr) ::DestroyWindow(window_);
}

void ControlWindow::MakePeers() {
  YearPlanElements& elements = plan_.Elements();
  std::map<const Element*, HWND> windows{{nullptr, window_}};
  for (const PlacedElement& placed : elements.Placed()) {
    windows[placed.element] =
        Keep(MakePeerOf<Toolbar, Label, CommandButton, Image, PictureBox, ScrollBar, TextBox>(
            *placed.element, windows.at(placed.holder), Placement::Bounds));
    accessible_.Add(*placed.element, windows[placed.element]);
  }
  grid_ = windows[&elements.pic1];
  legendView_ = windows[&elements.legend.picCatView];
  legendRows_ = windows[&elements.legend.picCats];
  for (Menu* menu : elements.Menus()) menus_.push_back(MakePeer(*menu, window_, owner_));
}

HWND ControlWindow::Keep(std::unique_ptr<WindowsPeer> peer) {
  const HWND window = peer->Window();
  ::SetWindowSubclass(window, WatchFocus, FocusId, reinterpret_cast<DWORD_PTR>(this));
  peers_.push_back(std::move(peer));
  return window;
}

LRESULT CALLBACK ControlWindow::WatchFocus(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                           UINT_PTR /*id*/, DWORD_PTR self) {
  auto& control = *reinterpret_cast<ControlWindow*>(self);
  const EntryScope entry(control.owner_);
  if (message == WM_NCDESTROY) ::RemoveWindowSubclass(window, WatchFocus, FocusId);
  if (message == WM_SETFOCUS || message == WM_KILLFOCUS) {
    if (window == control.legendRows_) ::InvalidateRect(control.window_, nullptr, FALSE);
    const auto other = reinterpret_cast<HWND>(wParam);
    const bool stays = other == control.window_ || ::IsChild(control.window_, other);
    if (message == WM_SETFOCUS || !stays) control.calls_.onFocus(message == WM_SETFOCUS);
  }
  const auto answer = control.accessible_.Handle(window, message, wParam, lParam);
  if (answer) return *answer;
  return ::DefSubclassProc(window, message, wParam, lParam);
}

LRESULT CALLBACK ControlWindow::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                          UINT_PTR /*id*/, DWORD_PTR self) {
  auto& control = *reinterpret_cast<ControlWindow*>(self);
  const EntryScope entry(control.owner_);
  if (const auto answer = ReflectMessage(message, wParam, lParam)) return *answer;
  if (const auto answer = control.accessible_.Handle(window, message, wParam, lParam)) {
    return *answer;
  }
  switch (message) {
    case WM_NCDESTROY:
      control.accessible_.End();
      ::RemoveWindowSubclass(window, Procedure, WindowId);
      control.window_ = nullptr;
      break;
    case WM_SIZE:
      control.FollowDensity();
      control.Fit();
      break;
    // Only containers that take care of the density themselves bring it; with others the control
    // sees it by its size.
    case WM_DPICHANGED_AFTERPARENT:
      control.FollowDensity();
      break;
    case WM_SETFOCUS:
      control.Focus(IsDown(VK_TAB) ? EntryByTab() : KeyboardEntry::Grid);
      return 0;
    case WM_ERASEBKGND:
      return 1;
    case WM_SETCURSOR:
      // Children ask their parents first.
      if (!control.calls_.isWaiting()) break;
      ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
      return TRUE;
    case WM_PAINT:
      control.Paint();
      return 0;
    case WM_CTLCOLORSTATIC:
      return control.GiveColours(reinterpret_cast<HDC>(wParam));
    case WM_SYSCOLORCHANGE:
      control.calls_.onSystemColours();
      control.Dress();
      break;
    default:
      break;
  }
  return ::DefSubclassProc(window, message, wParam, lParam);
}

LRESULT ControlWindow::GiveColours(HDC dc) const {
  const ControlLook& look = plan_.Elements().look;
  ::SetTextColor(dc, ToNative(look.fore));
  ::SetBkColor(dc, ToNative(look.back));
  ::SetDCBrushColor(dc, ToNative(look.back));
  return reinterpret_cast<LRESULT>(::GetStockObject(DC_BRUSH));
}

/// The ground, and a frame around the legend while it has the keyboard.
void ControlWindow::Paint() {
  PAINTSTRUCT paint{};
  const HDC dc = ::BeginPaint(window_, &paint);
  ::SetDCBrushColor(dc, ToNative(plan_.Elements().look.back));
  const auto ground = static_cast<HBRUSH>(::GetStockObject(DC_BRUSH));
  ::FillRect(dc, &paint.rcPaint, ground);
  if (legendRows_ != nullptr && ::GetFocus() == legendRows_) {
    RECT frame{};
    ::GetWindowRect(legendView_, &frame);
    ::MapWindowPoints(nullptr, window_, reinterpret_cast<POINT*>(&frame), 2);
    ::InflateRect(&frame, 1, 1);
    ::FrameRect(dc, &frame, ::GetSysColorBrush(COLOR_HIGHLIGHT));
  }
  RECT area{};
  ::GetClientRect(window_, &area);
  DrawDesignFrame(dc, area, density_, hatching_, grabHandles_);
  ::EndPaint(window_, &paint);
}

void ControlWindow::TakeFont() {
  density_ = DensityOf(window_);
  FontHandle font = FontOf(plan_.Elements().look, density_);
  ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(font.get()), FALSE);
  const FontHandle before = std::exchange(font_, std::move(font));
  for (const auto& peer : peers_) peer->TakeDensity(density_);
}

void ControlWindow::FollowDensity() {
  if (DensityOf(window_) == density_) return;
  TakeFont();
  Fit();
}

void ControlWindow::Dress() {
  if (window_ == nullptr) return;
  TakeFont();
  // Pictures that the colours are in are made anew.
  for (const auto& peer : peers_) ::SendMessageW(peer->Window(), WM_SYSCOLORCHANGE, 0, 0);
  Repaint();
}

void ControlWindow::Repaint() {
  if (window_ == nullptr) return;
  ::RedrawWindow(window_, nullptr, nullptr, RDW_INVALIDATE | RDW_ERASE | RDW_ALLCHILDREN);
}

void ControlWindow::SetUsable(bool usable) {
  if (window_ == nullptr || usable == static_cast<bool>(::IsWindowEnabled(window_))) return;
  // A window that takes no input does not give the keyboard away by itself.
  if (!usable && HasFocus()) ::SetFocus(::GetParent(window_));
  ::EnableWindow(window_, usable);
}

void ControlWindow::SetFrame(bool hatching, bool grabHandles) {
  if (hatching == hatching_ && grabHandles == grabHandles_) return;
  hatching_ = hatching;
  grabHandles_ = grabHandles;
  ::InvalidateRect(window_, nullptr, FALSE);
}

void ControlWindow::Fit() {
  RECT area{};
  ::GetClientRect(window_, &area);
  plan_.Resize(density_.ToTwips(SIZE{area.right, area.bottom}), density_.Pixel());
}

void ControlWindow::Move(const RECT& place) {
  if (window_ == nullptr) return;
  ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

void ControlWindow::TakePress(const MSG& press) const {
  const bool left = press.message == WM_LBUTTONDOWN;
  if (window_ == nullptr || (!left && press.message != WM_RBUTTONDOWN)) return;
  if (press.hwnd == window_ || ::IsChild(window_, press.hwnd)) return;
  POINT at{GET_X_LPARAM(press.lParam), GET_Y_LPARAM(press.lParam)};
  if (!::ClientToScreen(press.hwnd, &at)) at = press.pt;
  ::ScreenToClient(window_, &at);
  HWND under = window_;
  for (;;) {
    const HWND child = ::ChildWindowFromPointEx(under, at, CWP_SKIPINVISIBLE | CWP_SKIPDISABLED);
    if (child == nullptr || child == under) break;
    ::MapWindowPoints(under, child, &at, 1);
    under = child;
  }
  if (under == window_) return;
  const LPARAM place = MAKELPARAM(at.x, at.y);
  ::PostMessageW(under, press.message, press.wParam, place);
  // The window that has taken the press hears of its end, unless that was before.
  if (::GetAsyncKeyState(left ? VK_LBUTTON : VK_RBUTTON) >= 0) {
    ::PostMessageW(under, left ? WM_LBUTTONUP : WM_RBUTTONUP, 0, place);
  }
}

bool ControlWindow::HasFocus() const {
  const HWND focus = ::GetFocus();
  return window_ != nullptr && focus != nullptr && (focus == window_ || ::IsChild(window_, focus));
}

void ControlWindow::Focus(KeyboardEntry entry) {
  if (window_ == nullptr) return;
  if (entry == KeyboardEntry::Grid && HasFocus() && ::GetFocus() != window_) return;
  const HWND stop =
      entry == KeyboardEntry::Grid ? grid_ : NextStop(nullptr, entry == KeyboardEntry::Last);
  if (stop != nullptr) ::SetFocus(stop);
}

/// The next window that Tab stops at; null beyond the last one.
/// @param from  one of the elements' windows; null for none
HWND ControlWindow::NextStop(HWND from, bool backward) const {
  std::vector<HWND> order;
  for (const auto& peer : peers_) order.push_back(peer->Window());
  if (backward) std::reverse(order.begin(), order.end());
  const auto passed = std::find(order.begin(), order.end(), from);
  const auto next = std::find_if(passed == order.end() ? order.begin() : passed + 1, order.end(),
                                 [](HWND window) { return window != nullptr && IsStop(window); });
  return next == order.end() ? nullptr : *next;
}

bool ControlWindow::MoveByTab(HWND from) {
  if (IsDown(VK_CONTROL) || IsDown(VK_MENU)) return false;
  const HWND next = NextStop(from, IsDown(VK_SHIFT));
  if (next != nullptr) ::SetFocus(next);
  return next != nullptr;
}

bool ControlWindow::TranslateKey(MSG& message) {
  if (window_ == nullptr || !::IsChild(window_, message.hwnd)) return false;
  if (message.message != WM_KEYDOWN) return false;
  if (message.wParam == VK_TAB) return MoveByTab(message.hwnd);
  const LRESULT wanted = ::SendMessageW(message.hwnd, WM_GETDLGCODE, message.wParam,
                                        reinterpret_cast<LPARAM>(&message));
  if (!IsForElement(message.wParam, wanted)) return false;
  Dispatch(message);
  return true;
}

}  // namespace velkor
