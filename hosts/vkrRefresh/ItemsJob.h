// hosts/vkrRefresh/ItemsJob.h: reads a calendar file for the window or the command that asks.
#pragma once

#include <string>

#include "calendar/CalendarFolder.h"
#include "hosts/ProcessLimits.h"

namespace velkor {

/// The items of a file, or why there are none, as IcsAnswer encodes them.
std::string AnswerOfItems(const std::string& path, const DateWindow& window,
                          const ProcessLimits& limits);

}  // namespace velkor
