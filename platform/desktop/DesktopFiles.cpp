// platform/desktop/DesktopFiles.cpp: locking before truncation, and replacing by rename.
#include "platform/desktop/DesktopFiles.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <filesystem>
#include <system_error>
#include <utility>

#include "platform/WholeFile.h"
#include "platform/posix/OpenFile.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr std::size_t BufferSize = std::size_t{1} << 16;

[[noreturn]] void Fail(const char* what, const std::string& path, int code) {
  throw Error(FileErrorOf(code),
              std::string(what) + ' ' + path + ": " + std::generic_category().message(code));
}

/// False when the path was given to another file, or to none, since it was opened.
bool StillNames(const std::string& path, const struct stat& opened) {
  struct stat named {};
  return ::stat(path.c_str(), &named) == 0 && opened.st_dev == named.st_dev &&
         opened.st_ino == named.st_ino;
}

bool IsLink(const std::string& path) {
  struct stat status {};
  return ::lstat(path.c_str(), &status) == 0 && S_ISLNK(status.st_mode);
}

/// True when a writer other than the caller holds the file of this name.
bool HeldByWriter(const std::string& path) {
  const OpenFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK));
  return file.IsOpen() && !file.Lock() && errno == EWOULDBLOCK;
}

/// A folder, a device or a pipe, at the end of links too: nothing that a file takes the place of.
bool IsNoFile(const std::string& path) {
  struct stat status {};
  return ::stat(path.c_str(), &status) == 0 && !S_ISREG(status.st_mode);
}

/// Makes a rename in this folder last. A folder that cannot be synchronised is left to the system.
void SynchroniseFolderOf(const std::string& path) {
  const std::string folder = std::filesystem::path(path).parent_path().string();
  OpenFile(::open(folder.empty() ? "." : folder.c_str(), O_RDONLY | O_DIRECTORY | O_CLOEXEC))
      .Synchronise();
}

class DesktopOutputFile : public OutputFile {
 public:
  DesktopOutputFile(OpenFile file, std::string path)
      : file_(std::move(file)), path_(std::move(path)) {}
  ~DesktopOutputFile() override {
    try {
      WriteOut();
    } catch (...) {
      // Whoever needs to know calls Flush. Lack of memory, as for the error's text, counts too.
    }
  }
  DesktopOutputFile(const DesktopOutputFile&) = delete;
  DesktopOutputFile& operator=(const DesktopOutputFile&) = delete;

  void Write(std::string_view bytes) override {
    buffer_ += bytes;
    if (buffer_.size() >= BufferSize) WriteOut();
  }
  void Flush() override {
    WriteOut();
    if (!file_.Synchronise()) Fail("Cannot write", path_, errno);
  }
  bool MoveOver(const std::string& path) override {
    Flush();
    if (IsNoFile(path) || HeldByWriter(path) || ::rename(path_.c_str(), path.c_str()) != 0)
      return false;
    path_ = path;
    SynchroniseFolderOf(path);
    return true;
  }

 private:
  void WriteOut() {
    // Taken out first: what failed once is not written again.
    const std::string bytes = std::exchange(buffer_, {});
    if (!file_.Write(bytes)) Fail("Cannot write", path_, errno);
  }

  OpenFile file_;
  std::string path_;
  std::string buffer_;
};

}  // namespace

long FileErrorOf(int code) {
  switch (code) {
    case ENAMETOOLONG:
    case EINVAL:
    case EILSEQ:
      return errors::BadFileName;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
      return errors::BadFileMode;
    case EBUSY:
    case ETXTBSY:
    case EWOULDBLOCK:
      return errors::FileAlreadyOpen;
    case ENODEV:
    case ENXIO:
      return errors::DeviceUnavailable;
    case ENOENT:
    case ENOTDIR:
    case ELOOP:
      return errors::PathNotFound;
    default:
      // A full disk counts as a device error, as the file error report words it.
      return errors::DeviceInputOutput;
  }
}

bool DesktopFiles::ReadInto(std::string& bytes, const std::string& path) {
  const OpenFile file(::open(path.c_str(), O_RDONLY | O_CLOEXEC | O_NONBLOCK | O_NOCTTY));
  const auto status = file.Status();
  if (!status || !S_ISREG(status->st_mode)) return false;
  ReadWholeInto(
      bytes, path, static_cast<std::uint64_t>(status->st_size), [&](char* place, std::size_t room) {
        const ssize_t got = file.ReadSome(place, room);
        if (got < 0) {
          throw Error(errors::DeviceInputOutput,
                      "Cannot read " + path + ": " + std::generic_category().message(errno));
        }
        return static_cast<std::size_t>(got);
      });
  return true;
}

bool DesktopFiles::Exists(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_regular_file(path, error);
}

bool DesktopFiles::DirectoryExists(const std::string& path) {
  std::error_code error;
  return std::filesystem::is_directory(path, error);
}

bool DesktopFiles::Delete(const std::string& path) {
  return ::unlink(path.c_str()) == 0 || errno == ENOENT;
}

std::unique_ptr<OutputFile> DesktopFiles::OpenForWriting(const std::string& path) {
  // Between opening and locking another writer may give the name to its own file; then that one is
  // opened. Whoever loses this often is being kept out.
  for (int attempt = 0; attempt < 10; ++attempt) {
    OpenFile file(::open(
        path.c_str(), O_WRONLY | O_CREAT | O_NOFOLLOW | O_CLOEXEC | O_NONBLOCK | O_NOCTTY, 0666));
    if (!file.IsOpen()) {
      if (!IsLink(path) || ::unlink(path.c_str()) != 0) return nullptr;
      continue;
    }
    const auto kind = file.Status();
    if (!kind || !S_ISREG(kind->st_mode) || !file.Lock()) return nullptr;
    const auto status = file.Status();
    if (!status || !StillNames(path, *status)) continue;
    if (status->st_nlink > 1) {
      if (::unlink(path.c_str()) != 0) return nullptr;
      continue;
    }
    if (::ftruncate(file.Descriptor(), 0) != 0) return nullptr;
    return std::make_unique<DesktopOutputFile>(std::move(file), path);
  }
  return nullptr;
}

}  // namespace velkor
