// platform/windows/dialogs/WindowsDialog.cpp: the modal loop, and what every dialog answers.
#include "platform/windows/dialogs/WindowsDialog.h"

#include <algorithm>
#include <utility>

#include "platform/windows/dialogs/DialogPlace.h"
#include "platform/windows/elements/WindowsPeer.h"
#include "platform/windows/system/MessagePump.h"

namespace velkor {
namespace {

/// Messages whose answer a dialog procedure returns itself (DialogProc, "Return value").
bool IsAnsweredDirectly(UINT message) {
  return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
}

RECT PlaceOf(HWND window) {
  RECT place{};
  ::GetWindowRect(window, &place);
  return place;
}

}  // namespace

WindowsDialog::WindowsDialog(HWND owner, const std::string& title, DWORD style)
    : kind_(style | DS_MODALFRAME), owner_(owner) {
  window_ = kind_.Open(owner, Procedure, reinterpret_cast<LPARAM>(this));
  TakeFont();
  ::SetWindowTextW(window_, ToWide(title).c_str());
}

WindowsDialog::~WindowsDialog() {
  if (window_ == nullptr) return;
  ::SetWindowLongPtrW(window_, DWLP_USER, 0);
  ::DestroyWindow(window_);
}

INT_PTR CALLBACK WindowsDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) {
    ::SetWindowLongPtrW(window, DWLP_USER, lParam);
    KeepDialogUnscaled(window);
  }
  auto* const self = reinterpret_cast<WindowsDialog*>(::GetWindowLongPtrW(window, DWLP_USER));
  if (self == nullptr) return FALSE;
  const auto answer = self->Answer(message, wParam, lParam);
  if (!answer) return FALSE;
  if (IsAnsweredDirectly(message)) return *answer;
  ::SetWindowLongPtrW(window, DWLP_MSGRESULT, *answer);
  return TRUE;
}

std::optional<LRESULT> WindowsDialog::Answer(UINT message, WPARAM wParam, LPARAM lParam) {
  if (const auto answer = ReflectMessage(message, wParam, lParam)) return answer;
  switch (message) {
    case WM_GETFONT:
      return reinterpret_cast<LRESULT>(font_.get());
    case WM_DPICHANGED:
      KeepDotsPerInch(window_, LOWORD(wParam));
      TakeDensity(*reinterpret_cast<const RECT*>(lParam));
      return 0;
    case WM_SETTINGCHANGE:
      if (wParam == SPI_SETNONCLIENTMETRICS) TakeDensity(PlaceOf(window_));
      break;
    case WM_GETMINMAXINFO: {
      auto& limits = *reinterpret_cast<MINMAXINFO*>(lParam);
      limits.ptMinTrackSize = {std::max(limits.ptMinTrackSize.x, least_.cx),
                               std::max(limits.ptMinTrackSize.y, least_.cy)};
      return 0;
    }
    case WM_CLOSE:
      if (onClose) onClose();
      return 0;
    case WM_COMMAND:
      if (LOWORD(wParam) != IDCANCEL) break;
      if (onClose) onClose();
      return 0;
    case WM_DESTROY:
      Close();
      KeepDotsPerInch(window_, 0);
      window_ = nullptr;
      break;
  }
  return onMessage ? onMessage(message, wParam, lParam) : std::nullopt;
}

void WindowsDialog::Place(SIZE area, SIZE least) {
  if (window_ == nullptr) return;
  SetLeast(least);
  PutInMiddle(window_, owner_, Fitted(area));
}

void WindowsDialog::SetLeast(SIZE least) {
  least_ = Fitted(least);
}

/// The window's size for an area, no larger than the screen allows; what is too high then has a
/// scroll bar beside it.
SIZE WindowsDialog::Fitted(SIZE area) const {
  const SIZE most = SizeOf(WorkAreaAround(owner_ != nullptr ? owner_ : window_));
  SIZE size = WithFrame(window_, area);
  if (size.cy > most.cy) size.cx += density_.Metric(SM_CXVSCROLL);
  return {std::min(size.cx, most.cx), std::min(size.cy, most.cy)};
}

/// Children may have the font that it had until they were told of the new one.
void WindowsDialog::TakeFont() {
  density_ = DensityOf(window_);
  const FontHandle before = std::exchange(font_, MakeDialogFont(density_));
  if (onDensity) onDensity();
}

/// The least size counts when the window takes its place.
void WindowsDialog::TakeDensity(const RECT& place) {
  TakeFont();
  ::SetWindowPos(window_, nullptr, place.left, place.top, place.right - place.left,
                 place.bottom - place.top, SWP_NOZORDER | SWP_NOACTIVATE);
}

SIZE WindowsDialog::Area() const {
  RECT area{};
  ::GetClientRect(window_, &area);
  return SizeOf(area);
}

void WindowsDialog::Run(const std::function<void()>& shown) {
  const HWND focus = ::GetFocus();
  const bool disables = owner_ != nullptr && ::IsWindowEnabled(owner_);
  if (disables) ::EnableWindow(owner_, FALSE);
  ::ShowWindow(window_, SW_SHOW);
  if (shown) shown();
  Loop();
  if (disables && ::IsWindow(owner_)) ::EnableWindow(owner_, TRUE);
  GiveBack(focus);
}

void WindowsDialog::Loop() {
  while (!closed_) {
    MSG message{};
    const BOOL got = ::GetMessageW(&message, nullptr, 0, 0);
    if (got == 0) ::PostQuitMessage(static_cast<int>(message.wParam));
    if (got <= 0) return;
    const bool forDialog = !isDialogKey || isDialogKey(message);
    const bool taken = forDialog && window_ != nullptr && ::IsDialogMessageW(window_, &message);
    if (!taken) Dispatch(message);
    FollowFocus();
  }
}

void WindowsDialog::FollowFocus() {
  const HWND before = std::exchange(focus_, ::GetFocus());
  if (onFocus && focus_ != before && window_ != nullptr && ::IsChild(window_, focus_)) {
    onFocus(focus_);
  }
}

/// The owner is active, and has the keyboard where it had it, before the window goes: otherwise the
/// system would activate a window of another program.
void WindowsDialog::GiveBack(HWND focus) {
  if (window_ == nullptr) return;
  const bool isActive = ::GetActiveWindow() == window_;
  if (isActive && owner_ != nullptr && ::IsWindow(owner_)) {
    ::SetActiveWindow(owner_);
    const HWND now = ::GetFocus();
    const bool isLost = now == nullptr || now == owner_;
    if (isLost && ::IsChild(owner_, focus) && ::IsWindowVisible(focus)) ::SetFocus(focus);
  }
  ::ShowWindow(window_, SW_HIDE);
}

void WindowsDialog::Close() {
  closed_ = true;
  // The loop may wait for a message while another one was sent here.
  ::PostMessageW(nullptr, WM_NULL, 0, 0);
}

}  // namespace velkor
