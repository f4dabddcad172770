// platform/windows/system/ProcessWatch.cpp: waits of the system's thread pool.
#include "platform/windows/system/ProcessWatch.h"

#include <utility>

#include "platform/windows/system/Wide.h"

namespace velkor {
namespace {

constexpr UINT Ended = WM_APP;
constexpr DWORD LongestCall = 3000;

KernelHandle Open(DWORD process) {
  KernelHandle opened(::OpenProcess(SYNCHRONIZE, FALSE, process));
  if (!opened) {
    throw SystemError(::GetLastError(),
                      "The process " + std::to_string(process) + " cannot be watched");
  }
  return opened;
}

// On a thread of the pool, which may do no more than this.
void CALLBACK TellWindow(PVOID window, BOOLEAN) {
  ::PostMessageW(static_cast<HWND>(window), Ended, 0, 0);
}
void CALLBACK EndProcess(PVOID process, BOOLEAN) {
  ::TerminateProcess(process, 1);
}

}  // namespace

ProcessWatch::ProcessWatch(DWORD process, std::function<void()> onEnd)
    : id_(process),
      process_(Open(process)),
      window_([onEnd = std::move(onEnd)](UINT message, WPARAM) {
        if (message == Ended) onEnd();
      }) {
  if (!::RegisterWaitForSingleObject(&wait_, process_.get(), TellWindow, window_.Get(), INFINITE,
                                     WT_EXECUTEONLYONCE)) {
    throw SystemError(::GetLastError(), "A process cannot be watched");
  }
}

ProcessWatch::~ProcessWatch() {
  // Waits for a callback that runs, since the code that it runs may be unloaded next.
  if (wait_ != nullptr) ::UnregisterWaitEx(wait_, INVALID_HANDLE_VALUE);
}

Patience::Patience(DWORD process) : process_(::OpenProcess(PROCESS_TERMINATE, FALSE, process)) {
  if (process_) {
    ::CreateTimerQueueTimer(&timer_, nullptr, EndProcess, process_.get(), LongestCall, 0,
                            WT_EXECUTEONLYONCE);
  }
}

Patience::~Patience() {
  if (timer_ != nullptr) ::DeleteTimerQueueTimer(nullptr, timer_, INVALID_HANDLE_VALUE);
}

}  // namespace velkor
