// calendar/mirror/MirrorFolder.cpp: lock, work file, rename; times of folders as marks.
#include "calendar/mirror/MirrorFolder.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <cerrno>
#include <ctime>
#include <filesystem>
#include <system_error>
#include <thread>

#include "calendar/ics/file/SaveFaults.h"
#include "values/Error.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;

OpenFile Opened(const std::string& path, int flags) {
  constexpr mode_t Mine = 0600;
  return OpenFile(::open(path.c_str(), flags | O_CLOEXEC | O_NOCTTY, Mine));
}

[[noreturn]] void FailToRead(const std::string& path, const std::string& why) {
  throw Error(errors::DeviceInputOutput, "The file " + path + " could not be read: " + why + ".",
              "Calendar");
}

/// As fine as the system's clock is; what the system itself notes may be the same for writes that
/// follow one another.
void TouchNow(const std::string& path) {
  timespec now{};
  ::clock_gettime(CLOCK_REALTIME, &now);
  const timespec times[2] = {now, now};
  ::utimensat(AT_FDCWD, path.c_str(), times, 0);
}

void SynchroniseFolder(const std::string& path) {
  const OpenFile folder = Opened(path, O_RDONLY | O_DIRECTORY);
  if (folder.IsOpen()) folder.Synchronise();
}

}  // namespace

std::string MirrorFolder::PathOf(std::string_view name) const {
  return (path_ + "/").append(name);
}

void MirrorFolder::MakeFolderOf(const std::string& path) const {
  std::error_code code;
  const bool isNew = !fs::exists(path_, code);
  fs::create_directories(fs::path(path).parent_path(), code);
  if (code) FailToSave(path, code.value());
  if (isNew) fs::permissions(path_, fs::perms::owner_all, code);
}

std::shared_ptr<const void> MirrorFolder::Lock() const {
  constexpr std::chrono::milliseconds Pause{5};
  if (auto held = lock_.lock()) return held;
  MakeFolderOf(PathOf("state.json"));
  auto folder = std::make_shared<const OpenFile>(Opened(path_, O_RDONLY | O_DIRECTORY));
  if (!folder->IsOpen()) FailToSave(path_, errno);
  const auto deadline = std::chrono::steady_clock::now() + patience_;
  while (!folder->Lock()) {
    if (errno != EWOULDBLOCK && errno != EINTR) FailToSave(path_, errno);
    if (std::chrono::steady_clock::now() >= deadline) {
      FailToSave(errors::FileAlreadyOpen, path_, "another program holds it");
    }
    std::this_thread::sleep_for(Pause);
  }
  lock_ = folder;
  return folder;
}

std::shared_ptr<const void> MirrorFolder::TryTask(const std::string& name) const {
  const std::string path = PathOf("." + name);
  MakeFolderOf(path);
  auto file = std::make_shared<const OpenFile>(Opened(path, O_RDWR | O_CREAT));
  if (!file->IsOpen()) FailToSave(path, errno);
  if (file->Lock()) return file;
  if (errno != EWOULDBLOCK) FailToSave(path, errno);
  return nullptr;
}

std::optional<std::string> MirrorFolder::Read(const std::string& name, std::size_t most) const {
  const std::string path = PathOf(name);
  const OpenFile file = Opened(path, O_RDONLY | O_NONBLOCK);
  if (!file.IsOpen() && errno == ENOENT) return std::nullopt;
  const auto status = file.IsOpen() ? file.Status() : std::nullopt;
  if (!status) FailToRead(path, std::generic_category().message(errno));
  if (!S_ISREG(status->st_mode)) FailToRead(path, "it is no ordinary file");
  std::string bytes(std::min(most, static_cast<std::size_t>(status->st_size)), '\0');
  std::size_t length = 0;
  while (length < bytes.size()) {
    const ssize_t got = file.ReadSome(bytes.data() + length, bytes.size() - length);
    if (got < 0) FailToRead(path, std::generic_category().message(errno));
    if (got == 0) break;
    length += static_cast<std::size_t>(got);
  }
  bytes.resize(length);
  return bytes;
}

std::optional<std::uint64_t> MirrorFolder::SizeOf(const std::string& name) const {
  std::error_code code;
  const auto size = fs::file_size(PathOf(name), code);
  return code ? std::nullopt : std::optional<std::uint64_t>(size);
}

void MirrorFolder::Write(const std::string& name, std::string_view bytes, Durability when) {
  const std::string path = PathOf(name);
  const std::string work = PathOf(".work");
  const auto lock = Lock();
  MakeFolderOf(path);
  const auto fail = [&](int code) {
    ::unlink(work.c_str());
    FailToSave(path, code);
  };
  // A run that was stopped may have left its own.
  ::unlink(work.c_str());
  const OpenFile file = Opened(work, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW);
  if (!file.IsOpen()) FailToSave(path, errno);
  if (!file.Write(bytes)) fail(errno);
  if (when == Durability::Now && !file.Synchronise()) fail(errno);
  if (::rename(work.c_str(), path.c_str()) != 0) fail(errno);
  const std::string folder = fs::path(path).parent_path();
  if (when == Durability::Now) SynchroniseFolder(folder);
  TouchNow(folder);
}

void MirrorFolder::Remove(const std::string& name) {
  const std::string path = PathOf(name);
  const auto lock = Lock();
  if (::unlink(path.c_str()) != 0) {
    if (errno == ENOENT || errno == ENOTDIR) return;
    FailToSave(path, errno);
  }
  TouchNow(fs::path(path).parent_path());
}

void MirrorFolder::Synchronise() const {
  const OpenFile folder = Opened(path_, O_RDONLY | O_DIRECTORY);
  if (!folder.IsOpen() && errno == ENOENT) return;
  if (!folder.IsOpen() || ::syncfs(folder.Descriptor()) != 0) FailToSave(path_, errno);
}

std::vector<std::string> MirrorFolder::Names(const std::string& folder) const {
  const std::string path = PathOf(folder);
  std::vector<std::string> names;
  std::error_code code;
  for (fs::directory_iterator entry(path, code), end; !code && entry != end;
       entry.increment(code)) {
    std::string name = entry->path().filename().string();
    if (!name.starts_with('.')) names.push_back(std::move(name));
  }
  if (code && code != std::errc::no_such_file_or_directory) FailToRead(path, code.message());
  std::sort(names.begin(), names.end());
  return names;
}

bool MirrorFolder::HasAny(const std::string& folder) const {
  std::error_code code;
  const fs::directory_iterator entry(PathOf(folder), code);
  return !code && entry != fs::directory_iterator();
}

std::string MirrorFolder::MarkOf(std::initializer_list<std::string_view> folders) const {
  std::string mark;
  for (const std::string_view folder : folders) {
    struct stat status {};
    if (::stat(PathOf(folder).c_str(), &status) == 0) {
      mark.append(std::to_string(status.st_mtim.tv_sec)).append(".");
      mark.append(std::to_string(status.st_mtim.tv_nsec));
    }
    mark += ' ';
  }
  return mark;
}

}  // namespace velkor
