// platform/desktop/DesktopFiles.h: files of a POSIX system.
#pragma once

#include "platform/System.h"

namespace velkor {

/// A writer holds its file by an advisory lock (flock), so writers of this product exclude each
/// other while readers see the file at any time. New files are for whom the user's umask
/// says, as an export that is to be shared; cache files are kept from others by their folder (mode
/// 700).
class DesktopFiles : public Files {
 public:
  bool ReadInto(std::string& bytes, const std::string& path) override;
  bool Exists(const std::string& path) override;
  bool DirectoryExists(const std::string& path) override;
  bool Delete(const std::string& path) override;
  std::unique_ptr<OutputFile> OpenForWriting(const std::string& path) override;
};

/// The file error number (values/Error.h) that stands for a code of errno.
long FileErrorOf(int code);

}  // namespace velkor
