// calendar/ics/file/CalendarFile.cpp: lock, read, work file, look again, rename or write.
#include "calendar/ics/file/CalendarFile.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <map>
#include <string_view>
#include <system_error>
#include <thread>

#include "calendar/ics/file/FileAttributes.h"
#include "calendar/ics/file/SaveFaults.h"
#include "calendar/ics/file/SaveRecord.h"
#include "calendar/ics/file/ShortHash.h"
#include "values/Error.h"

namespace velkor {
namespace {

std::int64_t Nanoseconds(const timespec& time) {
  return std::int64_t{time.tv_sec} * 1'000'000'000 + time.tv_nsec;
}

FileMark MarkOf(const struct stat& status) {
  return {status.st_dev, status.st_ino, status.st_size, Nanoseconds(status.st_mtim),
          Nanoseconds(status.st_ctim)};
}

std::optional<FileMark> MarkAt(int folder, const std::string& name) {
  struct stat status {};
  if (::fstatat(folder, name.c_str(), &status, 0) != 0) return std::nullopt;
  return MarkOf(status);
}

/// The superuser may write everywhere; a file that nobody may write is still meant to stay.
bool MayBeWritten(int folder, const std::string& name, const struct stat& status) {
  return (status.st_mode & (S_IWUSR | S_IWGRP | S_IWOTH)) != 0 &&
         ::faccessat(folder, name.c_str(), W_OK, 0) == 0;
}

using TimePoint = std::chrono::steady_clock::time_point;

constexpr std::chrono::milliseconds Pause{10};

void PauseUntil(TimePoint deadline, const std::string& path) {
  if (std::chrono::steady_clock::now() >= deadline) {
    FailToSave(errors::FileAlreadyOpen, path, "another program holds it");
  }
  std::this_thread::sleep_for(Pause);
}

}  // namespace

/// Each folder's lock for as long as somebody holds it.
class FolderLocks {
 public:
  /// @param path  of the file, for messages
  std::shared_ptr<const OpenFile> Take(const std::filesystem::path& folder, const std::string& path,
                                       TimePoint deadline) {
    std::weak_ptr<const OpenFile>& known = held_[folder.string()];
    if (auto held = known.lock()) return held;
    auto taken = std::make_shared<const OpenFile>(
        ::open(folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
    if (!taken->IsOpen()) FailToSave(path, errno);
    while (!taken->Lock()) {
      if (errno != EWOULDBLOCK && errno != EINTR) FailToSave(path, errno);
      PauseUntil(deadline, path);
    }
    known = taken;
    return taken;
  }

 private:
  std::map<std::string, std::weak_ptr<const OpenFile>> held_;
};

std::shared_ptr<FolderLocks> MakeFolderLocks() {
  return std::make_shared<FolderLocks>();
}

/// Where a calendar lies, its folder locked against our other programs: the file may be replaced at
/// any time, and with it what a lock on it is good for, but not the folder. The file is reached
/// through the open folder only, so that a folder moved meanwhile is still the one that is locked.
class CalendarFile::LockedPlace {
 public:
  /// @param target  the canonical path of the calendar
  /// @param path    what messages call it
  LockedPlace(const std::filesystem::path& target, std::string path, FolderLocks& locks,
              TimePoint deadline)
      : path_(std::move(path)),
        name_(target.filename().string()),
        folder_(locks.Take(target.parent_path(), path_, deadline)) {}

  const std::string& Path() const { return path_; }
  const std::string& Name() const { return name_; }
  int Folder() const { return folder_->Descriptor(); }
  std::optional<FileMark> Mark() const { return MarkAt(Folder(), name_); }

  /// The file, once no other program holds a lock on it.
  OpenFile Open(TimePoint deadline) const {
    while (true) {
      OpenFile file(
          ::openat(Folder(), name_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
      if (!file.IsOpen()) FailToSave(path_, errno);
      const struct stat status = StatusOf(file, path_);
      if (!S_ISREG(status.st_mode))
        FailToSave(errors::BadFileName, path_, "it is no ordinary file");
      if (!MayBeWritten(Folder(), name_, status)) {
        FailToSave(errors::BadFileMode, path_, "it is write-protected");
      }
      // Some file systems in a network lock no file that is open for reading.
      const bool isHeld = !file.Lock() && errno == EWOULDBLOCK;
      const auto named = Mark();
      if (!isHeld && named && named->device == status.st_dev && named->file == status.st_ino) {
        return file;
      }
      PauseUntil(deadline, path_);
    }
  }

 private:
  std::string path_;
  std::string name_;
  std::shared_ptr<const OpenFile> folder_;
};

namespace {

/// A write sets both times to one; a file that was written elsewhere and renamed, whole, has the
/// later time of the renaming in its entry.
bool MayBeInWriting(const FileMark& mark) {
  constexpr std::chrono::milliseconds Quiet{50};
  const auto now = std::chrono::system_clock::now().time_since_epoch();
  const auto age = now - std::chrono::nanoseconds(mark.modified);
  return mark.modified == mark.changed && age >= std::chrono::nanoseconds(0) && age < Quiet;
}

/// A new file under a name of its own beside the calendar, deleted unless it was renamed. The name
/// is always the same for one calendar, whose place is locked, so that a run that was stopped
/// leaves no more than one.
class WorkFile {
 public:
  explicit WorkFile(const CalendarFile::LockedPlace& place)
      : place_(place), name_(".velkor-" + ShortHash(place.Name())), file_(Open()) {}
  ~WorkFile() {
    if (!renamed_) ::unlinkat(place_.Folder(), name_.c_str(), 0);
  }
  WorkFile(const WorkFile&) = delete;
  WorkFile& operator=(const WorkFile&) = delete;

  const OpenFile& File() const { return file_; }
  void Fill(std::string_view bytes) { WriteAll(file_, bytes, place_.Path()); }
  void MoveTo(const std::string& name) {
    if (::renameat(place_.Folder(), name_.c_str(), place_.Folder(), name.c_str()) != 0) {
      FailToSave(place_.Path(), errno);
    }
    renamed_ = true;
    ::fsync(place_.Folder());
  }

 private:
  int Open() const {
    ::unlinkat(place_.Folder(), name_.c_str(), 0);
    const int descriptor = ::openat(place_.Folder(), name_.c_str(),
                                    O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW | O_CLOEXEC, 0600);
    if (descriptor < 0) {
      const int code = errno;
      FailToSave(
          code == EEXIST ? errors::FileAlreadyOpen : errors::BadFileMode, place_.Path(),
          "no work file can be written beside it (" + std::generic_category().message(code) + ")");
    }
    return descriptor;
  }

  const CalendarFile::LockedPlace& place_;
  std::string name_;
  OpenFile file_;
  bool renamed_ = false;
};

std::filesystem::path TargetOf(const std::string& path) {
  std::error_code code;
  std::filesystem::path target = std::filesystem::canonical(path, code);
  if (code) FailToSave(path, code.value());
  return target;
}

SaveRecord RecordAt(const CalendarFile::LockedPlace& place) {
  return {place.Folder(), place.Name(), place.Path()};
}

/// Gives a file new bytes as long as its mark is `before`.
/// @return the mark it has then; none when it has another by now
std::optional<FileMark> Exchange(const CalendarFile::LockedPlace& place, const OpenFile& file,
                                 const FileMark& before, std::string_view oldBytes,
                                 std::string_view newBytes) {
  WorkFile work(place);
  const struct stat status = StatusOf(file, place.Path());
  const SaveRecord record = RecordAt(place);
  const bool replaces =
      status.st_nlink == 1 && CopyAttributes(file.Descriptor(), work.File().Descriptor());
  work.Fill(replaces ? newBytes : SaveRecord::Text(before.file, oldBytes, newBytes));
  if (place.Mark() != before) return std::nullopt;
  work.MoveTo(replaces ? place.Name() : record.Name());
  // Of the very file: its name may be another program's again.
  if (!record.Finish()) return std::nullopt;
  return MarkOf(StatusOf(replaces ? work.File() : file, place.Path()));
}

}  // namespace

std::optional<FileMark> CalendarFile::Mark() const {
  return MarkAt(AT_FDCWD, path_);
}

bool CalendarFile::IsProtected() const {
  struct stat status {};
  return ::stat(path_.c_str(), &status) == 0 && !MayBeWritten(AT_FDCWD, path_, status);
}

std::string CalendarFile::Read() const {
  const OpenFile file(::open(path_.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  if (!file.IsOpen()) FailToSave(path_, errno);
  const struct stat status = StatusOf(file, path_);
  const auto size = static_cast<std::size_t>(status.st_size);
  if (!S_ISREG(status.st_mode)) FailToSave(errors::BadFileName, path_, "it is no ordinary file");
  if (size > options_.largest) FailToSave(errors::BadFileMode, path_, "it is too large");
  return ReadAll(file, path_, size);
}

void CalendarFile::FinishStoppedSave() const {
  const std::filesystem::path target = TargetOf(path_);
  const OpenFile folder(::open(target.parent_path().c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC));
  if (!folder.IsOpen()) return;
  if (!SaveRecord(folder.Descriptor(), target.filename().string(), path_).Exists()) return;
  FolderLocks locks;
  const LockedPlace place(target, path_, locks,
                          std::chrono::steady_clock::now() + options_.patience);
  RecordAt(place).Finish();
}

std::shared_ptr<const CalendarFile::LockedPlace> CalendarFile::Lock() {
  if (auto held = place_.lock()) return held;
  if (!options_.locks) options_.locks = MakeFolderLocks();
  auto place =
      std::make_shared<const LockedPlace>(TargetOf(path_), path_, *options_.locks,
                                          std::chrono::steady_clock::now() + options_.patience);
  place_ = place;
  return place;
}

std::shared_ptr<const void> CalendarFile::Hold() {
  auto place = Lock();
  RecordAt(*place).Finish();
  return place;
}

CalendarFile::Replacement CalendarFile::Replace(
    const std::function<std::string(const std::string&)>& edit) {
  constexpr int Attempts = 20;
  constexpr std::chrono::seconds MostWaiting{1};
  const TimePoint deadline = std::chrono::steady_clock::now() + options_.patience;
  const auto locked = Lock();
  const LockedPlace& place = *locked;
  RecordAt(place).Finish();
  const TimePoint quietUntil = std::chrono::steady_clock::now() + MostWaiting;
  for (int attempt = 0; attempt < Attempts; ++attempt) {
    const OpenFile file = place.Open(deadline);
    struct stat status = StatusOf(file, path_);
    while (MarkOf(status) != written_ && MayBeInWriting(MarkOf(status)) &&
           std::chrono::steady_clock::now() < quietUntil) {
      std::this_thread::sleep_for(Pause);
      status = StatusOf(file, path_);
    }
    const FileMark before = MarkOf(status);
    const auto size = static_cast<std::size_t>(status.st_size);
    if (size > options_.largest) FailToSave(errors::BadFileMode, path_, "it is too large");
    const std::string bytes = ReadAll(file, path_, size);
    if (place.Mark() != before) continue;
    const std::string edited = edit(bytes);
    if (edited == bytes) return {before, before};
    const auto after = Exchange(place, file, before, bytes, edited);
    if (!after) continue;
    written_ = after;
    return {before, *after};
  }
  FailToSave(errors::FileAlreadyOpen, path_, "another program keeps changing it");
}

}  // namespace velkor
