// tests/standin/ServerLoop.cpp: a message-only window that carries tasks and the clock.
#include "tests/standin/ServerLoop.h"

#include <utility>

// After windows.h.
#include <objbase.h>

namespace velkor {
namespace {

// In milliseconds.
constexpr UINT LookEvery = 250;
constexpr ULONGLONG Linger = 1000;
constexpr ULONGLONG LongestIdle = 3 * 60 * 1000;

}  // namespace

ServerLoop::ServerLoop()
    : window_([this](UINT message, WPARAM) { message == WM_TIMER ? Look() : RunTask(); }) {
  ::SetTimer(window_.Get(), 1, LookEvery, nullptr);
  // Its own hold, given back when it decides to end: then no new client is let in.
  ::CoAddRefServerProcess();
}

void ServerLoop::Post(std::function<void()> task) {
  tasks_.push_back(std::move(task));
  ::PostMessageW(window_.Get(), WM_APP, 0, 0);
}

void ServerLoop::RunTask() {
  if (tasks_.empty()) return;
  const auto task = std::move(tasks_.front());
  tasks_.pop_front();
  task();
}

std::shared_ptr<void> ServerLoop::Hold() {
  ::CoAddRefServerProcess();
  ++clients_;
  used_ = true;
  return {this, [this](void*) {
            ::CoReleaseServerProcess();
            --clients_;
            lastClient_ = ::GetTickCount64();
          }};
}

void ServerLoop::Look() {
  const ULONGLONG now = ::GetTickCount64();
  const bool isLeft = used_ && clients_ == 0 && now - lastClient_ > Linger;
  if (isLeft || now - lastCall_ > LongestIdle) End();
}

void ServerLoop::End() {
  if (std::exchange(ended_, true)) return;
  ::CoReleaseServerProcess();
  ::PostQuitMessage(0);
}

void ServerLoop::Run() {
  MSG message;
  while (::GetMessageW(&message, nullptr, 0, 0) > 0) {
    ::TranslateMessage(&message);
    ::DispatchMessageW(&message);
  }
}

}  // namespace velkor
