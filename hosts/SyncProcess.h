// hosts/SyncProcess.h: has the program vkrSync do one job, in a process of its own.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "hosts/SyncMessages.h"

class QObject;
class QProcess;

namespace velkor {

/// Never waits: all that is told comes from the event loop. What vkrSync does can be stopped at any
/// moment and done again, so the end of this kills it.
class SyncProcess {
 public:
  /// @param onEvent  told each event; the last is one SyncOutcome, whatever happens. It may destroy
  ///                 this then.
  /// @param program  empty for vkrSync beside the running one
  SyncProcess(const SyncJob& job, std::function<void(const SyncEvent&)> onEvent,
              const std::string& program = {});
  ~SyncProcess();
  SyncProcess(const SyncProcess&) = delete;
  SyncProcess& operator=(const SyncProcess&) = delete;

 private:
  void Take();
  void Tell(const SyncEvent& event);
  void End(const std::string& reason);

  std::function<void(const SyncEvent&)> onEvent_;
  std::unique_ptr<QProcess> process_;
  /// What is delivered to it is not delivered after the end of this.
  std::unique_ptr<QObject> receiver_;
  bool ended_ = false;
};

}  // namespace velkor
