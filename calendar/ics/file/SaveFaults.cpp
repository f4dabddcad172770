// calendar/ics/file/SaveFaults.cpp: which error of the system is which fault of a save.
#include "calendar/ics/file/SaveFaults.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>

#include "platform/WholeFile.h"
#include "values/Error.h"

namespace velkor {

void FailToSave(long number, const std::string& path, const std::string& why) {
  throw Error(number, "The calendar file " + path + " could not be saved: " + why + ".",
              "Calendar");
}

void FailToSave(const std::string& path, int code) {
  const bool refused = code == EACCES || code == EPERM || code == EROFS;
  const long number = code == ENOENT ? errors::FileNotFound
                      : refused      ? errors::BadFileMode
                                     : errors::DeviceInputOutput;
  FailToSave(number, path, std::generic_category().message(code));
}

struct stat StatusOf(const OpenFile& file, const std::string& path) {
  const auto status = file.Status();
  if (!status) FailToSave(path, errno);
  return *status;
}

std::string ReadAll(const OpenFile& file, const std::string& path, std::size_t size) {
  if (::lseek(file.Descriptor(), 0, SEEK_SET) != 0) FailToSave(path, errno);
  return ReadWhole(path, size, [&](char* place, std::size_t room) {
    const ssize_t got = file.ReadSome(place, room);
    if (got < 0) FailToSave(path, errno);
    return static_cast<std::size_t>(got);
  });
}

void WriteAll(const OpenFile& file, std::string_view bytes, const std::string& path) {
  if (!file.Write(bytes) || !file.Synchronise()) FailToSave(path, errno);
}

}  // namespace velkor
