// calendar/ics/file/ShortHash.h: makes a short name from bytes, the same for the same bytes.
#pragma once

#include <string>
#include <string_view>

namespace velkor {

/// The first 16 bytes of the SHA-256 hash as 32 hexadecimal digits in lower case.
std::string ShortHash(std::string_view bytes);

}  // namespace velkor
