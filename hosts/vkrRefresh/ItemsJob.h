// hosts/vkrRefresh/ItemsJob.h: reads calendars for the window or the command that asks.
#pragma once

#include <string>
#include <vector>

#include "calendar/CalendarFolder.h"
#include "hosts/ProcessLimits.h"

namespace velkor {

/// The items of a calendar file, or of some calendars of a set one after the other, or why there
/// are none, as IcsAnswer encodes them.
/// @param ids  of a set: which of its calendars
std::string AnswerOfItems(const std::string& path, const DateWindow& window,
                          const std::vector<std::string>& ids, const ProcessLimits& limits);

}  // namespace velkor
