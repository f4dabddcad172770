// platform/CacheUtility.h: the separate process that rebuilds the cache file of a year.
#pragma once

#include <functional>
#include <memory>
#include <string>

namespace velkor {

/// What a refresh works on, in the order in which it is handed over.
struct RefreshInputs {
  int viewYear = 0;
  int firstMonth = 1;
  std::string cacheFile;
  std::string workFile;
  std::string folderId;
  std::string storeId;
};

/// One utility process. It writes the year's events into the work file, replaces the cache file
/// with it and reports. Destroying the object abandons what runs: it stops, and nothing is reported
/// any more.
class CacheUtility {
 public:
  virtual ~CacheUtility() = default;
  /// Begins a refresh and returns. Throws Error when the utility cannot be started.
  virtual void Start(const RefreshInputs& inputs) = 0;
  /// Asks it to stop and returns; its completion follows like any other. Nothing happens when no
  /// refresh runs.
  virtual void Stop() = 0;
};

/// Receives a completion: a result code of model/SynchResult.h and the calendar program's error
/// number, 0 for none. What it throws goes to the host as an error.
using WriteComplete = std::function<void(short synchResult, long synchError)>;

class CacheUtilities {
 public:
  virtual ~CacheUtilities() = default;
  /// Throws Error when the utility cannot be had; may let messages in.
  /// @param writeComplete  called on the user-interface thread while messages are processed, never
  /// from within Start or Stop, once for each refresh that was started. It may destroy the utility.
  virtual std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) = 0;
};

}  // namespace velkor
