// calendar/ics/file/CalendarFile.h: a calendar's file on the disk: whether it changed, and its
// replacement.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <utility>

namespace velkor {

/// Tells one state of a file from another without reading it.
struct FileMark {
  std::uint64_t device = 0;
  std::uint64_t file = 0;
  std::int64_t size = 0;
  /// Nanoseconds since 1970 of the last change of the bytes, and of the file's entry.
  std::int64_t modified = 0;
  std::int64_t changed = 0;

  friend bool operator==(const FileMark&, const FileMark&) = default;
};

/// The locks on folders that several files of one owner share: each of them may be saved while
/// another of the same folder is held.
class FolderLocks;

struct CalendarFileOptions {
  /// How long to wait for another of our programs that is saving.
  std::chrono::milliseconds patience{3000};
  /// A larger file is not saved into.
  std::size_t largest = std::size_t{64} << 20;
  /// Null: the file's own lock.
  std::shared_ptr<FolderLocks> locks = {};
};

std::shared_ptr<FolderLocks> MakeFolderLocks();

/// A symbolic link is followed, not replaced.
class CalendarFile {
 public:
  /// The file's folder while it is locked; of the implementation.
  class LockedPlace;

  /// The state that was read and the one that was written; the same when nothing was.
  struct Replacement {
    FileMark before;
    FileMark after;
  };

  /// @param path  UTF-8, absolute
  explicit CalendarFile(std::string path, const CalendarFileOptions& options = {})
      : path_(std::move(path)), options_(options) {}

  const std::string& Path() const { return path_; }
  /// None when there is no such file.
  std::optional<FileMark> Mark() const;
  /// Whether a save would find the file write-protected; not so for one that is gone.
  bool IsProtected() const;
  /// All its bytes. Throws Error as Replace does.
  std::string Read() const;

  /// Reads the file, lets `edit` make the new bytes and replaces the file by them in one step:
  /// whoever looks, whenever the program is stopped, finds the old file or the new one, whole.
  /// Only one of our programs at a time does this in a folder. When another program changed the
  /// file meanwhile, `edit` is called again with the new bytes; one that seems to be writing into
  /// the file at this moment is waited for, up to a second. Permissions, access control lists and
  /// extended attributes are kept, the owner where the system lets us. A file that has other names
  /// as well (hard links), or attributes that no other file can be given, is written into; when the
  /// program is stopped then, FinishStoppedSave or the next call of this ends it. Throws what
  /// `edit` throws, and Error (a file error number) that names the file and what is wrong with it;
  /// the file is then as it was.
  Replacement Replace(const std::function<std::string(const std::string&)>& edit);

  /// Ends what a stopped save into the file has begun, once no other of our programs is saving.
  /// Throws Error as Replace does.
  void FinishStoppedSave() const;

  /// Keeps our other programs, and other objects of this one, from replacing files of the folder
  /// for as long as the answer is kept. Throws Error when another keeps them away for too long.
  [[nodiscard]] std::shared_ptr<const void> Hold();

 private:
  std::shared_ptr<const LockedPlace> Lock();

  std::string path_;
  CalendarFileOptions options_;
  /// While somebody holds it.
  std::weak_ptr<const LockedPlace> place_;
  /// What the last replacement left.
  std::optional<FileMark> written_;
};

}  // namespace velkor
