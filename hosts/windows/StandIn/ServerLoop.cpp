// hosts/windows/StandIn/ServerLoop.cpp: a message-only window that carries tasks and the clock.
#include "hosts/windows/StandIn/ServerLoop.h"

#include <utility>

// After windows.h.
#include <objbase.h>

namespace velkor {
namespace {

constexpr UINT RunTaskMessage = WM_APP;
constexpr UINT LookEvery = 250;
constexpr ULONGLONG Linger = 1000;
constexpr ULONGLONG IdleLimit = 3 * 60 * 1000;
constexpr wchar_t WindowClass[] = L"StandInCalendarLoop";

}  // namespace

ServerLoop::ServerLoop() {
  WNDCLASSW kind = {};
  kind.lpfnWndProc = Handle;
  kind.hInstance = ::GetModuleHandleW(nullptr);
  kind.lpszClassName = WindowClass;
  ::RegisterClassW(&kind);
  window_ = ::CreateWindowExW(0, WindowClass, L"", 0, 0, 0, 0, 0, HWND_MESSAGE, nullptr,
                              kind.hInstance, nullptr);
  ::SetWindowLongPtrW(window_, GWLP_USERDATA, reinterpret_cast<LONG_PTR>(this));
  ::SetTimer(window_, 1, LookEvery, nullptr);
  // Its own hold, given back when it decides to end: then no new client is let in.
  ::CoAddRefServerProcess();
}

ServerLoop::~ServerLoop() {
  ::DestroyWindow(window_);
}

LRESULT CALLBACK ServerLoop::Handle(HWND window, UINT message, WPARAM wParam, LPARAM lParam) {
  auto* loop = reinterpret_cast<ServerLoop*>(::GetWindowLongPtrW(window, GWLP_USERDATA));
  if (loop != nullptr && message == RunTaskMessage) {
    loop->RunTask();
    return 0;
  }
  if (loop != nullptr && message == WM_TIMER) {
    loop->Look();
    return 0;
  }
  return ::DefWindowProcW(window, message, wParam, lParam);
}

void ServerLoop::Post(std::function<void()> task) {
  tasks_.push_back(std::move(task));
  ::PostMessageW(window_, RunTaskMessage, 0, 0);
}

void ServerLoop::RunTask() {
  if (tasks_.empty()) return;
  const auto task = std::move(tasks_.front());
  tasks_.pop_front();
  task();
}

void ServerLoop::Enter() {
  ::CoAddRefServerProcess();
  ++clients_;
  used_ = true;
}

void ServerLoop::Leave() {
  ::CoReleaseServerProcess();
  --clients_;
  lastClient_ = ::GetTickCount64();
}

void ServerLoop::Look() {
  const ULONGLONG now = ::GetTickCount64();
  const bool isLeft = used_ && clients_ == 0 && now - lastClient_ > Linger;
  if (isLeft || now - lastCall_ > IdleLimit) End();
}

void ServerLoop::End() {
  if (std::exchange(ended_, true)) return;
  ::CoReleaseServerProcess();
  ::PostQuitMessage(0);
}

bool ServerLoop::Step() {
  MSG message;
  if (::GetMessageW(&message, nullptr, 0, 0) <= 0) return false;
  const bool isKey = message.message >= WM_KEYFIRST && message.message <= WM_KEYLAST;
  const HWND dialog = isKey ? ::GetAncestor(message.hwnd, GA_ROOT) : nullptr;
  if (dialog == nullptr || !::IsDialogMessageW(dialog, &message)) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
  return true;
}

}  // namespace velkor
