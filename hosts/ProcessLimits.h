// hosts/ProcessLimits.h: bounds this process in memory and time.
#pragma once

#include <sys/resource.h>

namespace velkor {

struct ProcessLimits {
  /// Bytes.
  rlim_t memory = 0;
  rlim_t seconds = 0;
};

/// From now on the system refuses more memory, and ends the process (SIGXCPU) when it has worked
/// for longer or when the process that started it has ended.
void Hold(const ProcessLimits& limits);

/// While it lives, the process ends (SIGALRM) when the time has gone by, whether it works or waits
/// for a file that never comes.
class ReadingTime {
 public:
  explicit ReadingTime(const ProcessLimits& limits);
  ~ReadingTime();
  ReadingTime(const ReadingTime&) = delete;
  ReadingTime& operator=(const ReadingTime&) = delete;
};

}  // namespace velkor
