// support/CodePage1252.cpp: the table of code page 1252, and runs of ASCII copied whole.
#include "support/CodePage1252.h"

#include <algorithm>
#include <array>

#include "values/Text.h"

namespace velkor {
namespace {

/// Characters of the bytes 80 to 9F (hexadecimal); all other bytes are their own character.
constexpr std::array<char16_t, 32> Middle = {
    0x20AC, 0x0081, 0x201A, 0x0192, 0x201E, 0x2026, 0x2020, 0x2021, 0x02C6, 0x2030, 0x0160,
    0x2039, 0x0152, 0x008D, 0x017D, 0x008F, 0x0090, 0x2018, 0x2019, 0x201C, 0x201D, 0x2022,
    0x2013, 0x2014, 0x02DC, 0x2122, 0x0161, 0x203A, 0x0153, 0x009D, 0x017E, 0x0178};

char ByteOf(char32_t character) {
  if (character < 0x80 || (character >= 0xA0 && character <= 0xFF)) {
    return static_cast<char>(character);
  }
  const auto* const at = std::find(Middle.begin(), Middle.end(), character);
  return at == Middle.end() ? '?' : static_cast<char>(0x80 + (at - Middle.begin()));
}

/// Copies ASCII and hands every other beginning of `rest` to `convert`, which takes from it.
template <typename Convert>
std::string ConvertRuns(std::string_view rest, Convert&& convert) {
  std::string result;
  result.reserve(rest.size());
  while (true) {
    const std::size_t ascii = AsciiLength(rest);
    result.append(rest.substr(0, ascii));
    rest.remove_prefix(ascii);
    if (rest.empty()) return result;
    convert(rest, result);
  }
}

}  // namespace

std::string ToCodePage1252(std::string_view utf8) {
  return ConvertRuns(utf8, [](std::string_view& rest, std::string& result) {
    result.push_back(ByteOf(TakeCharacter(rest)));
  });
}

std::string FromCodePage1252(std::string_view bytes) {
  return ConvertRuns(bytes, [](std::string_view& rest, std::string& result) {
    const auto byte = static_cast<unsigned char>(rest.front());
    rest.remove_prefix(1);
    AppendCharacter(result, byte < 0xA0 ? Middle[byte - 0x80U] : byte);
  });
}

}  // namespace velkor
