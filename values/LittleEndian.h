// values/LittleEndian.h: writes and reads whole numbers with their low byte first.
#pragma once

#include <concepts>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace velkor {

/// Appends as many bytes as the number's type has.
template <std::integral Number>
void AppendLittleEndian(std::string& bytes, Number number) {
  const auto value = static_cast<std::uint64_t>(number);
  for (std::size_t i = 0; i < sizeof number; ++i) bytes += static_cast<char>(value >> (8 * i));
}

/// @param bytes  at least as many as the number's type has; the first ones count
template <std::integral Number>
Number ReadLittleEndian(std::string_view bytes) {
  std::uint64_t value = 0;
  for (std::size_t i = sizeof(Number); i-- > 0;) {
    value = value << 8 | static_cast<unsigned char>(bytes[i]);
  }
  return static_cast<Number>(value);
}

}  // namespace velkor
