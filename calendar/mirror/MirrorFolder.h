// calendar/mirror/MirrorFolder.h: the files of a mirror: read whole, replaced in one step, locked
// against our other programs.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <initializer_list>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace velkor {

/// When the disk has what was written: before the call ends, or with the next Synchronise.
enum class Durability { Now, Later };

/// A folder of a mirror and the folders in it. Names are "state.json" or "pending/0a1b". Functions
/// that write make the folders that are missing. All throw Error (a file error number) that names
/// the file and what is wrong with it; it is then as it was.
class MirrorFolder {
 public:
  /// @param path      UTF-8, absolute
  /// @param patience  how long to wait for another of our programs that is writing
  MirrorFolder(std::string path, std::chrono::milliseconds patience)
      : path_(std::move(path)), patience_(patience) {}

  const std::string& Path() const { return path_; }

  /// Keeps our other programs, and other objects of this one, from writing for as long as the
  /// answer is kept. Never held while the network is waited for.
  [[nodiscard]] std::shared_ptr<const void> Lock() const;
  /// Locks for one task of minutes that nobody waits for; null while another has it.
  /// @param name  of a file that stands for the task
  [[nodiscard]] std::shared_ptr<const void> TryTask(const std::string& name) const;

  /// The first `most` bytes, or all; none for a file that is not there.
  std::optional<std::string> Read(const std::string& name,
                                  std::size_t most = static_cast<std::size_t>(-1)) const;
  std::optional<std::uint64_t> SizeOf(const std::string& name) const;
  /// Puts a whole file in the place of what is there, by one rename, under the lock: whoever looks,
  /// whenever the program is stopped, finds the old one or the new one.
  void Write(const std::string& name, std::string_view bytes, Durability when);
  /// One that is not there is no fault.
  void Remove(const std::string& name);
  /// Returns when the disk has all that was written later. Slow; without the lock.
  void Synchronise() const;

  /// The names in one of its folders, ascending, without that folder; none when it is not there.
  std::vector<std::string> Names(const std::string& folder) const;
  bool HasAny(const std::string& folder) const;
  /// Another text after each Write and Remove in these folders; costs one look at each.
  std::string MarkOf(std::initializer_list<std::string_view> folders) const;

 private:
  std::string PathOf(std::string_view name) const;
  void MakeFolderOf(const std::string& path) const;

  std::string path_;
  std::chrono::milliseconds patience_;
  /// While somebody holds it.
  mutable std::weak_ptr<const void> lock_;
};

}  // namespace velkor
