// calendar/net/CopyFolder.cpp: lock the folder, write a work file, rename it.
#include "calendar/net/CopyFolder.h"

#include <fcntl.h>
#include <unistd.h>

#include <QDir>
#include <QFileInfo>
#include <cerrno>
#include <chrono>
#include <cstdio>
#include <system_error>
#include <thread>

#include "values/Error.h"

namespace velkor {
namespace {

using std::chrono::steady_clock;

/// One at a time, since the folder is held.
constexpr const char* WorkFile = ".work";

[[noreturn]] void Fail(long number, const std::string& path, const std::string& why) {
  throw Error(number, "The copy of the calendar, " + path + ", could not be written: " + why + ".",
              "Network");
}

OpenFile Opened(const std::string& path) {
  if (!QDir().mkpath(QString::fromStdString(path))) {
    Fail(errors::PathNotFound, path, "its folder cannot be made");
  }
  return OpenFile(::open(path.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
}

}  // namespace

CopyFolder::CopyFolder(std::string path) : path_(std::move(path)), held_(Opened(path_)) {
  constexpr std::chrono::minutes Patience{2};
  constexpr std::chrono::milliseconds Pause{100};
  if (!held_.IsOpen()) Fail(errors::PathNotFound, path_, "its folder cannot be opened");
  const auto deadline = steady_clock::now() + Patience;
  while (!held_.Lock()) {
    if (steady_clock::now() >= deadline) {
      Fail(errors::FileAlreadyOpen, path_, "another program holds its folder");
    }
    std::this_thread::sleep_for(Pause);
  }
}

void CopyFolder::Write(const std::string& name, std::string_view bytes) const {
  const std::string path = path_ + "/" + name;
  const std::string work = path_ + "/" + WorkFile;
  // What a program that was stopped has left is written over.
  const OpenFile file(::open(work.c_str(), O_WRONLY | O_CREAT | O_TRUNC | O_CLOEXEC, 0600));
  const bool written = file.IsOpen() && file.Write(bytes) && file.Synchronise() &&
                       ::rename(work.c_str(), path.c_str()) == 0;
  if (!written) {
    const int code = errno;
    ::unlink(work.c_str());
    Fail(code == ENOENT ? errors::PathNotFound : errors::DeviceInputOutput, path,
         std::generic_category().message(code));
  }
  held_.Synchronise();
}

bool CopyFolder::Has(const std::string& name) const {
  return QFileInfo(QString::fromStdString(path_ + "/" + name)).isFile();
}

}  // namespace velkor
