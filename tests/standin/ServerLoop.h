// tests/standin/ServerLoop.h: the messages of the process, and when it ends; part of the
// calendar program for tests, never shipped.
#pragma once

#include <deque>
#include <functional>
#include <memory>

#include "platform/windows/system/MessageWindow.h"

namespace velkor {

/// The process ends a moment after its last client has gone, when it was told to, and when nobody
/// has called for some minutes: a client that was killed gives nothing back.
class ServerLoop {
 public:
  ServerLoop();
  ServerLoop(const ServerLoop&) = delete;
  ServerLoop& operator=(const ServerLoop&) = delete;

  /// Runs `task` later, from this thread's messages.
  void Post(std::function<void()> task);
  /// A client has an object for as long as the answer is kept.
  std::shared_ptr<void> Hold();
  void NoteCall() { lastCall_ = ::GetTickCount64(); }
  void End();
  /// Processes messages until the process is to end.
  static void Run();

 private:
  void RunTask();
  void Look();

  std::deque<std::function<void()>> tasks_;
  int clients_ = 0;
  bool used_ = false;
  bool ended_ = false;
  ULONGLONG lastCall_ = ::GetTickCount64();
  ULONGLONG lastClient_ = 0;
  MessageWindow window_;
};

}  // namespace velkor
