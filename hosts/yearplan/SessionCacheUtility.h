// hosts/yearplan/SessionCacheUtility.h: cache utilities of a session that has no cache folder.
#pragma once

#include <functional>

#include "platform/CacheUtility.h"
#include "values/Error.h"

namespace velkor {

class Files;
class LocaleApi;
class OutlookApplication;

/// Refreshes in this process, from the session's own calendar, since another process sees nothing
/// of its memory. Needs a QCoreApplication: a refresh runs from its event loop, which stands still
/// meanwhile.
class SessionCacheUtilities : public CacheUtilities {
 public:
  /// All of them outlive this.
  /// @param onError  shows an error that a completion raised
  SessionCacheUtilities(OutlookApplication& outlook, Files& files, LocaleApi& locale,
                        std::function<void(const Error&)> onError)
      : outlook_(outlook), files_(files), locale_(locale), onError_(std::move(onError)) {}

  std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) override;

 private:
  class Utility;

  OutlookApplication& outlook_;
  Files& files_;
  LocaleApi& locale_;
  std::function<void(const Error&)> onError_;
};

}  // namespace velkor
