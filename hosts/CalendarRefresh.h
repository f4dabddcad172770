// hosts/CalendarRefresh.h: refreshes a year of a calendar file, waiting for its turn.
#pragma once

#include <functional>

#include "calendar/CalendarStore.h"
#include "refresh/RefreshYear.h"

namespace velkor {

/// The whole of a span's days.
DateWindow WindowOf(const DisplaySpan& span);

/// Refreshes as RefreshYear does. Other programs may hold the files of the same calendar and year;
/// none holds them for long, so this waits for its turn, half a minute at most.
/// @param proceed  asked while it waits too
RefreshAnswer RefreshPatiently(const RefreshRequest& request, OutlookApplication& outlook,
                               Files& files, LocaleApi& locale,
                               const std::function<bool()>& proceed = {},
                               const std::function<void()>& open = {});

}  // namespace velkor
