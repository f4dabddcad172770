// platform/windows/system/ProcessWatch.h: hears of the end of another process.
#pragma once

#include <functional>
#include <memory>
#include <type_traits>

#include "platform/windows/system/MessageWindow.h"

namespace velkor {

struct CloseKernelHandle {
  void operator()(HANDLE handle) const { ::CloseHandle(handle); }
};
using KernelHandle = std::unique_ptr<std::remove_pointer_t<HANDLE>, CloseKernelHandle>;

/// Watches a process that runs; its own end ends the watch.
class ProcessWatch {
 public:
  /// Throws Error when the process is not there or may not be watched.
  /// @param onEnd  called once on this thread while messages are processed, also for a process that
  /// ends by force; may destroy the watch
  ProcessWatch(DWORD process, std::function<void()> onEnd);
  ~ProcessWatch();
  ProcessWatch(const ProcessWatch&) = delete;
  ProcessWatch& operator=(const ProcessWatch&) = delete;

  DWORD Id() const { return id_; }
  /// True as soon as the process has ended, before that is told.
  bool HasEnded() const { return ::WaitForSingleObject(process_.get(), 0) != WAIT_TIMEOUT; }

 private:
  DWORD id_;
  KernelHandle process_;
  MessageWindow window_;
  HANDLE wait_ = nullptr;
};

/// Ends a process by force unless this ends before: bounds calls into a process that may not answer
/// any more. Does nothing to a process that may not be ended.
class Patience {
 public:
  explicit Patience(DWORD process);
  ~Patience();
  Patience(const Patience&) = delete;
  Patience& operator=(const Patience&) = delete;

 private:
  KernelHandle process_;
  HANDLE timer_ = nullptr;
};

}  // namespace velkor
