// platform/WholeFile.h: what every face does to read a file whole.
#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <new>
#include <stdexcept>
#include <string>

#include "platform/System.h"
#include "values/Error.h"

namespace velkor {

/// Puts all bytes up to the end of a file of about `size` bytes, which may grow meanwhile, into
/// `bytes`. `readSome(place, room)` puts up to `room` bytes at `place` and answers how many, 0 at
/// the end; of one that throws `bytes` has what came before.
/// Throws Error (DeviceInputOutput) with the path when the file exceeds Files::LargestFile or the
/// memory left; `bytes` is empty then.
template <typename ReadSome>
void ReadWholeInto(std::string& bytes, const std::string& path, std::uint64_t size,
                   const ReadSome& readSome) {
  constexpr std::size_t Growth = std::size_t{1} << 16;
  std::size_t length = 0;
  bytes.clear();
  try {
    // One byte more than the file has, so that its end is met without growing.
    std::uint64_t room = size + 1;
    while (size <= Files::LargestFile && length <= Files::LargestFile) {
      if (length == bytes.size()) {
        bytes.resize(static_cast<std::size_t>(std::min(room, Files::LargestFile + 1)));
      }
      const std::size_t got = readSome(bytes.data() + length, bytes.size() - length);
      if (got == 0) {
        bytes.resize(length);
        return;
      }
      length += got;
      room = length + length / 2 + Growth;
    }
  } catch (const std::bad_alloc&) {
    // Said below, with the file's name.
  } catch (const std::length_error&) {
    // The same: in 32 bits a text ends before a file may.
  } catch (const Error&) {
    bytes.resize(length);
    throw;
  }
  bytes = {};
  throw Error(errors::DeviceInputOutput, "Cannot read " + path + ": it is too large");
}

/// The same as its answer.
template <typename ReadSome>
std::string ReadWhole(const std::string& path, std::uint64_t size, const ReadSome& readSome) {
  std::string bytes;
  ReadWholeInto(bytes, path, size, readSome);
  return bytes;
}

}  // namespace velkor
