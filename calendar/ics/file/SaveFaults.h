// calendar/ics/file/SaveFaults.h: says what keeps a calendar file from being saved.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "platform/posix/OpenFile.h"

namespace velkor {

/// Throws Error with a file error number: the calendar file could not be saved.
/// @param path  what the message calls the file
[[noreturn]] void FailToSave(long number, const std::string& path, const std::string& why);
/// @param code  of errno
[[noreturn]] void FailToSave(const std::string& path, int code);

/// These throw as FailToSave does.
struct stat StatusOf(const OpenFile& file, const std::string& path);
/// All bytes of a file of about `size` bytes from its beginning.
std::string ReadAll(const OpenFile& file, const std::string& path, std::size_t size);
/// Writes where the file stands, and waits for the disk.
void WriteAll(const OpenFile& file, std::string_view bytes, const std::string& path);

}  // namespace velkor
