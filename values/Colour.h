// values/Colour.h: a 24-bit colour as the platform keeps it.
#pragma once

#include <cstdint>

namespace velkor {

/// A colour value 0x00BBGGRR in a signed 32-bit integer (255 is red, 65280 green). The high byte
/// is kept as it was read; only the low 24 bits are drawn.
struct Colour {
  std::int32_t value = 0;

  static constexpr Colour FromRgb(int red, int green, int blue) {
    return Colour{(red & 0xFF) | (green & 0xFF) << 8 | (blue & 0xFF) << 16};
  }
  constexpr int Red() const { return value & 0xFF; }
  constexpr int Green() const { return (value >> 8) & 0xFF; }
  constexpr int Blue() const { return (value >> 16) & 0xFF; }

  friend constexpr bool operator==(Colour, Colour) = default;
};

namespace colours {
inline constexpr Colour Black = Colour::FromRgb(0, 0, 0);
inline constexpr Colour White = Colour::FromRgb(255, 255, 255);
}  // namespace colours

}  // namespace velkor
