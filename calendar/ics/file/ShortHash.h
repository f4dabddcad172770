// calendar/ics/file/ShortHash.h: names for things that are known by their bytes.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

/// The first 16 bytes of the SHA-256 hash as 32 hexadecimal digits in lower case.
std::string ShortHash(std::string_view bytes);

}  // namespace velkor
