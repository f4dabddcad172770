// calendar/ics/read/IcsPlainText.cpp: from UTF-16 and CR to UTF-8 and LF, and back.
#include "calendar/ics/read/IcsPlainText.h"

#include <algorithm>
#include <utility>

#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

using namespace std::string_view_literals;

constexpr char32_t Replacement = 0xFFFD;

std::string FromUtf16(std::string_view bytes, bool bigEndian) {
  std::string text;
  text.reserve(bytes.size());
  const auto unit = [&](std::size_t at) {
    const auto first = static_cast<unsigned char>(bytes[at]);
    const auto second = static_cast<unsigned char>(bytes[at + 1]);
    return static_cast<char32_t>(bigEndian ? first << 8 | second : second << 8 | first);
  };
  for (std::size_t at = 0; at + 1 < bytes.size(); at += 2) {
    char32_t character = unit(at);
    if (character >= 0xD800 && character < 0xDC00 && at + 3 < bytes.size()) {
      const char32_t low = unit(at + 2);
      if (low >= 0xDC00 && low < 0xE000) {
        character = 0x10000 + ((character - 0xD800) << 10) + (low - 0xDC00);
        at += 2;
      }
    }
    AppendCharacter(text, character);
  }
  if (bytes.size() % 2 != 0) AppendCharacter(text, Replacement);
  return text;
}

std::string ToUtf16(std::string_view text, bool bigEndian) {
  std::string bytes;
  bytes.reserve(text.size() * 2);
  const auto put = [&](char32_t unit) {
    const char high = static_cast<char>(unit >> 8 & 0xFF);
    const char low = static_cast<char>(unit & 0xFF);
    bytes += bigEndian ? high : low;
    bytes += bigEndian ? low : high;
  };
  while (!text.empty()) {
    const char32_t character = TakeCharacter(text);
    if (character >= 0x10000) {
      put(0xD800 + ((character - 0x10000) >> 10));
      put(0xDC00 + ((character - 0x10000) & 0x3FF));
    } else {
      put(character);
    }
  }
  return bytes;
}

/// UTF-16 without a mark, as it shows in its first two letters.
/// @param high  where the NUL stands in each: 0 or 1
bool HasNulBeside(std::string_view bytes, std::size_t high) {
  if (bytes.size() < 4) return false;
  const auto isLetter = [&](std::size_t at) {
    return bytes[at + high] == '\0' && bytes[at + 1 - high] != '\0';
  };
  return isLetter(0) && isLetter(2);
}

}  // namespace

IcsPlainText::IcsPlainText(std::string_view bytes, const std::string& name)
    : bytes_(bytes), name_(name) {
  if (bytes.starts_with("\xFF\xFE\0\0"sv) || bytes.starts_with("\0\0\xFE\xFF"sv)) {
    throw Error(errors::CalendarFailed,
                "The calendar file " + name + " is written in UTF-32, which is not read.",
                "Calendar");
  }
  if (bytes.starts_with("\xFF\xFE"sv) || HasNulBeside(bytes, 1)) units_ = Units::LittleEndian;
  if (bytes.starts_with("\xFE\xFF"sv) || HasNulBeside(bytes, 0)) units_ = Units::BigEndian;
  if (units_ != Units::Bytes) converted_ = FromUtf16(bytes, units_ == Units::BigEndian);
  TakeReturns();
}

void IcsPlainText::TakeReturns() {
  std::string_view lines = Text();
  if (lines.ends_with('\n')) lines.remove_suffix(lines.ends_with("\r\n") ? 2 : 1);
  const bool hasFeed = lines.find('\n') != std::string_view::npos;
  returns_ = !hasFeed && lines.find('\r') != std::string_view::npos;
  if (!returns_) return;
  lastEnd_ = Text().substr(lines.size());
  std::string text(lines);
  std::replace(text.begin(), text.end(), '\r', '\n');
  if (!lastEnd_.empty()) text += '\n';
  converted_ = std::move(text);
}

std::string IcsPlainText::WithText(std::string text) const {
  if (!converted_) return text;
  if (Restored(*converted_) != bytes_) {
    throw Error(errors::CalendarFailed,
                "The calendar file " + name_ +
                    " is broken UTF-16, of which a save would lose bytes; nothing was saved.",
                "Calendar");
  }
  return Restored(std::move(text));
}

std::string IcsPlainText::Restored(std::string text) const {
  if (returns_) {
    std::replace(text.begin(), text.end(), '\n', '\r');
    if (!lastEnd_.empty() && text.ends_with('\r')) text.replace(text.size() - 1, 1, lastEnd_);
  }
  return units_ == Units::Bytes ? text : ToUtf16(text, units_ == Units::BigEndian);
}

}  // namespace velkor
