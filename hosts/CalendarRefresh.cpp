// hosts/CalendarRefresh.cpp: waiting for a work file that somebody else holds.
#include "hosts/CalendarRefresh.h"

#include <chrono>
#include <thread>

#include "platform/System.h"

namespace velkor {

DateWindow WindowOf(const DisplaySpan& span) {
  const Date lastDay = span.ViewEndDate().Midnight();
  return {span.ViewStartDate(), Date::FromSeconds(lastDay.Seconds() + SecondsPerDay - 1)};
}

RefreshAnswer RefreshPatiently(const RefreshRequest& request, OutlookApplication& outlook,
                               Files& files, LocaleApi& locale,
                               const std::function<bool()>& proceed,
                               const std::function<void()>& open) {
  // Several planners of one calendar take their turns: all of them may hold it before this one.
  constexpr int MostHolds = 300;
  // Absent, the work file is free. One that is found so again and again cannot be made.
  constexpr int MostAbsences = 30;
  constexpr int MostReplacements = 5;
  constexpr std::chrono::milliseconds Pause{100};
  constexpr std::chrono::milliseconds ShortPause{10};
  int holds = 0;
  int absences = 0;
  int replacements = 0;
  for (;;) {
    RefreshAnswer answer = RefreshYear(request, outlook, files, locale, proceed, open);
    if (answer.result == SynchResult::CacheNotReplaced) {
      // Another one may be reading or replacing it at this moment.
      if (++replacements == MostReplacements) return answer;
    } else if (answer.result != SynchResult::WorkFileNotOpened) {
      return answer;
    } else if (files.Exists(request.paths.workFile)) {
      if (++holds == MostHolds) return answer;
      absences = 0;
    } else if (++absences == MostAbsences) {
      return answer;
    }
    if (absences != 1) std::this_thread::sleep_for(absences > 1 ? ShortPause : Pause);
    if (proceed && !proceed()) return {};
  }
}

}  // namespace velkor
