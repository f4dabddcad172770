// platform/posix/OpenFile.h: owns an open file of the system, and reads, writes and locks it.
#pragma once

#include <sys/stat.h>
#include <sys/types.h>

#include <cstddef>
#include <optional>
#include <string_view>

namespace velkor {

/// Closed at the end of its life, and unlocked with it. Each function that fails leaves the reason
/// in errno.
class OpenFile {
 public:
  /// @param descriptor  below 0 for a file that could not be opened
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ~OpenFile();
  OpenFile(OpenFile&& other) noexcept;
  OpenFile& operator=(OpenFile&&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }
  int Descriptor() const { return descriptor_; }

  std::optional<struct stat> Status() const;
  /// As flock(2) for a writer, without waiting: false with EWOULDBLOCK while another holds it.
  bool Lock() const;
  /// Puts up to `room` bytes at `place`; how many, 0 at the end, below 0 for a failure.
  ssize_t ReadSome(char* place, std::size_t room) const;
  bool Write(std::string_view bytes) const;
  /// Returns when the disk has what was written.
  bool Synchronise() const;

 private:
  int descriptor_;
};

}  // namespace velkor
