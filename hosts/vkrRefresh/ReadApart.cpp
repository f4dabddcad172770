// hosts/vkrRefresh/ReadApart.cpp: child processes that read, and their answers from pipes.
#include "hosts/vkrRefresh/ReadApart.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <utility>

#include "calendar/ics/read/IcsAnswer.h"
#include "calendar/ics/read/IcsParser.h"
#include "calendar/set/ReadPlace.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/posix/OpenFile.h"
#include "values/Error.h"

namespace velkor {
namespace {

using Clock = std::chrono::steady_clock;

/// One for each processor of an ordinary machine; each more of them has its own start to pay for.
constexpr std::size_t Lanes = 2;

PlaceFolders FoldersFor(const std::vector<const SetSource*>& sources) {
  PlaceFolders folders;
  const bool hasOthers = std::any_of(sources.begin(), sources.end(), [](const SetSource* source) {
    return source->kind != SourceKind::File;
  });
  if (hasOthers) folders.data = PrivateDataFolder();
  try {
    folders.copies = CopiesFolderOf(PrivateCacheFolder());
  } catch (const Error&) {
    // No copies then.
  }
  return folders;
}

std::string AnswerOf(const SetSource& source, const PlaceFolders& folders,
                     const DateWindow& window) {
  try {
    return EncodeAnswer(ReadPlace(source, folders, window));
  } catch (const Error& error) {
    return EncodeAnswer(error);
  }
}

/// What every reader loads once, as the system's time zone: each child then has it already.
void LoadWhatAllNeed() {
  ParseIcs(
      "BEGIN:VCALENDAR\nBEGIN:VEVENT\nDTSTART:20260101T000000Z\nRRULE:FREQ=YEARLY\nEND:VEVENT\n"
      "END:VCALENDAR\n",
      "", {Date::FromYmd(2026, 1, 1), Date::FromYmd(2026, 12, 31)});
}

/// How long the calendars may take. A file may lie on a drive that never answers.
class Budget {
 public:
  explicit Budget(const ProcessLimits& limits)
      : longest_(std::chrono::seconds(std::min<rlim_t>(limits.seconds, 3600))),
        hurryFrom_(Clock::now() + 2 * longest_) {}

  /// Of a calendar whose reading begins now.
  Clock::time_point DeadlineFor(const SetSource& source) const {
    constexpr std::chrono::seconds Hurried{1};
    const auto now = Clock::now();
    const auto longest = source.kind == SourceKind::File ? longest_ / 2 : longest_;
    return std::max(std::min(now + longest, hurryFrom_), now + Hurried);
  }

 private:
  std::chrono::milliseconds longest_;
  Clock::time_point hurryFrom_;
};

/// A process that reads one calendar after the other and writes their answers into a pipe.
class Child {
 public:
  /// @param read  gives the answer of a calendar
  template <typename Read>
  Child(std::size_t first, std::size_t end, const Read& read) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    const pid_t parent = ::getpid();
    process_ = ::fork();
    if (process_ == 0) {
      // Nobody waits for the answers when the worker was killed.
      ::prctl(PR_SET_PDEATHSIG, SIGKILL);
      if (::getppid() != parent) ::_exit(1);
      const OpenFile pipe(ends[1]);
      for (std::size_t i = first; i < end; ++i) pipe.Write(read(i));
      ::_exit(0);
    }
    ::close(ends[1]);
    pipe_.emplace(ends[0]);
  }
  ~Child() {
    if (process_ <= 0) return;
    if (!hasEnded_) ::kill(process_, SIGKILL);
    // One that hangs in the system is left to it.
    ::waitpid(process_, nullptr, hasEnded_ ? 0 : WNOHANG);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  int Descriptor() const { return pipe_ ? pipe_->Descriptor() : -1; }
  /// It died, or has nothing more to say and is just ending.
  bool HasEnded() const { return hasEnded_; }
  void ExpectEnd() { hasEnded_ = true; }
  /// Takes what the pipe has.
  void Hear() {
    std::array<char, std::size_t{1} << 16> piece{};
    const ssize_t got = pipe_ ? pipe_->ReadSome(piece.data(), piece.size()) : 0;
    if (got > 0) heard_.append(piece.data(), static_cast<std::size_t>(got));
    hasEnded_ = got <= 0;
  }
  /// The next whole answer; none before it is there.
  std::optional<std::string> TakeOne() {
    try {
      std::string_view rest = heard_;
      std::string answer(TakeAnswer(rest));
      heard_.erase(0, answer.size());
      return answer;
    } catch (const Error&) {
      return std::nullopt;
    }
  }

 private:
  pid_t process_ = -1;
  std::optional<OpenFile> pipe_;
  std::string heard_;
  bool hasEnded_ = false;
};

/// Some of the calendars, by their places in the list, read one after the other. A child that dies
/// or is too slow loses the calendar that it was at, and another one goes on after it.
class Lane {
 public:
  using Read = std::function<std::string(std::size_t)>;
  using DeadlineOf = std::function<Clock::time_point(std::size_t)>;

