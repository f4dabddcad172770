// tests/platform/desktop/RefreshCase.h: a calendar file and the real worker at work on it.
#pragma once

#include <signal.h>

#include <QCoreApplication>
#include <QDir>
#include <QFile>
#include <chrono>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

#include "calendar/set/SetCalendar.h"
#include "hosts/CalendarRefresh.h"
#include "platform/desktop/DesktopShell.h"
#include "platform/desktop/ProcessCacheUtility.h"
#include "tests/platform/desktop/CalendarText.h"
#include "tests/platform/desktop/FolderCase.h"

namespace velkor {

class RefreshCase : public FolderCase {
 protected:
  using Completion = std::pair<short, long>;

  RefreshCase() { QDir(folder_.path()).mkdir("cache"); }

  /// Where the cache and work files lie.
  QStringList CacheFolder() const {
    return QDir(folder_.filePath("cache")).entryList(QDir::Files | QDir::Hidden);
  }
  /// A shell script that can be run.
  std::string Script(const char* name, const QByteArray& lines) const {
    Write(name, "#!/bin/sh\n" + lines);
    QFile::setPermissions(File(name), QFile::ReadOwner | QFile::WriteOwner | QFile::ExeOwner);
    return Path(name);
  }
  /// The worker, after it has added its process number to the file "pids".
  std::string NumberedUtility() const {
    return Script("utility", "echo $$ >>'" + QByteArray::fromStdString(Path("pids")) +
                                 "'\nexec '" VKR_REFRESH "' \"$@\"\n");
  }
  /// Process numbers so far.
  std::vector<pid_t> Processes() const {
    std::vector<pid_t> processes;
    for (const QByteArray& line : Bytes("pids").split('\n')) {
      if (const pid_t number = line.toInt(); number > 0) processes.push_back(number);
    }
    return processes;
  }
  /// False for a process that has ended, whether its parent has noticed or not.
  static bool IsRunning(pid_t process) {
    QFile file("/proc/" + QString::number(process) + "/stat");
    if (!file.open(QIODevice::ReadOnly)) return false;
    const QByteArray state = file.readAll();
    return state.mid(state.lastIndexOf(')') + 2, 1) != "Z";
  }

  /// A refresh of 2026, as a window on this calendar, in "a.ics", names it to the cache utility.
  RefreshInputs InputsFor(const QByteArray& calendar) const {
    Write("a.ics", calendar);
    SetCalendar window(Path("a.ics"), WindowOf({2026, 1}));
    return {2026,
            1,
            Path("cache/c.tmp"),
            Path("cache/~c.tmp"),
            window.Folder().EntryID(),
            window.Store().StoreID()};
  }

  /// Creates a utility whose completions and errors are written down.
  void Create(std::string program = {}) {
    if (program.empty()) program = VKR_REFRESH;
    utilities_.emplace([this](const Error& error) { errors_.push_back(error); }, program);
    utility_ = utilities_->Create([this](short result, long number) {
      completions_.emplace_back(result, number);
      if (number != 0) throw Error(number, "plain");
    });
  }

  /// Lets messages be processed until it is so; false when that takes too long.
  bool Await(const std::function<bool()>& isSo) {
    const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(20);
    while (!isSo()) {
      if (std::chrono::steady_clock::now() > end) return false;
      shell_.ProcessMessages();
    }
    return true;
  }
  /// The next completion; {0, 0} when it never comes.
  Completion AwaitCompletion() {
    const std::size_t count = completions_.size();
    return Await([&] { return completions_.size() > count; }) ? completions_.back() : Completion{};
  }
  Completion Refresh(const RefreshInputs& inputs) {
    utility_->Start(inputs);
    return AwaitCompletion();
  }

  DesktopShell shell_;
  std::vector<Completion> completions_;
  std::vector<Error> errors_;
  std::optional<ProcessCacheUtilities> utilities_;
  std::unique_ptr<CacheUtility> utility_;
};

}  // namespace velkor
