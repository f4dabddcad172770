// tests/platform/desktop/ChildProcess.h: a part of a test in a process of its own.
#pragma once

#include <signal.h>
#include <sys/wait.h>
#include <unistd.h>

namespace velkor {

class ChildProcess {
 public:
  static constexpr int Threw = 99;

  /// Forks; the child runs nothing but `run` and exits with its answer, with Threw on an exception.
  template <typename Run>
  explicit ChildProcess(const Run& run) : child_(::fork()) {
    if (child_ != 0) return;
    int code = Threw;
    try {
      code = run();
    } catch (...) {
      // Seen by the exit code: the child must not go on as a second test program.
    }
    ::_exit(code);
  }
  ~ChildProcess() { Wait(); }
  ChildProcess(ChildProcess&& other) noexcept : child_(other.child_) { other.child_ = -1; }
  ChildProcess& operator=(ChildProcess&&) = delete;

  void Kill() {
    ::kill(child_, SIGKILL);
    Wait();
  }
  /// The exit code, or minus the signal that ended it; -1000 when there is none left.
  int Wait() {
    int status = 0;
    const pid_t ended = child_ > 0 ? ::waitpid(child_, &status, 0) : -1;
    child_ = -1;
    if (ended <= 0) return -1000;
    return WIFSIGNALED(status) ? -WTERMSIG(status) : WEXITSTATUS(status);
  }

 private:
  pid_t child_;
};

}  // namespace velkor
