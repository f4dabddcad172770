// platform/System.h: the clock, the user's desktop, the environment and the file system.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>

#include "values/Date.h"

namespace velkor {

class Clock {
 public:
  virtual ~Clock() = default;
  /// Local wall-clock time.
  virtual Date Now() = 0;
};

/// The user's desktop around the control, on the user-interface thread.
class Shell {
 public:
  virtual ~Shell() = default;
  /// Processes the messages that wait, timers and completions among them, and returns; waits a
  /// few milliseconds at most when there are none.
  virtual void ProcessMessages() = 0;
  /// Shows the wait pointer, or the normal one again; calls nest.
  virtual void SetWaitPointer(bool wait) = 0;
  /// The sound for a key that is refused.
  virtual void Beep() = 0;
  /// Opens a web page or a local page in the user's browser.
  virtual void OpenPage(const std::string& address) = 0;
};

class Environment {
 public:
  virtual ~Environment() = default;
  /// Value of an environment variable; empty when it is not set. Off Windows the face answers
  /// "TMP" with its private cache folder and "USERNAME" with the name of the login.
  virtual std::string Variable(std::string_view name) = 0;
  /// What stands between the components of a path: a backslash on Windows, else a slash.
  virtual char PathSeparator() const = 0;
};

/// A file open for writing, held against every other writer until it is destroyed. Closed without
/// MoveOver, it stays under its own name.
class OutputFile {
 public:
  virtual ~OutputFile() = default;
  /// Appends bytes; small pieces are gathered before they go out. Throws Error with a file error
  /// number.
  virtual void Write(std::string_view bytes) = 0;
  /// Writes out what is buffered. Throws Error with a file error number, a full disk included.
  virtual void Flush() = 0;
  /// Flushes, then gives the file another name, replacing what has that name in one step: whoever
  /// looks sees the old file or the new one, whole. No writing after this.
  /// @return false when the old file could not be replaced or is no file on a disk; both then stay
  ///         as they were
  virtual bool MoveOver(const std::string& path) = 0;
};

/// Paths are UTF-8.
class Files {
 public:
  virtual ~Files() = default;
  /// In bytes; a larger file is not read.
  static constexpr std::uint64_t LargestFile = std::uint64_t{1} << 31;

  /// The whole file; none when it is absent, cannot be opened or is no file on a disk (a pipe, a
  /// device). Throws Error (DeviceInputOutput) when reading fails half-way, and for a file larger
  /// than LargestFile or the memory left.
  std::optional<std::string> Read(const std::string& path) {
    std::string bytes;
    return ReadInto(bytes, path) ? std::optional(std::move(bytes)) : std::nullopt;
  }
  /// The same; false for none. Where reading fails half-way, `bytes` has what came before.
  virtual bool ReadInto(std::string& bytes, const std::string& path) = 0;
  /// False for what is no file on a disk, so that nobody deletes a device to write in its place.
  virtual bool Exists(const std::string& path) = 0;
  virtual bool DirectoryExists(const std::string& path) = 0;
  /// @return false when the file could not be deleted; true also when there was none
  virtual bool Delete(const std::string& path) = 0;
  /// Opens an empty file in the place of one, or of a link, whose target stays as it was; null when
  /// it cannot be opened or another writer holds it.
  virtual std::unique_ptr<OutputFile> OpenForWriting(const std::string& path) = 0;
};

}  // namespace velkor
