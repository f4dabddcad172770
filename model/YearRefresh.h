// model/YearRefresh.h: has the cache file of one year written, and waits for it.
#pragma once

#include <functional>

#include "platform/CacheUtility.h"

namespace velkor {

struct Platform;

/// Runs a refresh in a cache utility of its own, apart from those of the background, and lets
/// messages be processed until it is done. Throws Error, which names the year, when it fails.
/// @param goesOn  asked meanwhile; a false answer abandons the refresh
/// @return whether the cache file was written
bool RefreshAndWait(const Platform& platform, const RefreshInputs& inputs,
                    const std::function<bool()>& goesOn);

}  // namespace velkor
