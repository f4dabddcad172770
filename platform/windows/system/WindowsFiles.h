// platform/windows/system/WindowsFiles.h: files by the Windows file functions.
#pragma once

#include "platform/System.h"

namespace velkor {

/// A writer shares its file with nobody, readers included, but the file may be deleted while it is
/// held: a writer that gives up does so.
class WindowsFiles : public Files {
 public:
  bool ReadInto(std::string& bytes, const std::string& path) override;
  bool Exists(const std::string& path) override;
  bool DirectoryExists(const std::string& path) override;
  bool Delete(const std::string& path) override;
  std::unique_ptr<OutputFile> OpenForWriting(const std::string& path) override;
};

/// The file error number (values/Error.h) that stands for a system error code.
long FileErrorOf(unsigned long code);

}  // namespace velkor
