// platform/headless/MemoryFiles.h: files in memory that fail when told to.
#pragma once

#include <map>
#include <set>

#include "platform/System.h"
#include "values/Error.h"

namespace velkor {

/// Files by their path, whatever folders exist. Outlives the files that it opened.
class MemoryFiles : public Files {
 public:
  /// What goes wrong; sets of paths, the target's for `replace`.
  struct Failures {
    std::set<std::string, std::less<>> open, replace, remove;
    /// Reading the file fails after so many bytes.
    std::map<std::string, std::size_t, std::less<>> readAfter;
    /// Writing stops after so many more bytes, over all files, with `writeError`.
    std::optional<std::size_t> writeAfter;
    long writeError = errors::DeviceInputOutput;
  };

  Failures fail;
  std::map<std::string, std::string, std::less<>> contents;
  std::set<std::string, std::less<>> directories;

  bool ReadInto(std::string& bytes, const std::string& path) override;
  bool Exists(const std::string& path) override { return contents.contains(path); }
  bool DirectoryExists(const std::string& path) override { return directories.contains(path); }
  bool Delete(const std::string& path) override;
  std::unique_ptr<OutputFile> OpenForWriting(const std::string& path) override;

  /// Paths that a writer holds.
  const std::set<std::string, std::less<>>& Held() const { return held_; }

 private:
  class Output;

  std::set<std::string, std::less<>> held_;
};

}  // namespace velkor
