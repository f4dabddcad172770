// platform/windows/elements/WindowsPeer.cpp: windows with a subclass procedure, and what all of
// them share.
#include "platform/windows/elements/WindowsPeer.h"

#include "platform/windows/system/Modules.h"
// After windows.h.
#include <commctrl.h>

namespace velkor {
namespace {

constexpr UINT_PTR SubclassId = 1;
/// In pixels of 96 to the inch.
constexpr int WidestToolTip = 500;
/// The property of a window that names its peer; GetWindowSubclass is in no import library.
constexpr const wchar_t* PeerProperty = L"VelkorPeer";

/// Whether a message comes to a window because of its child, whose handle it carries.
HWND ChildOf(UINT message, LPARAM lParam) {
  switch (message) {
    case WM_COMMAND:
    case WM_HSCROLL:
    case WM_VSCROLL:
    case WM_CTLCOLORSTATIC:
    case WM_CTLCOLORBTN:
    case WM_CTLCOLOREDIT:
    case WM_CTLCOLORLISTBOX:
    case WM_CTLCOLORSCROLLBAR:
      return reinterpret_cast<HWND>(lParam);
    case WM_NOTIFY:
      return reinterpret_cast<const NMHDR*>(lParam)->hwndFrom;
    case WM_DRAWITEM: {
      // Of a menu it names the menu.
      const auto& drawn = *reinterpret_cast<const DRAWITEMSTRUCT*>(lParam);
      return drawn.CtlType == ODT_MENU ? nullptr : drawn.hwndItem;
    }
    default:
      return nullptr;
  }
}

}  // namespace

std::optional<LRESULT> ReflectMessage(UINT message, WPARAM wParam, LPARAM lParam) {
  const HWND child = ChildOf(message, lParam);
  const HANDLE peer = child == nullptr ? nullptr : ::GetPropW(child, PeerProperty);
  if (peer == nullptr) return std::nullopt;
  return static_cast<WindowsPeer*>(peer)->Handle(message + Reflected, wParam, lParam);
}

WindowsPeer::WindowsPeer(Element& element, HWND parent, Placement placement,
                         const wchar_t* windowClass, DWORD style, DWORD extendedStyle)
    : element_(element), placement_(placement), density_(DensityOf(parent)) {
  window_ = ::CreateWindowExW(extendedStyle, windowClass, L"", style | WS_CHILD | WS_CLIPSIBLINGS,
                              0, 0, 0, 0, parent, nullptr, ThisModule(), nullptr);
  ::SetWindowSubclass(window_, Subclass, SubclassId, reinterpret_cast<DWORD_PTR>(this));
  ::SetPropW(window_, PeerProperty, this);
  ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(ParentFont()), FALSE);
  element_.Attach(this);
}

WindowsPeer::~WindowsPeer() {
  if (element_.Peer() == this) element_.Attach(nullptr);
  if (window_ == nullptr) return;
  ::RemoveWindowSubclass(window_, Subclass, SubclassId);
  ::RemovePropW(window_, PeerProperty);
  EndToolTip();
  ::DestroyWindow(window_);
}

/// The top-level window around a tool tip owns it, and may outlive what it tells about.
void WindowsPeer::EndToolTip() {
  if (toolTip_ != nullptr && ::IsWindow(toolTip_)) ::DestroyWindow(toolTip_);
  toolTip_ = nullptr;
}

void WindowsPeer::RearmToolTip() {
  if (toolTip_ != nullptr) ::SendMessageW(toolTip_, TTM_POP, 0, 0);
}

LRESULT CALLBACK WindowsPeer::Subclass(HWND window, UINT message, WPARAM wParam, LPARAM lParam,
                                       UINT_PTR /*id*/, DWORD_PTR peer) {
  auto& self = *reinterpret_cast<WindowsPeer*>(peer);
  if (message == WM_NCDESTROY) {
    ::RemoveWindowSubclass(window, Subclass, SubclassId);
    ::RemovePropW(window, PeerProperty);
    self.window_ = nullptr;
    self.EndToolTip();
    return ::DefSubclassProc(window, message, wParam, lParam);
  }
  if (message == WM_NOTIFY && self.toolTip_ != nullptr &&
      reinterpret_cast<const NMHDR*>(lParam)->hwndFrom == self.toolTip_) {
    self.GiveToolTip(lParam);
    return 0;
  }
  try {
    if (const auto answer = ReflectMessage(message, wParam, lParam)) return *answer;
    if (const auto answer = self.Handle(message, wParam, lParam)) return *answer;
  } catch (...) {
    // Nothing may be thrown through the system; what users have to know, handlers have told.
    return 0;
  }
  return ::DefSubclassProc(window, message, wParam, lParam);
}

std::optional<LRESULT> WindowsPeer::Handle(UINT /*message*/, WPARAM /*wParam*/, LPARAM /*lParam*/) {
  return std::nullopt;
}

