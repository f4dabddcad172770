// hosts/vkrRefresh/YearJob.h: reads a year of a calendar file and replaces the year's cache file.
#pragma once

#include <string>

#include "hosts/ProcessLimits.h"
#include "platform/CacheUtility.h"

namespace velkor {

/// Refreshes, waiting for others as RefreshPatiently does. A kill at any moment leaves the old or
/// the new cache file, and at most a work file that the next refresh takes over.
/// @return how it went: "RESULT ERROR WORDS" and a line's end, numbers as WriteComplete has them
std::string AnswerOfYear(const RefreshInputs& inputs, const ProcessLimits& limits);

}  // namespace velkor
