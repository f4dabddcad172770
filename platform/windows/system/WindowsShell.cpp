// platform/windows/system/WindowsShell.cpp: one round of messages, and what the shell opens.
#include "platform/windows/system/WindowsShell.h"

#include "platform/windows/system/DialogOwner.h"
#include "platform/windows/system/MessagePump.h"
#include "platform/windows/system/Wide.h"
// After windows.h.
#include <shellapi.h>

namespace velkor {

void WindowsShell::ProcessMessages() {
  // In milliseconds.
  constexpr DWORD LongestWait = 2;
  constexpr ULONGLONG LongestRound = 30;
  const BusyScope busy(owner_);
  WaitForMessage(LongestWait);
  const ULONGLONG begin = ::GetTickCount64();
  while (::GetTickCount64() - begin < LongestRound && ProcessMessage() == Pumped::Message) {
  }
}

void WindowsShell::SetWaitPointer(bool wait) {
  if (wait) {
    if (waits_++ == 0) before_ = ::SetCursor(::LoadCursorW(nullptr, IDC_WAIT));
  } else if (waits_ > 0 && --waits_ == 0) {
    ::SetCursor(before_);
  }
}

void WindowsShell::Beep() {
  ::MessageBeep(MB_OK);
}

void WindowsShell::OpenPage(const std::string& address) {
  const bool own = address.find_first_of("/\\") == std::string::npos;
  const std::wstring page = ToWide(own ? pages_ + '\\' + address : address);
  // The shell may process messages until it is done.
  const BusyScope busy(owner_);
  SHELLEXECUTEINFOW open{};
  open.cbSize = sizeof open;
  open.fMask = SEE_MASK_FLAG_NO_UI;
  open.hwnd = owner_.Get();
  open.lpVerb = L"open";
  open.lpFile = page.c_str();
  open.nShow = SW_SHOWNORMAL;
  ::ShellExecuteExW(&open);
}

}  // namespace velkor
