// platform/windows/system/WindowsFiles.cpp: exclusive writing, and replacing by rename.
#include "platform/windows/system/WindowsFiles.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <utility>
#include <vector>

#include "platform/WholeFile.h"
#include "platform/windows/system/Wide.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr std::size_t BufferSize = std::size_t{1} << 16;

/// An open file, closed at the end of its life.
class FileHandle {
 public:
  explicit FileHandle(HANDLE value) : value_(value) {}
  ~FileHandle() { Close(); }
  FileHandle(FileHandle&& other) noexcept
      : value_(std::exchange(other.value_, INVALID_HANDLE_VALUE)) {}
  FileHandle& operator=(FileHandle&& other) noexcept {
    std::swap(value_, other.value_);
    return *this;
  }

  bool IsOpen() const { return value_ != INVALID_HANDLE_VALUE; }
  HANDLE Value() const { return value_; }
  void Close() {
    if (IsOpen()) ::CloseHandle(std::exchange(value_, INVALID_HANDLE_VALUE));
  }

 private:
  HANDLE value_;
};

[[noreturn]] void Fail(const char* what, const std::string& path, DWORD code) {
  throw Error(FileErrorOf(code), std::string(what) + ' ' + path + ": " + SystemMessage(code));
}

std::wstring FullPath(const std::wstring& path) {
  std::wstring full(::GetFullPathNameW(path.c_str(), 0, nullptr, nullptr), L'\0');
  full.resize(
      ::GetFullPathNameW(path.c_str(), static_cast<DWORD>(full.size()), full.data(), nullptr));
  return full;
}

/// A link, or a file that has another name too.
bool IsOneOfSeveralNames(const std::wstring& path) {
  const FileHandle file(::CreateFileW(
      path.c_str(), FILE_READ_ATTRIBUTES, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
      nullptr, OPEN_EXISTING, FILE_FLAG_OPEN_REPARSE_POINT, nullptr));
  BY_HANDLE_FILE_INFORMATION about{};
  if (!file.IsOpen() || !::GetFileInformationByHandle(file.Value(), &about)) return false;
  return (about.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT) != 0 || about.nNumberOfLinks > 1;
}

/// Renames an open file over another; it stays open.
bool RenameOpen(const FileHandle& file, const std::wstring& path) {
  const std::wstring target = FullPath(path);
  const std::size_t bytes = target.size() * sizeof(wchar_t);
  // The system reads the name up to its NUL too, so nothing of the room may be left as it was
  // found.
  std::vector<std::uint64_t> room((sizeof(FILE_RENAME_INFO) + bytes) / sizeof(std::uint64_t) + 1);
  auto* const info = reinterpret_cast<FILE_RENAME_INFO*>(room.data());
  info->ReplaceIfExists = TRUE;
  info->FileNameLength = static_cast<DWORD>(bytes);
  std::memcpy(info->FileName, target.data(), bytes);
  return ::SetFileInformationByHandle(file.Value(), FileRenameInfo, info,
                                      static_cast<DWORD>(sizeof *info + bytes)) != 0;
}

class WindowsOutputFile : public OutputFile {
 public:
  WindowsOutputFile(FileHandle file, std::string path)
      : file_(std::move(file)), path_(std::move(path)) {}
  ~WindowsOutputFile() override {
    try {
      WriteOut();
    } catch (...) {
      // Whoever needs to know calls Flush. Lack of memory, as for the error's text, counts too.
    }
  }
  WindowsOutputFile(const WindowsOutputFile&) = delete;
  WindowsOutputFile& operator=(const WindowsOutputFile&) = delete;

  void Write(std::string_view bytes) override {
    buffer_ += bytes;
    if (buffer_.size() >= BufferSize) WriteOut();
  }
  void Flush() override {
    WriteOut();
    if (!::FlushFileBuffers(file_.Value())) Fail("Cannot write", path_, ::GetLastError());
  }
  bool MoveOver(const std::string& path) override {
    Flush();
    if (!RenameOpen(file_, ToWide(path)) && !RenameClosed(path)) return false;
    path_ = path;
    return true;
  }

