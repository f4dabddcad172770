// platform/posix/OpenFile.cpp: the system's calls, begun anew when a signal broke in.
#include "platform/posix/OpenFile.h"

#include <sys/file.h>
#include <unistd.h>

#include <cerrno>
#include <utility>

namespace velkor {

OpenFile::~OpenFile() {
  if (descriptor_ >= 0) ::close(descriptor_);
}

OpenFile::OpenFile(OpenFile&& other) noexcept : descriptor_(std::exchange(other.descriptor_, -1)) {}

std::optional<struct stat> OpenFile::Status() const {
  struct stat status {};
  return ::fstat(descriptor_, &status) == 0 ? std::optional(status) : std::nullopt;
}

bool OpenFile::Lock() const {
  return ::flock(descriptor_, LOCK_EX | LOCK_NB) == 0;
}

ssize_t OpenFile::ReadSome(char* place, std::size_t room) const {
  ssize_t got = -1;
  do {
    got = ::read(descriptor_, place, room);
  } while (got < 0 && errno == EINTR);
  return got;
}

bool OpenFile::Write(std::string_view bytes) const {
  while (!bytes.empty()) {
    const ssize_t written = ::write(descriptor_, bytes.data(), bytes.size());
    if (written >= 0) {
      bytes.remove_prefix(static_cast<std::size_t>(written));
    } else if (errno != EINTR) {
      return false;
    }
  }
  return true;
}

bool OpenFile::Synchronise() const {
  return ::fsync(descriptor_) == 0;
}

}  // namespace velkor
