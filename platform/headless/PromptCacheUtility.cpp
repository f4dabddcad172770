// platform/headless/PromptCacheUtility.cpp: cache utilities that refresh in this process, as soon
// as messages are processed.
#include "platform/headless/PromptCacheUtility.h"

#include <exception>

namespace velkor {

class PromptCacheUtilities::Utility : public CacheUtility {
 public:
  Utility(const PromptCacheUtilities& owner, WriteComplete writeComplete)
      : owner_(owner), writeComplete_(std::move(writeComplete)) {}

  void Start(const RefreshInputs& inputs) override {
    stopped_ = false;
    owner_.post_([this, inputs, life = std::weak_ptr<char>(life_)] {
      if (!life.expired()) Run(inputs);
    });
  }
  void Stop() override { stopped_ = true; }

 private:
  void Run(const RefreshInputs& inputs) {
    // Copies: the completion may destroy this.
    const WriteComplete writeComplete = writeComplete_;
    const auto onError = owner_.onError_;
    try {
      const auto [result, error] = owner_.refresh_(inputs, [this] { return !stopped_; });
      writeComplete(result, error);
    } catch (const Error& raised) {
      onError(raised);
    } catch (const std::exception& raised) {
      onError(Error(errors::CalendarFailed, raised.what()));
    }
  }

  const PromptCacheUtilities& owner_;
  WriteComplete writeComplete_;
  bool stopped_ = false;
  /// Its end drops a refresh that waits.
  std::shared_ptr<char> life_ = std::make_shared<char>();
};

std::unique_ptr<CacheUtility> PromptCacheUtilities::Create(WriteComplete writeComplete) {
  return std::make_unique<Utility>(*this, std::move(writeComplete));
}

}  // namespace velkor
