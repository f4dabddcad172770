// platform/windows/com/ComCacheUtility.h: the cache utility as an automation server.
#pragma once

#include <functional>
#include <memory>

#include "platform/CacheUtility.h"
#include "values/Error.h"

namespace velkor {

class DialogOwner;

/// Program identifier of the cache utility, and the version of its interface that is spoken here.
inline constexpr const char* CacheUtilityProgram = "vkrRefresh.VelkorCacheUtility";
inline constexpr short CacheUtilityInterface = 1;

/// Cache utilities that run vkrRefresh.exe, each in a process of its own which it keeps from one
/// refresh to the next. On a single-threaded apartment that processes messages. Creation starts the
/// process; it throws when the utility is not registered, cannot be started or is of another
/// version, and so does a start after the process has ended. A process that ends before it has
/// reported completes with FetchingFailed, or with NothingToReport when it was asked to stop. One
/// that does not answer for some seconds is ended by force.
class ComCacheUtilities : public CacheUtilities {
 public:
  /// Shows an error that a completion raised.
  using ErrorHandler = std::function<void(const Error&)>;

  /// @param owner  counts as busy while the utility is called, since messages come in meanwhile;
  /// outlives the utilities
  ComCacheUtilities(DialogOwner& owner, ErrorHandler onError);

  std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) override;

 private:
  DialogOwner& owner_;
  ErrorHandler onError_;
};

}  // namespace velkor
