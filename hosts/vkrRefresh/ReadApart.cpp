// hosts/vkrRefresh/ReadApart.cpp: a child process for each calendar, a few at a time, and their
// answers from pipes.
#include "hosts/vkrRefresh/ReadApart.h"

#include <fcntl.h>
#include <poll.h>
#include <signal.h>
#include <sys/prctl.h>
#include <sys/wait.h>
#include <unistd.h>

#include <algorithm>
#include <array>
#include <cerrno>
#include <chrono>
#include <memory>
#include <optional>
#include <utility>

#include "calendar/ics/read/IcsAnswer.h"
#include "calendar/set/LocalPlaces.h"
#include "calendar/set/ReadPlace.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/posix/OpenFile.h"
#include "values/Error.h"

namespace velkor {
namespace {

using Clock = std::chrono::steady_clock;

/// More than there are processors: some may wait for a disk in the network.
constexpr std::size_t AtOnce = 4;

PlaceFolders FoldersFor(const std::vector<const SetSource*>& sources) {
  PlaceFolders folders;
  const bool hasOthers = std::any_of(sources.begin(), sources.end(), [](const SetSource* source) {
    return source->kind != SourceKind::File;
  });
  if (hasOthers) folders.data = PrivateDataFolder();
  try {
    folders.copies = PrivateCacheFolder() + "/copies";
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

/// One calendar that is being read.
class Child {
 public:
  Child(const SetSource& source, const PlaceFolders& folders, const DateWindow& window,
        Clock::time_point deadline)
      : source_(source), deadline_(deadline) {
    std::array<int, 2> ends{-1, -1};
    if (::pipe2(ends.data(), O_CLOEXEC) != 0) return;
    const pid_t parent = ::getpid();
    process_ = ::fork();
    if (process_ == 0) Read(ends[1], parent, folders, window);
    ::close(ends[1]);
    pipe_.emplace(ends[0]);
  }
  ~Child() {
    if (process_ <= 0) return;
    if (!hasEnded_) ::kill(process_, SIGKILL);
    // One that hangs in the system is left to it; one whose pipe ended is just ending.
    ::waitpid(process_, nullptr, hasEnded_ ? 0 : WNOHANG);
  }
  Child(const Child&) = delete;
  Child& operator=(const Child&) = delete;

  int Descriptor() const { return pipe_ ? pipe_->Descriptor() : -1; }
  Clock::time_point Deadline() const { return deadline_; }
  /// Takes what the pipe has.
  void Hear() {
    std::array<char, std::size_t{1} << 16> piece{};
    const ssize_t got = pipe_ ? pipe_->ReadSome(piece.data(), piece.size()) : 0;
    if (got > 0) answer_.append(piece.data(), static_cast<std::size_t>(got));
    hasEnded_ = got <= 0;
  }
  bool HasEnded() const { return hasEnded_; }
  /// Whole, or why there is none.
  std::string Answer() const {
    std::string_view rest = answer_;
    try {
      TakeAnswer(rest);
      if (rest.empty()) return answer_;
    } catch (const Error&) {
      // The child died, or was too slow.
    }
    const std::string why = hasEnded_ ? "the reader stopped" : "it took too long";
    return EncodeAnswer(
        Error(errors::CalendarFailed,
              "The calendar " + source_.location + " could not be read: " + why + ".", "Calendar"));
  }

 private:
  [[noreturn]] void Read(int descriptor, pid_t parent, const PlaceFolders& folders,
                         const DateWindow& window) const {
    // Nobody waits for the answer when the worker was killed.
    ::prctl(PR_SET_PDEATHSIG, SIGKILL);
    if (::getppid() != parent) ::_exit(1);
    const OpenFile pipe(descriptor);
    pipe.Write(AnswerOf(source_, folders, window));
    ::_exit(0);
  }

  const SetSource& source_;
  Clock::time_point deadline_;
  pid_t process_ = -1;
  std::optional<OpenFile> pipe_;
  std::string answer_;
  bool hasEnded_ = false;
};

class Readings {
 public:
  Readings(const std::vector<const SetSource*>& sources, const DateWindow& window,
           const ProcessLimits& limits)
      : sources_(sources),
        window_(window),
        folders_(FoldersFor(sources)),
        longest_(std::chrono::milliseconds(std::min<rlim_t>(limits.seconds, 3600) * 1000 / 3)),
        hurryFrom_(Clock::now() + 2 * longest_),
        answers_(sources.size()) {}

  std::vector<std::string> Run() {
    while (next_ < sources_.size() || !running_.empty()) {
      while (next_ < sources_.size() && running_.size() < AtOnce) Start();
      Wait();
      End();
    }
    return std::move(answers_);
  }

 private:
  struct Running {
    std::size_t index;
    std::unique_ptr<Child> child;
  };

  void Start() {
    constexpr std::chrono::seconds Hurried{1};
    const auto now = Clock::now();
    const auto deadline = std::max(std::min(now + longest_, hurryFrom_), now + Hurried);
    running_.push_back(
        {next_, std::make_unique<Child>(*sources_[next_], folders_, window_, deadline)});
    ++next_;
  }

  void Wait() {
    std::vector<pollfd> pipes;
    auto first = Clock::time_point::max();
    for (const Running& one : running_) {
      pipes.push_back({one.child->Descriptor(), POLLIN, 0});
      first = std::min(first, one.child->Deadline());
    }
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(first - Clock::now()).count();
    if (::poll(pipes.data(), pipes.size(), static_cast<int>(std::max<long>(left, 0))) < 0) return;
    for (std::size_t i = 0; i < pipes.size(); ++i) {
      const bool isHeard = pipes[i].fd < 0 || pipes[i].revents != 0;
      if (isHeard) running_[i].child->Hear();
    }
  }

  void End() {
    const auto now = Clock::now();
    std::erase_if(running_, [&](const Running& one) {
      const bool isOver = one.child->HasEnded() || one.child->Deadline() <= now;
      if (isOver) answers_[one.index] = one.child->Answer();
      return isOver;
    });
  }

  const std::vector<const SetSource*>& sources_;
  const DateWindow& window_;
  PlaceFolders folders_;
  std::chrono::milliseconds longest_;
  Clock::time_point hurryFrom_;
  std::vector<std::string> answers_;
  std::size_t next_ = 0;
  std::vector<Running> running_;
};

}  // namespace

std::vector<std::string> ReadApart(const std::vector<const SetSource*>& sources,
                                   const DateWindow& window, const ProcessLimits& limits) {
  return Readings(sources, window, limits).Run();
}

}  // namespace velkor
