// hosts/vkrSync/main.cpp: the program that talks to servers: one job from standard input.
#include <QCoreApplication>
#include <QNetworkProxyFactory>
#include <iostream>
#include <string>

#include "hosts/ProcessLimits.h"
#include "hosts/vkrSync/RunJob.h"

namespace {

constexpr const char* Usage =
    "usage: vkrSync\n"
    "Reads one job from standard input, a line of JSON as hosts/SyncMessages.h tells, does it and\n"
    "writes what happens to standard output, line by line. Exit codes: 0 done, 1 failed, 2 no "
    "job.\n";

/// Of processor and of the whole job; a first synchronisation over a slow line takes long.
constexpr velkor::ProcessLimits Limits{rlim_t{2} << 30, 3600};

}  // namespace

int main(int count, char** arguments) {
  const QCoreApplication application(count, arguments);
  std::string line;
  velkor::SyncJob job;
  try {
    if (count > 1 || !std::getline(std::cin, line)) throw velkor::Error(0, Usage);
    job = velkor::ParseSyncJob(line);
  } catch (const velkor::Error& error) {
    std::cerr << error.Description() << '\n';
    return 2;
  }
  velkor::Hold(Limits);
  const velkor::ReadingTime time(Limits);
  QNetworkProxyFactory::setUseSystemConfiguration(true);
  return velkor::RunJob(job, {}) ? 0 : 1;
}
