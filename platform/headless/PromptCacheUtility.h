// platform/headless/PromptCacheUtility.h: cache utilities that refresh in this process, as soon as
// messages are processed.
#pragma once

#include <functional>
#include <utility>

#include "platform/CacheUtility.h"
#include "values/Error.h"

namespace velkor {

/// Everything stands still while one of them refreshes. A utility that is destroyed before its turn
/// refreshes nothing.
class PromptCacheUtilities : public CacheUtilities {
 public:
  /// A refresh's result code and the calendar program's error number, as WriteComplete takes them.
  using Result = std::pair<short, long>;
  /// Refreshes; throws nothing.
  /// @param proceed  false when it is to stop
  using Refresh =
      std::function<Result(const RefreshInputs& inputs, const std::function<bool()>& proceed)>;
  /// Runs what it is given, one after the other, while messages are processed.
  using Post = std::function<void(std::function<void()>)>;

  /// @param onError  shows an error that a completion raised
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