 private:
  /// For systems that rename no open file; the new file is held again at once.
  bool RenameClosed(const std::string& path) {
    const DWORD code = ::GetLastError();
    if (code == ERROR_ACCESS_DENIED || code == ERROR_SHARING_VIOLATION) return false;
    file_.Close();
    const bool moved = ::MoveFileExW(ToWide(path_).c_str(), ToWide(path).c_str(),
                                     MOVEFILE_REPLACE_EXISTING | MOVEFILE_WRITE_THROUGH) != 0;
    file_ = FileHandle(::CreateFileW(ToWide(moved ? path : path_).c_str(), GENERIC_WRITE | DELETE,
                                     FILE_SHARE_DELETE, nullptr, OPEN_EXISTING,
                                     FILE_ATTRIBUTE_NORMAL, nullptr));
    return moved;
  }

  void WriteOut() {
    // Taken out first: what failed once is not written again.
    const std::string bytes = std::exchange(buffer_, {});
    std::string_view left = bytes;
    while (!left.empty()) {
      const auto portion = static_cast<DWORD>(std::min(left.size(), std::size_t{1} << 30));
      DWORD written = 0;
      if (!::WriteFile(file_.Value(), left.data(), portion, &written, nullptr)) {
        Fail("Cannot write", path_, ::GetLastError());
      }
      left.remove_prefix(written);
    }
  }

  FileHandle file_;
  std::string path_;
  std::string buffer_;
};

}  // namespace

long FileErrorOf(unsigned long code) {
  switch (code) {
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_FILENAME_EXCED_RANGE:
      return errors::BadFileName;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
      return errors::BadFileMode;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
      return errors::FileAlreadyOpen;
    case ERROR_NOT_READY:
    case ERROR_BAD_UNIT:
      return errors::DeviceUnavailable;
    case ERROR_FILE_NOT_FOUND:
    case ERROR_PATH_NOT_FOUND:
    case ERROR_BAD_NETPATH:
      return errors::PathNotFound;
    default:
      // A full disk counts as a device error, as the file error report words it.
      return errors::DeviceInputOutput;
  }
}

bool WindowsFiles::ReadInto(std::string& bytes, const std::string& path) {
  const FileHandle file(::CreateFileW(ToWide(path).c_str(), GENERIC_READ,
                                      FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE,
                                      nullptr, OPEN_EXISTING, FILE_FLAG_SEQUENTIAL_SCAN, nullptr));
  LARGE_INTEGER size{};
  if (!file.IsOpen() || ::GetFileType(file.Value()) != FILE_TYPE_DISK) return false;
  if (!::GetFileSizeEx(file.Value(), &size)) size.QuadPart = 0;
  ReadWholeInto(bytes, path, static_cast<std::uint64_t>(size.QuadPart),
                [&](char* place, std::size_t room) {
                  const auto portion = static_cast<DWORD>(std::min(room, std::size_t{1} << 30));
                  DWORD got = 0;
                  if (!::ReadFile(file.Value(), place, portion, &got, nullptr)) {
                    throw Error(errors::DeviceInputOutput,
                                "Cannot read " + path + ": " + SystemMessage(::GetLastError()));
                  }
                  return std::size_t{got};
                });
  return true;
}

bool WindowsFiles::Exists(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(ToWide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) == 0;
}

bool WindowsFiles::DirectoryExists(const std::string& path) {
  const DWORD attributes = ::GetFileAttributesW(ToWide(path).c_str());
  return attributes != INVALID_FILE_ATTRIBUTES && (attributes & FILE_ATTRIBUTE_DIRECTORY) != 0;
}

bool WindowsFiles::Delete(const std::string& path) {
  if (::DeleteFileW(ToWide(path).c_str())) return true;
  const DWORD code = ::GetLastError();
  return code == ERROR_FILE_NOT_FOUND || code == ERROR_PATH_NOT_FOUND;
}

std::unique_ptr<OutputFile> WindowsFiles::OpenForWriting(const std::string& path) {
  const std::wstring name = ToWide(path);
  if (IsOneOfSeveralNames(name) && !::DeleteFileW(name.c_str())) return nullptr;
  FileHandle file(::CreateFileW(name.c_str(), GENERIC_WRITE | DELETE, FILE_SHARE_DELETE, nullptr,
                                CREATE_ALWAYS, FILE_ATTRIBUTE_NORMAL, nullptr));
  if (!file.IsOpen()) return nullptr;
  return std::make_unique<WindowsOutputFile>(std::move(file), path);
}

}  // namespace velkor
