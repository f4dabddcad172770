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
    if (stop_) {
      throw Error(errors::InvalidProcedureCall, "The cache utility has not completed yet.",
                  "VelkorCacheUtility");
    }
    stop_ = std::make_shared<bool>(false);
    owner_.post_([this, inputs, life = std::weak_ptr<bool>(stop_)] {
      if (!life.expired()) Run(inputs);
    });
  }
  void Stop() override {
    if (stop_) *stop_ = true;
  }

 private:
  void Run(const RefreshInputs& inputs) {
    // Copies: the completion may destroy this.
    const WriteComplete writeComplete = writeComplete_;
    const auto onError = owner_.onError_;
    const Result result = Refreshed(inputs);
    stop_.reset();
    try {
      writeComplete(result.code, result.error);
    } catch (const Error& raised) {
      onError(result.words.empty() ? raised
                                   : Error(raised.Number(), result.words, raised.Source()));
    } catch (const std::exception& raised) {
      onError(Error(errors::CalendarFailed, raised.what()));
    }
  }

  Result Refreshed(const RefreshInputs& inputs) const {
    // A result code of model/SynchResult.h.
    constexpr short FetchingFailed = 7;
    try {
      return owner_.refresh_(inputs, [this] { return !*stop_; });
    } catch (const std::exception& raised) {
      return {FetchingFailed, errors::CalendarFailed, raised.what()};
    }
  }

  const PromptCacheUtilities& owner_;
  WriteComplete writeComplete_;
  /// While a refresh waits or runs, whether it is to stop; its end drops one that waits.
  std::shared_ptr<bool> stop_;
};

std::unique_ptr<CacheUtility> PromptCacheUtilities::Create(WriteComplete writeComplete) {
  return std::make_unique<Utility>(*this, std::move(writeComplete));
}

}  // namespace velkor
