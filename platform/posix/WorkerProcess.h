// platform/posix/WorkerProcess.h: runs one job of the worker, the program vkrRefresh, in a process
// of its own and says what became of it: an answer, or why it died without one.
#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <string>
#include <vector>

class QObject;
class QProcess;

namespace velkor {

struct WorkerOptions {
  /// The worker's program; empty for vkrRefresh beside the running one.
  std::string program;
  /// What a reading may take.
  std::chrono::milliseconds timeLimit{30'000};
  /// Bytes that the worker may use.
  std::size_t memoryLimit = std::size_t{2} << 30;
};

/// A worker keeps nothing that another needs, so it may be killed at any moment: so does the end of
/// this, without waiting for it for long, and so does the end of this process.
class WorkerProcess {
 public:
  /// Starts the worker and returns; what goes wrong is its fault.
  /// @param job       name and arguments, as hosts/vkrRefresh/main.cpp tells them
  /// @param patience  time beyond the limit in which the job waits for others
  WorkerProcess(const std::vector<std::string>& job, const WorkerOptions& options,
                std::chrono::milliseconds patience = {});
  ~WorkerProcess();
  WorkerProcess(const WorkerProcess&) = delete;
  WorkerProcess& operator=(const WorkerProcess&) = delete;

  /// Lets the event loop see to the job and calls back from there, once, when it has ended or
  /// reached its time limit, which counts from here. The callback may destroy this.
  void WhenEnded(std::function<void()> onEnd);
  /// Waits for the end, at most for the time limit.
  void Wait();
  /// Kills the worker, which ends the job like any other death.
  void Kill();

  /// Once the job has ended: all that the worker wrote, and why that is no answer; empty for none.
  const std::string& Answer() const { return answer_; }
  const std::string& Fault() const { return fault_; }

 private:
  void Take();
  void End(std::string fault);
  void EndTooLate();
  void PostEnd();

  std::chrono::milliseconds timeLimit_;
  std::chrono::milliseconds patience_;
  std::unique_ptr<QProcess> process_;
  /// What is delivered to it is not delivered after the end of this.
  std::unique_ptr<QObject> receiver_;
  std::string answer_;
  std::string fault_;
  bool ended_ = false;
  std::function<void()> onEnd_;
};

}  // namespace velkor
