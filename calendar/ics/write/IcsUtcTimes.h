// calendar/ics/write/IcsUtcTimes.h: puts local times on Greenwich's clock and back.
#pragma once

#include <string>

#include "calendar/ics/read/IcsDocument.h"
#include "values/Date.h"

namespace velkor {

/// Seconds of Greenwich's clock. Throws Error (CalendarFailed) for a time outside the years 100 to
/// 9999.
WallSeconds ToUtc(WallSeconds local, const IcsDocument& document);
/// The same as a value: 20260131T093000Z.
std::string UtcText(Date local, const IcsDocument& document);

/// What a local time shows once it was written on Greenwich's clock: itself, but for one that the
/// clock skips.
WallSeconds AsShown(Date local, const IcsDocument& document);

}  // namespace velkor
