// tests/standin/ServerLoop.h: the messages of the process, and when it ends; part of the
// calendar program for tests, never shipped.
#pragma once

#include <deque>
#include <functional>

#include "platform/windows/com/MessageWindow.h"

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
  /// A client's object or connection begins and ends.
  void Enter();
  void Leave();
  void NoteCall() { lastCall_ = ::GetTickCount64(); }
  void EndWhenIdleFor(ULONGLONG milliseconds) { idleLimit_ = milliseconds; }
  void End();
  /// Waits for a message and processes it; false once the process is to end.
  bool Step();

 private:
  void RunTask();
  void Look();

  std::deque<std::function<void()>> tasks_;
  int clients_ = 0;
  bool used_ = false;
  bool ended_ = false;
  ULONGLONG lastCall_ = ::GetTickCount64();
  ULONGLONG lastClient_ = 0;
  ULONGLONG idleLimit_ = 3 * 60 * 1000;
  MessageWindow window_;
};

}  // namespace velkor
