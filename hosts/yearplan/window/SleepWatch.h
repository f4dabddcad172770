// hosts/yearplan/window/SleepWatch.h: notices that the machine slept.
#pragma once

#include <QTimer>
#include <functional>

#include "platform/System.h"

namespace velkor {

/// Looks at the clock every so often; when more time passed between two looks than a busy machine
/// explains, it slept, or its clock was set forward.
class SleepWatch {
 public:
  /// The clock outlives this.
  SleepWatch(Clock& clock, std::function<void()> onWake);

  /// One look; the timer calls it.
  void Look();

  static constexpr int IntervalSeconds = 15;
  /// Beyond the interval.
  static constexpr int LongestDelaySeconds = 120;

 private:
  Clock& clock_;
  std::function<void()> onWake_;
  Date last_;
  QTimer timer_;
};

}  // namespace velkor
