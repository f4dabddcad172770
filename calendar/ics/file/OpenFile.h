// calendar/ics/file/OpenFile.h: an open file of the system, and the faults of saving into one.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velkor {

/// Closed at the end of its life.
class OpenFile {
 public:
  /// @param descriptor  below 0 for a file that could not be opened
  explicit OpenFile(int descriptor) : descriptor_(descriptor) {}
  ~OpenFile();
  OpenFile(OpenFile&& other) noexcept;
  OpenFile& operator=(OpenFile&&) = delete;

  bool IsOpen() const { return descriptor_ >= 0; }
  int Descriptor() const { return descriptor_; }

 private:
  int descriptor_;
};

/// Throws Error with a file error number: the calendar file could not be saved.
/// @param path  what the message calls the file
[[noreturn]] void FailToSave(long number, const std::string& path, const std::string& why);
/// @param code  of errno
[[noreturn]] void FailToSave(const std::string& path, int code);

/// All bytes of a file of about `size` bytes from its beginning. Throws as FailToSave does.
std::string ReadAll(const OpenFile& file, const std::string& path, std::size_t size);
/// Writes where the file stands. Throws as FailToSave does.
void WriteAll(const OpenFile& file, std::string_view bytes, const std::string& path);

}  // namespace velkor
