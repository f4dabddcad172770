// calendar/net/CopyFolder.h: the folder of a copy, held against our other programs while it is
// written.
#pragma once

#include <string>
#include <string_view>

#include "platform/posix/OpenFile.h"

namespace velkor {

class CopyFolder {
 public:
  /// Makes the folder, closed to others, waits for another of our programs that holds it.
  /// Throws Error that names the folder.
  explicit CopyFolder(std::string path);

  /// Puts a whole file in the place of the one with this name, by work file and rename, once the
  /// disk has it. Throws Error that names the file; it is then as it was.
  void Write(const std::string& name, std::string_view bytes) const;
  bool Has(const std::string& name) const;

 private:
  std::string path_;
  OpenFile held_;
};

}  // namespace velkor
