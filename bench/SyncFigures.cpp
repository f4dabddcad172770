// bench/SyncFigures.cpp: what a first synchronisation of a large calendar costs.
#include <fcntl.h>
#include <spawn.h>
#include <sys/resource.h>
#include <sys/wait.h>
#include <unistd.h>

#include <QCoreApplication>
#include <QTemporaryDir>
#include <array>
#include <cstdlib>
#include <memory>
#include <string>

#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "tests/calendar/dav/FakeCalendar.h"

namespace velkor {
namespace {

constexpr double SecondsLimit = 2.5;
constexpr double MemoryLimit = 4;
constexpr int Rounds = 3;

/// What a process of vkrSync took.
struct SyncCost {
  double seconds = 0;
  double bytes = 0;
};

SyncCost CostOfJob(const std::string& job) {
  std::array<int, 2> input{};
  if (::pipe(input.data()) != 0) return {};
  const std::string program = QCoreApplication::applicationDirPath().toStdString() + "/vkrSync";
  posix_spawn_file_actions_t actions;
  posix_spawn_file_actions_init(&actions);
  posix_spawn_file_actions_adddup2(&actions, input[0], STDIN_FILENO);
  posix_spawn_file_actions_addclose(&actions, input[1]);
  posix_spawn_file_actions_addopen(&actions, STDOUT_FILENO, "/dev/null", O_WRONLY, 0);
  std::array<char*, 2> arguments{const_cast<char*>(program.c_str()), nullptr};
  pid_t process = 0;
  const int fault =
      ::posix_spawn(&process, program.c_str(), &actions, nullptr, arguments.data(), environ);
  posix_spawn_file_actions_destroy(&actions);
  const bool isTold = ::write(input[1], job.data(), job.size()) > 0;
  ::close(input[0]);
  ::close(input[1]);
  int status = 0;
  rusage usage{};
  if (fault != 0 || ::wait4(process, &status, 0, &usage) != process || !isTold || status != 0) {
    return {};
  }
  const auto secondsOf = [](const timeval& time) {
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_usec) / 1e6;
  };
  return {secondsOf(usage.ru_utime) + secondsOf(usage.ru_stime),
          static_cast<double>(usage.ru_maxrss) * 1024};
}

/// A server with so many appointments.
class LargeCalendar {
 public:
  explicit LargeCalendar(int objects) {
    for (int i = 0; i < objects; ++i) {
      const std::string name = std::to_string(i);
      calendar_.Put("/c/" + name + ".ics", Appointment(name, "Appointment " + name));
    }
  }

  /// Into a mirror of its own.
  SyncCost CostOfFirst() const {
    const QTemporaryDir folder;
    return CostOfJob(R"({"job":"sync","kind":"server","location":")" + server_.Url("/c/") +
                     R"(","place":")" + folder.filePath("mirror").toStdString() + "\"}\n");
  }

 private:
  FakeCalendar calendar_;
  ScriptedServer server_{calendar_.Script()};
};

void Memory(benchmark::State& state) {
  const SyncCost few = LargeCalendar(1'000).CostOfFirst();
  const SyncCost many = LargeCalendar(50'000).CostOfFirst();
  if (few.bytes == 0 || many.bytes == 0) {
    state.SkipWithError("a synchronisation failed");
    return;
  }
  for (auto iteration : state) {
    static_cast<void>(iteration);
    state.SetIterationTime(many.seconds);
  }
  LeaveFigure(state, many.bytes / few.bytes, MemoryLimit);
}

}  // namespace

void RegisterSyncFigures() {
  RegisterFigure("memory of vkrSync for a first synchronisation of 50,000 objects over 1,000", 1,
                 Memory);
  RegisterFigure("first synchronisation of 8,000 objects over 4,000", Rounds,
                 [](benchmark::State& state) {
                   const LargeCalendar few(4'000);
                   const LargeCalendar many(8'000);
                   Compare(
                       state, SecondsLimit, [&] { return few.CostOfFirst().seconds; },
                       [&] { return many.CostOfFirst().seconds; });
                 });
}

}  // namespace velkor
