// values/Text.h: small helpers over UTF-8 text.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace velkor {

constexpr bool IsDigit(char c) {
  return c >= '0' && c <= '9';
}

/// An ASCII letter.
constexpr bool IsLetter(char c) {
  return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z');
}

/// With its ASCII letters in upper case.
constexpr char Upper(char c) {
  return c >= 'a' && c <= 'z' ? static_cast<char>(c - 'a' + 'A') : c;
}

/// Equal but for the case of ASCII letters.
bool SameName(std::string_view a, std::string_view b);

/// The text without its leading and trailing blanks (character 32 alone).
constexpr std::string_view Trim(std::string_view text) {
  while (text.starts_with(' ')) text.remove_prefix(1);
  while (text.ends_with(' ')) text.remove_suffix(1);
  return text;
}

/// The pieces of a text between separators; an empty text gives none. `separator` is not empty.
std::vector<std::string> Split(std::string_view text, std::string_view separator);

/// Calls `visit(piece)` for each piece as Split gives them, until one call returns false.
/// @return false when a call did
template <typename Visit>
bool ForEachPiece(std::string_view text, std::string_view separator, Visit&& visit) {
  if (text.empty()) return true;
  while (true) {
    const std::size_t at = text.find(separator);
    if (!visit(text.substr(0, at))) return false;
    if (at == std::string_view::npos) return true;
    text.remove_prefix(at + separator.size());
  }
}

std::string Replace(std::string_view text, std::string_view from, std::string_view to);

/// A whole decimal number with an optional sign, nothing around it; none on overflow.
std::optional<long long> ParseInteger(std::string_view text);

/// Bytes of ASCII that a text begins with.
std::size_t AsciiLength(std::string_view text);

/// Takes the next character off the front of a UTF-8 text; a byte that begins no valid sequence
/// counts as one character U+FFFD. `text` is not empty.
char32_t TakeCharacter(std::string_view& text);

/// Its length in UTF-16, as Windows, Outlook and their registries count a text.
std::size_t Utf16Length(std::string_view text);

/// Appends one character in UTF-8; what is no character is appended as U+FFFD.
void AppendCharacter(std::string& text, char32_t character);

/// The text with every invalid sequence replaced by U+FFFD.
std::string ValidUtf8(std::string_view text);

/// A character that draws nothing and may steer a terminal or break a line: those of ASCII, DEL,
/// U+0080 to U+009F, the separators of lines and paragraphs, and the two that turn every letter
/// round (U+202D, U+202E).
constexpr bool IsControl(char32_t c) {
  return c < 0x20 || (c >= 0x7F && c < 0xA0) || (c >= 0x2028 && c <= 0x2029) ||
         (c >= 0x202D && c <= 0x202E);
}

/// The text for a message or a terminal: valid UTF-8 on one line. Controls come out as blanks, and
/// with them all that embed or isolate a direction, which would reach beyond the text.
std::string Printable(std::string_view text);

/// The longest start of a UTF-8 text of at most `bytes` bytes that splits no character.
std::string_view CutAtCharacter(std::string_view text, std::size_t bytes);

/// Below, at or above 0 as `a` stands before, with or after `b` in case-insensitive text order:
/// characters in the order of their lower-case forms, for Latin, Greek and Cyrillic letters.
int CompareText(std::string_view a, std::string_view b);

}  // namespace velkor