LRESULT WindowsPeer::Default(UINT message, WPARAM wParam, LPARAM lParam) {
  return window_ == nullptr ? 0 : ::DefSubclassProc(window_, message, wParam, lParam);
}

SIZE WindowsPeer::NeededSize(int /*width*/) {
  return {};
}

HFONT WindowsPeer::ParentFont() const {
  return reinterpret_cast<HFONT>(::SendMessageW(::GetParent(window_), WM_GETFONT, 0, 0));
}

void WindowsPeer::TakeDensity(Density density) {
  if (window_ == nullptr) return;
  density_ = density;
  ::SendMessageW(window_, WM_SETFONT, reinterpret_cast<WPARAM>(ParentFont()), FALSE);
  FitToDensity();
  EndToolTip();
  Changed();
  ::InvalidateRect(window_, nullptr, TRUE);
}

void WindowsPeer::SetFocus() {
  if (window_ != nullptr) ::SetFocus(window_);
}

void WindowsPeer::Changed() {
  if (window_ == nullptr || mirroring_) return;
  mirroring_ = true;
  MirrorShared();
  Mirror();
  mirroring_ = false;
}

void WindowsPeer::MirrorShared() {
  if (placement_ == Placement::Bounds) {
    const PixelRect pixels = density_.ToPixels(element_.Bounds());
    ::SetWindowPos(window_, nullptr, pixels.left, pixels.top, pixels.Width(), pixels.Height(),
                   SWP_NOZORDER | SWP_NOACTIVATE);
  }
  if (element_.Enabled() != static_cast<bool>(::IsWindowEnabled(window_))) {
    ::EnableWindow(window_, element_.Enabled());
  }
  const bool shown = (::GetWindowLongW(window_, GWL_STYLE) & WS_VISIBLE) != 0;
  if (element_.Visible() != shown) ::ShowWindow(window_, element_.Visible() ? SW_SHOWNA : SW_HIDE);
  MirrorToolTip();
}

/// The tool tip asks for its text each time.
void WindowsPeer::MirrorToolTip() {
  if (HasToolTip() == (toolTip_ != nullptr)) return;
  if (toolTip_ != nullptr) {
    EndToolTip();
    return;
  }
  toolTip_ = ::CreateWindowExW(WS_EX_TOPMOST, TOOLTIPS_CLASSW, L"",
                               WS_POPUP | TTS_ALWAYSTIP | TTS_NOPREFIX, 0, 0, 0, 0, window_,
                               nullptr, ThisModule(), nullptr);
  TTTOOLINFOW tool{};
  tool.cbSize = TTTOOLINFOW_V1_SIZE;
  tool.uFlags = TTF_IDISHWND | TTF_SUBCLASS;
  tool.hwnd = window_;
  tool.uId = reinterpret_cast<UINT_PTR>(window_);
  tool.lpszText = LPSTR_TEXTCALLBACKW;
  ::SendMessageW(toolTip_, TTM_ADDTOOLW, 0, reinterpret_cast<LPARAM>(&tool));
  // Without a width lines are not broken.
  ::SendMessageW(toolTip_, TTM_SETMAXTIPWIDTH, 0, density_.Length(WidestToolTip));
  ::SendMessageW(toolTip_, WM_SETFONT, reinterpret_cast<WPARAM>(ParentFont()), FALSE);
}

void WindowsPeer::GiveToolTip(LPARAM notice) {
  auto& asked = *reinterpret_cast<NMTTDISPINFOW*>(notice);
  if (asked.hdr.code != TTN_GETDISPINFOW) return;
  dueToolTip_ = ToWide(ToolTipText());
  asked.lpszText = dueToolTip_.data();
}

void WindowsPeer::SetText(const std::wstring& text) {
  if (window_ == nullptr || TextOfWindow(window_) == text) return;
  ::SetWindowTextW(window_, text.c_str());
  ::NotifyWinEvent(EVENT_OBJECT_NAMECHANGE, window_, OBJID_CLIENT, CHILDID_SELF);
}

RECT WindowsPeer::Area() const {
  RECT area{};
  ::GetClientRect(window_, &area);
  return area;
}

PeerBackground WindowsPeer::Background(HDC dc) const {
  const LRESULT answer =
      ::SendMessageW(::GetParent(window_), WM_CTLCOLORSTATIC, reinterpret_cast<WPARAM>(dc),
                     reinterpret_cast<LPARAM>(window_));
  if (answer != 0) return {reinterpret_cast<HBRUSH>(answer), ::GetBkColor(dc)};
  ::SetTextColor(dc, ::GetSysColor(COLOR_BTNTEXT));
  ::SetBkColor(dc, ::GetSysColor(COLOR_BTNFACE));
  return {::GetSysColorBrush(COLOR_BTNFACE), ::GetSysColor(COLOR_BTNFACE)};
}

void WindowsPeer::SetSpokenText() {
  for (const std::string* text :
       {&element_.Description(), &element_.ToolTip(), &element_.AccessibleName()}) {
    if (!text->empty()) return SetText(ToWide(*text));
  }
}

}  // namespace velkor
