// platform/desktop/ProcessCacheUtility.h: the cache utility as a child process.
#pragma once

#include <functional>
#include <memory>
#include <string>

#include "platform/CacheUtility.h"
#include "values/Error.h"

namespace velkor {

/// Cache utilities that run vkrRefresh, each in a process of its own which it keeps from one
/// refresh to the next. Needs a QCoreApplication; all runs on its thread, and what the process
/// reports arrives from its event loop. Creation throws where there is no such program. A process
/// that ends before it has reported completes with FetchingFailed, or with NothingToReport when it
/// was asked to stop; so does one that cannot be started or that reports nonsense. A utility that
/// is destroyed kills its process without waiting for its end.
class ProcessCacheUtilities : public CacheUtilities {
 public:
  /// Shows an error that a completion raised. Its description is the process's own words where it
  /// gave some.
  using ErrorHandler = std::function<void(const Error&)>;

  /// @param program  the cache utility; empty for vkrRefresh beside the running program
  explicit ProcessCacheUtilities(ErrorHandler onError, std::string program = {});

  std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) override;

 private:
  ErrorHandler onError_;
  std::string program_;
};

}  // namespace velkor
