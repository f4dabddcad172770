// calendar/CalendarFile.cpp: lock, read, work file, look again, rename.
#include "calendar/CalendarFile.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <string_view>
#include <system_error>
#include <thread>

#include "calendar/ShortHash.h"
#include "platform/WholeFile.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

[[noreturn]] void Fail(long number, const std::string& path, const std::string& why) {
  throw Error(number, "The calendar file " + path + " could not be saved: " + why + ".",
              "Calendar");
}

[[noreturn]] void Fail(const std::string& path, int code) {
  const bool refused = code == EACCES || code == EPERM || code == EROFS;
  const long number = code == ENOENT ? errors::FileNotFound
                      : refused      ? errors::BadFileMode
                                     : errors::DeviceInputOutput;
  Fail(number, path, std::generic_category().message(code));
}

/// An open file, closed at the end of its life.
class OpenFile {
 public:
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ~OpenFile() {
    if (descriptor_ >= 0) ::close(descriptor_);
  }
  OpenFile(OpenFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}
  OpenFile& operator=(OpenFile&&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }
  int Descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileMark MarkOf(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim),
          Nanoseconds(status.st_ctim)};
}

std::optional<FileMark> MarkAt(const std::string& path) {
  struct stat status {};
  if (::stat(path.c_str(), &status) != 0) return std::nullopt;
  return MarkOf(status);
}

struct stat StatusOf(const OpenFile& file, const std::string& path) {
  struct stat status {};
  if (::fstat(file.Descriptor(), &status) != 0) Fail(path, errno);
  return status;
}

/// The file, locked against our other programs. What they lock is the file itself, so after a
/// wait the name may belong to another one.
OpenFile OpenLocked(const std::string& path, std::chrono::milliseconds patience) {
  constexpr std::chrono::milliseconds Pause{10};
  const auto deadline = std::chrono::steady_clock::now() + patience;
  while (true) {
    OpenFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
    if (!file.IsOpen()) Fail(path, errno);
    const struct stat status = StatusOf(file, path);
    if (!S_ISREG(status.st_mode)) Fail(errors::BadFileName, path, "it is no ordinary file");
    // The superuser may write everywhere; a file that nobody may write is still meant to stay.
    const bool writable = (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0;
    if (!writable || ::access(path.c_str(), W_OK) != 0) {
      Fail(errors::BadFileMode, path, "it is write-protected");
    }
    const bool locked = ::flock(file.Descriptor(), LOCK_EX | LOCK_NB) == 0;
    const auto named = MarkAt(path);
    if (locked && named && named->device == status.st_dev && named->file == status.st_ino) {
      return file;
    }
    if (std::chrono::steady_clock::now() >= deadline) {
      Fail(errors::FileAlreadyOpen, path, "another program holds it");
    }
    std::this_thread::sleep_for(Pause);
  }
}

std::string ReadAll(const OpenFile& file, const std::string& path, std::size_t size) {
  if (::lseek(file.Descriptor(), 0, SEEK_SET) != 0) Fail(path, errno);
  return ReadWhole(path, size, [&](char* place, std::size_t room) {
    ssize_t got = -1;
    do {
      got = ::read(file.Descriptor(), place, room);
    } while (got < 0 && errno == EINTR);
    if (got < 0) Fail(path, errno);
    return static_cast<std::size_t>(got);
  });
}

void WriteAll(const OpenFile& file, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file.Descriptor(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      Fail(path, errno);
    }
  }
}

/// The new file under its own name, beside the old one, deleted unless it was renamed. The name is
/// always the same for one calendar, whose lock is held, so that a run that was stopped leaves no
/// more than one.
class WorkFile {
 public:
  explicit WorkFile(const std::string& path)
      : name_(std::filesystem::path(path).parent_path() /
              (".velkor-" + ShortHash(std::filesystem::path(path).filename().string()))),
        file_(Open(path)) {}
  ~WorkFile() {
    if (!renamed_) ::unlink(name_.c_str());
  }
  WorkFile(const WorkFile&) = delete;
  WorkFile& operator=(const WorkFile&) = delete;

  void Fill(std::string_view bytes, const struct stat& old, const std::string& path) {
    WriteAll(file_, bytes, path);
    // Only the superuser may give a file away; a group of our own can be kept.
    if (::fchown(file_.Descriptor(), old.st_uid, old.st_gid) != 0 &&
        ::fchown(file_.Descriptor(), static_cast<uid_t>(-1), old.st_gid) != 0) {
      // The file then belongs to whoever saved it.
    }
    constexpr mode_t Permissions = 07777;
    if (::fchmod(file_.Descriptor(), old.st_mode & Permissions) != 0) Fail(path, errno);
    if (::fsync(file_.Descriptor()) != 0) Fail(path, errno);
  }

  FileMark MoveOver(const std::string& path) {
    if (::rename(name_.c_str(), path.c_str()) != 0) Fail(path, errno);
    renamed_ = true;
    const OpenFile folder(::open(std::filesystem::path(path).parent_path().c_str(),
                                 O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (folder.IsOpen()) ::fsync(folder.Descriptor());
    return MarkOf(StatusOf(file_, path));
  }

 private:
  int Open(const std::string& path) const {
    ::unlink(name_.c_str());
    const int descriptor =
        ::open(name_.c_str(), O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (descriptor < 0) {
      const int code = errno;
      Fail(code == EEXIST ? errors::FileAlreadyOpen : errors::BadFileMode, path,
           "no work file can be written beside it (" + std::generic_category().message(code) + ")");
    }
    return descriptor;
  }

  std::filesystem::path name_;
  OpenFile file_;
  bool renamed_ = false;
};

}  // namespace

std::optional<FileMark> CalendarFile::Mark() const {
  return MarkAt(path_);
}

CalendarFile::Replacement CalendarFile::Replace(
    const std::function<std::string(const std::string&)>& edit) const {
  constexpr int Attempts = 20;
  std::error_code code;
  const std::string target = std::filesystem::canonical(path_, code).string();
  if (code) Fail(path_, code.value());
  for (int attempt = 0; attempt < Attempts; ++attempt) {
    const OpenFile file = OpenLocked(target, options_.patience);
    const struct stat status = StatusOf(file, path_);
    const FileMark before = MarkOf(status);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > options_.largest) Fail(errors::BadFileMode, path_, "it is too large");
    const std::string bytes = ReadAll(file, path_, size);
    if (MarkAt(target) != before) continue;
    const std::string edited = edit(bytes);
    if (edited == bytes) return {before, before};
    WorkFile work(target);
    work.Fill(edited, status, path_);
    if (MarkAt(target) == before) return {before, work.MoveOver(target)};
  }
  Fail(errors::FileAlreadyOpen, path_, "another program keeps changing it");
}

}  // namespace velkor
