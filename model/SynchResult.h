// model/SynchResult.h: how a refresh of the cache file ended, and what is told about it.
#pragma once

#include <string>

#include "model/CachePaths.h"

namespace velkor {

/// Result codes that the completion of a refresh reports.
enum class SynchResult : short {
  CacheWritten = 1,
  WorkFileNotOpened = 2,
  CacheNotReplaced = 3,
  TimerNotStarted = 4,
  LogonFailed = 5,
  NothingToReport = 6,
  FetchingFailed = 7,
  /// The work file could not be written to its end.
  WritingFailed = 8,
};

/// The message for a result; empty for one that needs none.
/// @param error  number that came with the result
std::string MessageOf(SynchResult result, long error, const CachePaths& paths);

}  // namespace velkor
