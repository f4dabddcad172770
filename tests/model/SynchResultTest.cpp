// tests/model/SynchResultTest.cpp: what is told about each result of a refresh.
#include "model/SynchResult.h"

#include <gtest/gtest.h>

namespace velkor {
namespace {

TEST(SynchResult, EachResultHasItsMessage) {
  const CachePaths paths{"/temp/cache.tmp", "/temp/~cache.tmp"};
  const struct {
    int result;
    const char* message;
  } cases[] = {
      {1, ""},
      {2, "Unable to open temp file, /temp/~cache.tmp for updating"},
      {3, "Unable to clear old cache file, /temp/cache.tmp before updating"},
      {4, "An error starting the background timer, check that the kestimer dll exists."},
      {5, "Could not log on to MAPI, probably due to a network problem.  Error code: 1234"},
      {6, ""},
      {7, "Error occured while fetching events."},
      {0, "An error occured while updating the cache file"},
      {8, "An error occured while updating the cache file"},
      {-1, "An error occured while updating the cache file"},
  };
  for (const auto& [result, message] : cases) {
    EXPECT_EQ(MessageOf(static_cast<SynchResult>(result), 1234, paths), message) << result;
  }
}

}  // namespace
}  // namespace velkor
