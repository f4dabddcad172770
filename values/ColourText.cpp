// values/ColourText.cpp: writes colours as six hexadecimal digits, red first, and reads them.
#include "values/ColourText.h"

#include <charconv>
#include <cstddef>
#include <system_error>

namespace velkor {
namespace {

constexpr std::size_t Length = 6;
constexpr int Hexadecimal = 16;

}  // namespace

std::string ToHex(Colour colour) {
  constexpr std::string_view Digits = "0123456789ABCDEF";
  std::string text;
  for (const int part : {colour.Red(), colour.Green(), colour.Blue()}) {
    text += Digits[static_cast<std::size_t>(part / Hexadecimal)];
    text += Digits[static_cast<std::size_t>(part % Hexadecimal)];
  }
  return text;
}

std::optional<Colour> ColourOfHex(std::string_view text) {
  unsigned value = 0;
  const char* const end = text.data() + text.size();
  const auto [read, fault] = std::from_chars(text.data(), end, value, Hexadecimal);
  if (text.size() != Length || fault != std::errc() || read != end) return std::nullopt;
  return Colour::FromRgb(static_cast<int>(value >> 16), static_cast<int>(value >> 8),
                         static_cast<int>(value));
}

}  // namespace velkor
