// values/Text.cpp: splitting, UTF-8 and case-insensitive order.
#include "values/Text.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstring>

namespace velkor {
namespace {

constexpr char32_t ReplacementCharacter = 0xFFFD;

/// Length that a first byte announces; 0 for a byte that begins nothing.
int SequenceLength(unsigned char first) {
  if (first < 0x80) return 1;
  if (first >= 0xC2 && first <= 0xDF) return 2;
  if (first >= 0xE0 && first <= 0xEF) return 3;
  if (first >= 0xF0 && first <= 0xF4) return 4;
  return 0;
}

bool IsSurrogate(char32_t c) {
  return c >= 0xD800 && c <= 0xDFFF;
}

/// The lower-case form of a letter, for the scripts whose pairs stand at fixed distances.
char32_t LowerCase(char32_t c) {
  if (c >= 'A' && c <= 'Z') return c + 32;
  if (c < 0xC0) return c;
  if (c <= 0xDE) return c == 0xD7 ? c : c + 32;
  if (c >= 0x100 && c <= 0x17F) {
    if (c == 0x130 || c == 0x131 || c == 0x138 || c == 0x149 || c == 0x17F) return c;
    if (c == 0x178) return 0xFF;
    const bool upperIsOdd = (c >= 0x139 && c <= 0x148) || c >= 0x179;
    return (c % 2 == 1) == upperIsOdd ? c + 1 : c;
  }
  if (c >= 0x391 && c <= 0x3A9) return c + 32;
  if (c >= 0x410 && c <= 0x42F) return c + 32;
  if (c >= 0x400 && c <= 0x40F) return c + 80;
  return c;
}

}  // namespace

bool SameName(std::string_view a, std::string_view b) {
  return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                    [](char x, char y) { return Upper(x) == Upper(y); });
}

std::vector<std::string> Split(std::string_view text, std::string_view separator) {
  std::vector<std::string> pieces;
  ForEachPiece(text, separator, [&](std::string_view piece) {
    pieces.emplace_back(piece);
    return true;
  });
  return pieces;
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to) {
  std::string result;
  while (true) {
    const std::size_t at = from.empty() ? std::string_view::npos : text.find(from);
    result += text.substr(0, at);
    if (at == std::string_view::npos) return result;
    result += to;
    text.remove_prefix(at + from.size());
  }
}

std::optional<long long> ParseInteger(std::string_view text) {
  if (text.starts_with('+') && !text.starts_with("+-")) text.remove_prefix(1);
  long long value = 0;
  const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
  if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
  return value;
}

std::size_t AsciiLength(std::string_view text) {
  std::size_t at = 0;
  for (; at + 8 <= text.size(); at += 8) {
    std::uint64_t eight = 0;
    std::memcpy(&eight, text.data() + at, 8);
    if ((eight & 0x8080808080808080U) != 0) break;
  }
  while (at < text.size() && static_cast<unsigned char>(text[at]) < 0x80) ++at;
  return at;
}

char32_t TakeCharacter(std::string_view& text) {
  const auto byteAt = [&](int i) { return static_cast<unsigned char>(text[std::size_t(i)]); };
  const int length = SequenceLength(byteAt(0));
  if (length == 1) {
    const char32_t c = byteAt(0);
    text.remove_prefix(1);
    return c;
  }
  if (length == 0 || text.size() < std::size_t(length)) {
    text.remove_prefix(1);
    return ReplacementCharacter;
  }
  char32_t c = byteAt(0) & (0xFFU >> (length + 1));
  for (int i = 1; i < length; ++i) {
    if ((byteAt(i) & 0xC0) != 0x80) {
      text.remove_prefix(1);
      return ReplacementCharacter;
    }
    c = c << 6 | (byteAt(i) & 0x3FU);
  }
  const bool overlong = (length == 3 && c < 0x800) || (length == 4 && c < 0x10000);
  if (overlong || c > 0x10FFFF || IsSurrogate(c)) {
    text.remove_prefix(1);
    return ReplacementCharacter;
  }
  text.remove_prefix(std::size_t(length));
  return c;
}

std::size_t Utf16Length(std::string_view text) {
  constexpr char32_t LastOfOneUnit = 0xFFFF;
  std::size_t length = 0;
  while (!text.empty()) length += TakeCharacter(text) > LastOfOneUnit ? 2 : 1;
  return length;
}

void AppendCharacter(std::string& text, char32_t c) {
  if (c > 0x10FFFF || IsSurrogate(c)) c = ReplacementCharacter;
  const auto put = [&](char32_t byte) { text.push_back(static_cast<char>(byte)); };
  if (c < 0x80) {
    put(c);
  } else if (c < 0x800) {
    put(0xC0 | c >> 6);
    put(0x80 | (c & 0x3F));
  } else if (c < 0x10000) {
    put(0xE0 | c >> 12);
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  } else {
    put(0xF0 | c >> 18);
    put(0x80 | (c >> 12 & 0x3F));
    put(0x80 | (c >> 6 & 0x3F));
    put(0x80 | (c & 0x3F));
  }
}

std::string ValidUtf8(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (true) {
    const std::size_t ascii = AsciiLength(text);
    result.append(text.substr(0, ascii));
    text.remove_prefix(ascii);
    if (text.empty()) return result;
    AppendCharacter(result, TakeCharacter(text));
  }
}

std::string Printable(std::string_view text) {
  std::string result;
  result.reserve(text.size());
  while (!text.empty()) {
    const char32_t c = TakeCharacter(text);
    const bool directs = (c >= 0x202A && c <= 0x202E) || (c >= 0x2066 && c <= 0x2069);
    AppendCharacter(result, IsControl(c) || directs ? U' ' : c);
  }
  return result;
}

std::string_view CutAtCharacter(std::string_view text, std::size_t bytes) {
  if (text.size() <= bytes) return text;
  while (bytes > 0 && (static_cast<unsigned char>(text[bytes]) & 0xC0) == 0x80) --bytes;
  return text.substr(0, bytes);
}

int CompareText(std::string_view a, std::string_view b) {
  while (!a.empty() && !b.empty()) {
    const char32_t left = LowerCase(TakeCharacter(a));
    const char32_t right = LowerCase(TakeCharacter(b));
    if (left != right) return left < right ? -1 : 1;
  }
  return int(!a.empty()) - int(!b.empty());
}

}  // namespace velkor
