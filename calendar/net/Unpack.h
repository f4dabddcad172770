// calendar/net/Unpack.h: the bytes of a compressed body, bounded.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace velkor {

enum class UnpackEnd { Whole, TooLarge, Damaged };

/// @param packed   gzip (RFC 1952) or zlib (RFC 1950); what was cut short is damaged
/// @param largest  how many bytes may come out
/// @param bytes    gets them when they are whole
UnpackEnd Unpack(std::string_view packed, std::size_t largest, std::string& bytes);

}  // namespace velkor
