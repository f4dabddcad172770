// calendar/ics/read/IcsValues.cpp: reading text in its encodings, times and durations.
#include "calendar/ics/read/IcsValues.h"

#include <iconv.h>
#include <libical/ical.h>

#include <algorithm>

#include "calendar/CalendarItem.h"
#include "support/CodePage1252.h"
#include "values/DateDigits.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// A value without its backslashes.
std::string Unescaped(std::string_view value) {
  std::string text;
  text.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool escape = value[i] == '\\' && i + 1 < value.size();
    if (!escape) {
      text += value[i];
    } else if (const char next = value[++i]; next == 'n' || next == 'N') {
      text += '\n';
    } else if (next == '\\' || next == ';' || next == ',' || next == ':' || next == '"') {
      text += next;
    } else {
      text += '\\';
      text += next;
    }
  }
  return text;
}

std::optional<int> HexDigit(char c) {
  if (IsDigit(c)) return c - '0';
  const char upper = Upper(c);
  return upper >= 'A' && upper <= 'F' ? std::optional(upper - 'A' + 10) : std::nullopt;
}

/// RFC 2045 section 6.7; an equals sign that encodes nothing stays, but for one at the end.
std::string FromQuotedPrintable(std::string_view value) {
  if (value.ends_with('=')) value.remove_suffix(1);
  std::string bytes;
  bytes.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool encodes = value[i] == '=' && i + 2 < value.size();
    const auto high = encodes ? HexDigit(value[i + 1]) : std::nullopt;
    const auto low = high ? HexDigit(value[i + 2]) : std::nullopt;
    if (low) i += 2;
    bytes += low ? static_cast<char>(*high * 16 + *low) : value[i];
  }
  return bytes;
}

/// Bytes of a character set that the C library knows by this name, as UTF-8; none for other names
/// and for bytes that are no text in it.
std::optional<std::string> FromCharset(std::string_view bytes, std::string_view charset) {
  constexpr std::size_t LongestName = 40;
  const bool isName = !charset.empty() && charset.size() <= LongestName &&
                      std::all_of(charset.begin(), charset.end(), [](char c) {
                        return IsLetter(c) || IsDigit(c) || c == '-' || c == '_' || c == ':';
                      });
  if (!isName) return std::nullopt;
  // What calls itself Latin-1 is Windows-1252 more often than not, and the same where it is not.
  if (SameName(charset, "ISO-8859-1") || SameName(charset, "US-ASCII")) {
    return FromCodePage1252(bytes);
  }
  const iconv_t converter = iconv_open("UTF-8", std::string(charset).c_str());
  if (converter == iconv_t(-1)) return std::nullopt;
  // No character of any set takes more than four bytes of UTF-8 for one of its own.
  std::string from(bytes);
  std::string text(bytes.size() * 4 + 4, '\0');
  char* in = from.data();
  char* out = text.data();
  std::size_t inLeft = from.size();
  std::size_t outLeft = text.size();
  const bool whole = iconv(converter, &in, &inLeft, &out, &outLeft) != std::size_t(-1) &&
                     iconv(converter, nullptr, nullptr, &out, &outLeft) != std::size_t(-1);
  iconv_close(converter);
  if (!whole) return std::nullopt;
  text.resize(text.size() - outLeft);
  return text;
}

/// A value of this property, or a part of it.
std::string Decoded(std::string_view value, const IcsProperty& property) {
  const bool quotedPrintable = property.IsQuotedPrintable();
  // In quoted-printable text the escapes are around the encoding, elsewhere they are text.
  const std::string bytes =
      quotedPrintable ? FromQuotedPrintable(Unescaped(value)) : std::string(value);
  const auto charset = property.Parameter("CHARSET");
  auto text = charset ? FromCharset(bytes, *charset) : std::nullopt;
  if (!text) text = DecodeBytes(bytes);
  return quotedPrintable ? *text : Unescaped(*text);
}

}  // namespace

std::optional<IcsTimeText> ReadTimeText(std::string_view value) {
  value = Trim(value);
  IcsTimeText time;
  if (!value.empty() && (value.back() == 'Z' || value.back() == 'z')) {
    time.isUtc = true;
    value.remove_suffix(1);
  }
  time.isDate = value.size() == 8 && !time.isUtc;
  const bool timed = value.size() == 15 && (value[8] == 'T' || value[8] == 't');
  if (!time.isDate && !timed) return std::nullopt;
  const auto date = DigitsOf(value.substr(0, 8));
  if (!date) return std::nullopt;
  const auto day = ExistingDate({*date / 10'000, *date / 100 % 100, *date % 100});
  if (!day) return std::nullopt;
  time.wall = day->Seconds();
  if (timed) {
    const auto clock = DigitsOf(value.substr(9));
    if (!clock) return std::nullopt;
    const int hour = *clock / 10'000;
    const int minute = *clock / 100 % 100;
    const int second = *clock % 100;
    if (hour > 23 || minute > 59 || second > 60) return std::nullopt;
    // A leap second is shown as the one before it.
    time.wall += hour * 3600 + minute * 60 + std::min(second, 59);
  }
  return time;
}

std::optional<IcsDuration> ReadDuration(std::string_view value) {
  constexpr std::size_t Longest = 40;
  constexpr std::size_t LongestNumber = 7;
  value = Trim(value);
  if (value.empty() || value.size() > Longest) return std::nullopt;
  std::size_t digits = 0;
  for (const char c : value) {
    digits = IsDigit(c) ? digits + 1 : 0;
    if (digits > LongestNumber) return std::nullopt;
  }
  const icaldurationtype parsed = icaldurationtype_from_string(std::string(value).c_str());
  if (icaldurationtype_is_bad_duration(parsed)) return std::nullopt;
  const std::int64_t sign = parsed.is_neg ? -1 : 1;
  IcsDuration duration;
  duration.days = sign * (std::int64_t{parsed.weeks} * 7 + parsed.days);
  duration.seconds = sign * (std::int64_t{parsed.hours} * 3600 + std::int64_t{parsed.minutes} * 60 +
                             parsed.seconds);
  return duration;
}

std::string DecodeBytes(std::string_view bytes) {
  std::string text;
  text.reserve(bytes.size());
  while (true) {
    const std::size_t ascii = AsciiLength(bytes);
    text.append(bytes.substr(0, ascii));
    bytes.remove_prefix(ascii);
    if (bytes.empty()) return text;
    const std::string_view before = bytes;
    const char32_t character = TakeCharacter(bytes);
    if (before.size() - bytes.size() > 1) {
      AppendCharacter(text, character);
    } else {
      text += FromCodePage1252(before.substr(0, 1));
    }
  }
}

std::string ReadText(const IcsProperty& property) {
  return StorableLine(Decoded(property.value, property));
}

std::string ReadTextLines(const IcsProperty& property) {
  return StorableLines(Decoded(property.value, property));
}

std::vector<std::string> ReadTextList(const IcsProperty& property) {
  const std::string_view value = property.value;
  std::vector<std::string> texts;
  const auto take = [&](std::string_view part) {
    const std::string text = StorableLine(Decoded(part, property));
    if (const std::string_view trimmed = Trim(text); !trimmed.empty()) texts.emplace_back(trimmed);
  };
  std::size_t begin = 0;
  for (std::size_t i = 0; i < value.size(); ++i) {
    if (value[i] == '\\') {
      ++i;
    } else if (value[i] == ',') {
      take(value.substr(begin, i - begin));
      begin = i + 1;
    }
  }
  take(value.substr(begin));
  return texts;
}

}  // namespace velkor
