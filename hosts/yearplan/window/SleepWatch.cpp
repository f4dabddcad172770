// hosts/yearplan/window/SleepWatch.cpp: comparing the clock with the timer.
#include "hosts/yearplan/window/SleepWatch.h"

#include <utility>

namespace velkor {

SleepWatch::SleepWatch(Clock& clock, std::function<void()> onWake)
    : clock_(clock), onWake_(std::move(onWake)), last_(clock.Now()) {
  QObject::connect(&timer_, &QTimer::timeout, [this] { Look(); });
  timer_.start(IntervalSeconds * 1000);
}

void SleepWatch::Look() {
  const Date now = clock_.Now();
  const std::int64_t passed = now.Seconds() - last_.Seconds();
  last_ = now;
  if (passed > IntervalSeconds + LongestDelaySeconds) onWake_();
}

}  // namespace velkor