  Lane(std::size_t first, std::size_t end, Read read, DeadlineOf deadlineOf)
      : next_(first), end_(end), read_(std::move(read)), deadlineOf_(std::move(deadlineOf)) {
    Begin();
  }

  bool IsDone() const { return next_ == end_; }
  int Descriptor() const { return child_->Descriptor(); }
  Clock::time_point Deadline() const { return deadline_; }
  void Hear() { child_->Hear(); }
  /// @param fault  gives the answer of a calendar that has none
  void Advance(std::vector<std::string>& answers,
               const std::function<std::string(std::size_t, const char* why)>& fault) {
    while (!IsDone()) {
      auto answer = child_->TakeOne();
      if (!answer) break;
      answers[next_++] = *std::move(answer);
      if (!IsDone()) deadline_ = deadlineOf_(next_);
    }
    if (IsDone()) child_->ExpectEnd();
    const bool isLate = deadline_ <= Clock::now();
    if (IsDone() || (!child_->HasEnded() && !isLate)) return;
    answers[next_] = fault(next_, child_->HasEnded() ? "the reader stopped" : "it took too long");
    ++next_;
    Begin();
  }

 private:
  void Begin() {
    child_.reset();
    if (IsDone()) return;
    deadline_ = deadlineOf_(next_);
    child_ = std::make_unique<Child>(next_, end_, read_);
  }

  std::size_t next_;
  std::size_t end_;
  Read read_;
  DeadlineOf deadlineOf_;
  Clock::time_point deadline_;
  std::unique_ptr<Child> child_;
};

/// Waits until one of them has something to say, or is late.
void Await(std::vector<Lane>& lanes) {
  std::vector<pollfd> pipes;
  auto first = Clock::time_point::max();
  for (const Lane& lane : lanes) {
    pipes.push_back({lane.Descriptor(), POLLIN, 0});
    first = std::min(first, lane.Deadline());
  }
  const auto left = std::chrono::ceil<std::chrono::milliseconds>(first - Clock::now()).count();
  if (::poll(pipes.data(), pipes.size(), static_cast<int>(std::max<long>(left, 0))) < 0) return;
  for (std::size_t i = 0; i < pipes.size(); ++i) {
    if (pipes[i].fd < 0 || pipes[i].revents != 0) lanes[i].Hear();
  }
}

}  // namespace

std::vector<std::string> ReadApart(const std::vector<const SetSource*>& sources,
                                   const DateWindow& window, const ProcessLimits& limits) {
  const PlaceFolders folders = FoldersFor(sources);
  const Budget budget(limits);
  const Lane::Read read = [&](std::size_t index) {
    return AnswerOf(*sources[index], folders, window);
  };
  const auto deadlineOf = [&](std::size_t index) { return budget.DeadlineFor(*sources[index]); };
  const auto fault = [&](std::size_t index, const char* why) {
    return EncodeAnswer(
        Error(errors::CalendarFailed,
              "The calendar " + sources[index]->location + " could not be read: " + why + ".",
              "Calendar"));
  };
  LoadWhatAllNeed();
  std::vector<std::string> answers(sources.size());
  std::vector<Lane> lanes;
  for (std::size_t i = 0; i < Lanes; ++i) {
    const std::size_t first = sources.size() * i / Lanes;
    const std::size_t end = sources.size() * (i + 1) / Lanes;
    if (first < end) lanes.emplace_back(first, end, read, deadlineOf);
  }
  while (!lanes.empty()) {
    Await(lanes);
    for (Lane& lane : lanes) lane.Advance(answers, fault);
    std::erase_if(lanes, [](const Lane& lane) { return lane.IsDone(); });
  }
  return answers;
}

}  // namespace velkor
