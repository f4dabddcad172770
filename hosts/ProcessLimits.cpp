// hosts/ProcessLimits.cpp: the system's limits, its alarm, and the death of the parent.
#include "hosts/ProcessLimits.h"

#include <sys/prctl.h>
#include <unistd.h>

#include <algorithm>
#include <csignal>

namespace velkor {

void Hold(const ProcessLimits& limits) {
  const rlimit noCore{0, 0};
  setrlimit(RLIMIT_CORE, &noCore);
  // Nobody waits for the answer when the client was killed (prctl(2), PR_SET_PDEATHSIG).
  prctl(PR_SET_PDEATHSIG, SIGKILL);
  const rlimit time{limits.seconds, limits.seconds + 1};
  setrlimit(RLIMIT_CPU, &time);
#ifndef __SANITIZE_ADDRESS__
  // The address sanitizer reserves far more addresses than it uses.
  const rlimit memory{limits.memory, limits.memory};
  setrlimit(RLIMIT_AS, &memory);
#endif
}

ReadingTime::ReadingTime(const ProcessLimits& limits) {
  constexpr rlim_t Longest = 3600;
  alarm(static_cast<unsigned>(std::min(limits.seconds + 1, Longest)));
}

ReadingTime::~ReadingTime() {
  alarm(0);
}

}  // namespace velkor
