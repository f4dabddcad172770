// calendar/IcsValues.cpp: reading text, times and durations.
#include "calendar/IcsValues.h"

#include <libical/ical.h>

#include <algorithm>

#include "support/values/Date.h"
#include "support/values/Text.h"

namespace velkor {
namespace {

int Digits(std::string_view text, std::size_t at, std::size_t count) {
  int value = 0;
  for (const char c : text.substr(at, count)) value = value * 10 + (c - '0');
  return value;
}

bool AllDigits(std::string_view text) {
  return std::all_of(text.begin(), text.end(), IsDigit);
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
  if (!AllDigits(value.substr(0, 8)) || (timed && !AllDigits(value.substr(9)))) return std::nullopt;

  DateFields fields{Digits(value, 0, 4), Digits(value, 4, 2), Digits(value, 6, 2), 0, 0, 0};
  const Date day = Date::FromFields(fields);
  if (!day.IsValid() || day.Fields() != fields) return std::nullopt;
  time.wall = day.Seconds();
  if (timed) {
    const int hour = Digits(value, 9, 2);
    const int minute = Digits(value, 11, 2);
    const int second = std::min(Digits(value, 13, 2), 60);
    if (hour > 23 || minute > 59 || Digits(value, 13, 2) > 60) return std::nullopt;
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

std::string DecodeBytes(std::string_view bytes, IcsEncoding encoding) {
  std::string text;
  text.reserve(bytes.size());
  while (!bytes.empty()) {
    char32_t character = static_cast<unsigned char>(bytes.front());
    if (character < 0x80 || encoding == IcsEncoding::Latin1) {
      bytes.remove_prefix(1);
    } else {
      character = TakeCharacter(bytes);
    }
    AppendCharacter(text, character == 0 ? char32_t{0xFFFD} : character);
  }
  return text;
}

std::string ReadText(std::string_view value, IcsEncoding encoding, std::string_view lineBreak) {
  std::string text;
  text.reserve(value.size());
  for (std::size_t i = 0; i < value.size(); ++i) {
    const bool escape = value[i] == '\\' && i + 1 < value.size();
    if (!escape) {
      text += value[i];
    } else if (const char next = value[++i]; next == 'n' || next == 'N') {
      text += lineBreak;
    } else if (next == '\\' || next == ';' || next == ',' || next == ':' || next == '"') {
      text += next;
    } else {
      text += '\\';
      text += next;
    }
  }
  return DecodeBytes(text, encoding);
}

std::vector<std::string> ReadTextList(std::string_view value, IcsEncoding encoding) {
  std::vector<std::string> texts;
  const auto take = [&](std::string_view part) {
    const std::string text = ReadText(part, encoding, " ");
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
