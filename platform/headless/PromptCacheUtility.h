// platform/headless/PromptCacheUtility.h: cache utilities that refresh in this process, as soon as
// messages are processed.
#pragma once

#include <functional>
#include <string>
#include <utility>

#include "platform/CacheUtility.h"
#include "values/Error.h"

namespace velkor {

/// Everything stands still while one of them refreshes. A utility that is destroyed before its turn
/// refreshes nothing.
class PromptCacheUtilities : public CacheUtilities {
 public:
  /// A refresh's result code and the calendar program's error number, as WriteComplete takes them.
  struct Result {
    short code = 0;
    long error = 0;
    /// What went wrong, where somebody said so.
    std::string words;
  };
  /// Refreshes.
  /// @param proceed  false when it is to stop
  using Refresh =
      std::function<Result(const RefreshInputs& inputs, const std::function<bool()>& proceed)>;
  /// Runs what it is given, one after the other, while messages are processed.
  using Post = std::function<void(std::function<void()>)>;

  /// @param onError  shows an error that a refresh or its completion raised, in the refresh's own
  ///                 words where it gave some
  PromptCacheUtilities(Refresh refresh, Post post, std::function<void(const Error&)> onError)
      : refresh_(std::move(refresh)), post_(std::move(post)), onError_(std::move(onError)) {}

  /// The utility does not outlive this.
  std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) override;

 private:
  class Utility;

  Refresh refresh_;
  Post post_;
  std::function<void(const Error&)> onError_;
};

}  // namespace velkor
