// platform/desktop/ProcessCacheUtility.h: refreshes cache files by the worker, a process for each.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/CacheUtility.h"
#include "values/Error.h"

namespace velkor {

/// Cache utilities that start the program vkrRefresh for each refresh, see WorkerProcess. Needs a
/// QCoreApplication; all runs on its thread, and a completion comes from its event loop. Creation
/// throws where there is no such program. A stop kills the process and completes with
/// NothingToReport, unless the process had reported before. One that dies, cannot be started, takes
/// too long or writes no report completes with FetchingFailed and CalendarFailed. A utility that is
/// destroyed kills its process.
class ProcessCacheUtilities : public CacheUtilities {
 public:
  /// Shows an error that a completion raised. Its description is the process's own words where it
  /// gave some.
  using ErrorHandler = std::function<void(const Error&)>;

  /// @param program  the worker; empty for vkrRefresh beside the running program
  explicit ProcessCacheUtilities(ErrorHandler onError, std::string program = {});

  std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) override;

 private:
  ErrorHandler onError_;
  std::string program_;
};

}  // namespace velkor
