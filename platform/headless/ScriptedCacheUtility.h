// platform/headless/ScriptedCacheUtility.h: cache utilities that work when the test says so.
#pragma once

#include <memory>
#include <utility>
#include <vector>

#include "platform/CacheUtility.h"

namespace velkor {

/// Remembers what it was asked; the test completes a refresh by calling Complete.
class ScriptedCacheUtilities : public CacheUtilities {
 public:
  /// How many utilities were created.
  int created = 0;
  /// All refreshes that were started.
  std::vector<RefreshInputs> started;
  int stops = 0;
  /// Lets every Create fail.
  bool failsToCreate = false;
  /// Lets every Start fail.
  bool failsToStart = false;

  std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) override;

  /// Raises the completion of the utility that was created last; nothing when it is gone.
  void Complete(short synchResult, long synchError = 0);

 private:
  class Utility;
  std::shared_ptr<WriteComplete> last_;
};

}  // namespace velkor
