// calendar/ics/write/IcsUtcTimes.cpp: puts local times on Greenwich's clock and back.
#include "calendar/ics/write/IcsUtcTimes.h"

#include "calendar/ics/write/IcsText.h"
#include "values/Error.h"

namespace velkor {

WallSeconds ToUtc(WallSeconds local, const IcsDocument& document) {
  const WallSeconds utc = document.FloatingZone().ToUtc(local);
  if (!IsInCalendar(utc)) {
    throw Error(errors::CalendarFailed,
                "A date of the appointment lies outside the years 100 to 9999.", "Calendar");
  }
  return utc;
}

std::string UtcText(Date local, const IcsDocument& document) {
  return TimeValue(ToUtc(local.Seconds(), document), true);
}

WallSeconds AsShown(Date local, const IcsDocument& document) {
  return document.UtcZone().ToLocal(ToUtc(local.Seconds(), document));
}

}  // namespace velkor
