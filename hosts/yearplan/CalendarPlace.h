// hosts/yearplan/CalendarPlace.h: where the cache files of one calendar lie.
#pragma once

#include <string>
#include <string_view>

#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/headless/MemoryFiles.h"

namespace velkor {

/// The environment of a planner of one calendar: "TMP" is a folder of this calendar's own below
/// the private cache folder, so that two calendars never share a cache file. Where that cannot be
/// written it is a folder in memory, which CalendarFiles has. Made when it is first asked for, when
/// the folders of calendars that are gone are removed, too.
class CalendarEnvironment : public DesktopEnvironment {
 public:
  /// @param calendar  the file; empty for none, whose folder is the private cache folder itself
  explicit CalendarEnvironment(const std::string& calendar) : calendar_(calendar) {}

  std::string Variable(std::string_view name) override;
  /// Why the cache files are in memory, and which variable names their place; empty when they are
  /// on a disk.
  const std::string& Trouble();

 private:
  void Choose();
  std::string MakeFolder() const;

  std::string calendar_;
  /// Empty before it was chosen.
  std::string folder_;
  std::string trouble_;
};

/// Files of the system, and those of the folder in memory.
class CalendarFiles : public Files {
 public:
  /// No path on a disk that this product makes begins so.
  static constexpr std::string_view MemoryFolder = "memory:";

  bool ReadInto(std::string& bytes, const std::string& path) override {
    return Of(path).ReadInto(bytes, path);
  }
  bool Exists(const std::string& path) override { return Of(path).Exists(path); }
  bool DirectoryExists(const std::string& path) override { return Of(path).DirectoryExists(path); }
  bool Delete(const std::string& path) override { return Of(path).Delete(path); }
  std::unique_ptr<OutputFile> OpenForWriting(const std::string& path) override {
    return Of(path).OpenForWriting(path);
  }

 private:
  Files& Of(const std::string& path) {
    if (path.starts_with(MemoryFolder)) return memory_;
    return disk_;
  }

  DesktopFiles disk_;
  MemoryFiles memory_;
};

}  // namespace velkor
