// platform/headless/ScriptedCacheUtility.cpp: cache utilities that work when the test says so.
#include "platform/headless/ScriptedCacheUtility.h"

#include "values/Error.h"

namespace velkor {

class ScriptedCacheUtilities::Utility : public CacheUtility {
 public:
  Utility(ScriptedCacheUtilities& owner, std::shared_ptr<WriteComplete> writeComplete)
      : owner_(owner), writeComplete_(std::move(writeComplete)) {}
  ~Utility() override { *writeComplete_ = nullptr; }
  Utility(const Utility&) = delete;
  Utility& operator=(const Utility&) = delete;

  void Start(const RefreshInputs& inputs) override {
    if (owner_.failsToStart) {
      throw Error(errors::InvalidProcedureCall, "The cache utility cannot be started.");
    }
    owner_.started.push_back(inputs);
  }
  void Stop() override { ++owner_.stops; }

 private:
  ScriptedCacheUtilities& owner_;
  std::shared_ptr<WriteComplete> writeComplete_;
};

std::unique_ptr<CacheUtility> ScriptedCacheUtilities::Create(WriteComplete writeComplete) {
  if (failsToCreate) {
    throw Error(errors::InvalidProcedureCall, "The cache utility cannot be created.");
  }
  ++created;
  last_ = std::make_shared<WriteComplete>(std::move(writeComplete));
  return std::make_unique<Utility>(*this, last_);
}

void ScriptedCacheUtilities::Complete(short synchResult, long synchError) {
  // A copy: the completion may destroy the utility that raises it.
  const WriteComplete complete = last_ ? *last_ : nullptr;
  if (complete) complete(synchResult, synchError);
}

}  // namespace velkor
