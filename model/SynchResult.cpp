// model/SynchResult.cpp: how a refresh of the cache file ended, and what is told about it.
#include "model/SynchResult.h"

namespace velkor {

std::string MessageOf(SynchResult result, long error, const CachePaths& paths) {
  switch (result) {
    case SynchResult::CacheWritten:
    case SynchResult::NothingToReport:
      return {};
    case SynchResult::WorkFileNotOpened:
      return "Unable to open temp file, " + paths.workFile + " for updating";
    case SynchResult::CacheNotReplaced:
      return "Unable to clear old cache file, " + paths.cacheFile + " before updating";
    case SynchResult::TimerNotStarted:
      return "An error starting the background timer, check that the kestimer dll exists.";
    case SynchResult::LogonFailed:
      return "Could not log on to MAPI, probably due to a network problem.  Error code: " +
             std::to_string(error);
    case SynchResult::FetchingFailed:
      return "Error occured while fetching events.";
    case SynchResult::WritingFailed:
      break;
  }
  return "An error occured while updating the cache file";
}

}  // namespace velkor
