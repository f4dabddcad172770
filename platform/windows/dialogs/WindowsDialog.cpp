// platform/windows/dialogs/WindowsDialog.cpp: the modal loop, and what every dialog answers.
#include "platform/windows/dialogs/WindowsDialog.h"

#include <algorithm>

#include "platform/windows/dialogs/DialogPlace.h"
#include "platform/windows/elements/WindowsPeer.h"
#include "platform/windows/system/MessagePump.h"

namespace velkor {
namespace {

/// Messages whose answer a dialog procedure returns itself (DialogProc, "Return value").
bool IsAnsweredDirectly(UINT message) {
  return message >= WM_CTLCOLORMSGBOX && message <= WM_CTLCOLORSTATIC;
}

}  // namespace

WindowsDialog::WindowsDialog(HWND owner, const std::string& title, DWORD style)
    : kind_(style | DS_MODALFRAME), owner_(owner) {
  window_ = kind_.Open(owner, Procedure, reinterpret_cast<LPARAM>(this));
  ::SetWindowTextW(window_, ToWide(title).c_str());
}

WindowsDialog::~WindowsDialog() {
  if (window_ == nullptr) return;
  ::SetWindowLongPtrW(window_, DWLP_USER, 0);
  ::DestroyWindow(window_);
}

INT_PTR CALLBACK WindowsDialog::Procedure(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  if (message == WM_INITDIALOG) ::SetWindowLongPtrW(window, DWLP_USER, lParam);
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
      return reinterpret_cast<LRESULT>(kind_.Font());
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
      window_ = nullptr;
      break;
  }
  return onMessage ? onMessage(message, wParam, lParam) : std::nullopt;
}

void WindowsDialog::Place(SIZE area, SIZE least) {
  if (window_ == nullptr) return;
  const SIZE most = SizeOf(WorkAreaAround(owner_ != nullptr ? owner_ : window_));
  const auto fitted = [&](SIZE inner) {
    const SIZE size = WithFrame(window_, inner);
    return SIZE{std::min(size.cx, most.cx), std::min(size.cy, most.cy)};
  };
  least_ = fitted(least);
  PutInMiddle(window_, owner_, fitted(area));
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
    if (forDialog && window_ != nullptr && ::IsDialogMessageW(window_, &message)) continue;
    Dispatch(message);
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
