// calendar/ics/file/OpenFile.cpp: reading and writing to the end, and which error is which fault.
#include "calendar/ics/file/OpenFile.h"

#include <unistd.h>

#include <cerrno>
#include <system_error>
#include <utility>

#include "platform/WholeFile.h"
#include "values/Error.h"

namespace velkor {

OpenFile::~OpenFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

OpenFile::OpenFile(OpenFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

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

std::string ReadAll(const OpenFile& file, const std::string& path, std::size_t size) {
  if (::lseek(file.Descriptor(), 0, SEEK_SET) != 0) FailToSave(path, errno);
  return ReadWhole(path, size, [&](char* place, std::size_t room) {
    ssize_t got = -1;
    do {
      got = ::read(file.Descriptor(), place, room);
    } while (got < 0 && errno == EINTR);
    if (got < 0) FailToSave(path, errno);
    return static_cast<std::size_t>(got);
  });
}

void WriteAll(const OpenFile& file, std::string_view bytes, const std::string& path) {
  while (!bytes.empty()) {
    const ssize_t written = ::write(file.Descriptor(), bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      FailToSave(path, errno);
    }
  }
}

}  // namespace velkor
