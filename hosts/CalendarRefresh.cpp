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
                               const std::function<bool()>& proceed) {
  constexpr int Attempts = 50;
  // One absence may be the other's file as it becomes the cache file.
  constexpr int MostAbsences = 3;
  constexpr std::chrono::milliseconds Pause{100};
  int absences = 0;
  for (int attempt = 1;; ++attempt) {
    RefreshAnswer answer = RefreshYear(request, outlook, files, locale, proceed);
    if (answer.result != SynchResult::WorkFileNotOpened || attempt == Attempts) return answer;
    if (!files.Exists(request.paths.workFile) && ++absences == MostAbsences) return answer;
    std::this_thread::sleep_for(Pause);
    if (proceed && !proceed()) return {};
  }
}

}  // namespace velkor
