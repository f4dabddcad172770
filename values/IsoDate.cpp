// values/IsoDate.cpp: dates as ISO 8601 text.
#include "values/IsoDate.h"

#include <cstddef>

namespace velkor {
namespace {

std::string Digits(int value, std::size_t width) {
  std::string digits = std::to_string(value);
  if (digits.size() < width) digits.insert(0, width - digits.size(), '0');
  return digits;
}

/// Takes a number of exactly `width` digits and the separator before it.
bool Take(std::string_view& text, char separator, std::size_t width, int& value) {
  if (separator != '\0') {
    if (!text.starts_with(separator)) return false;
    text.remove_prefix(1);
  }
  if (text.size() < width) return false;
  value = 0;
  for (const char c : text.substr(0, width)) {
    if (c < '0' || c > '9') return false;
    value = value * 10 + (c - '0');
  }
  text.remove_prefix(width);
  return true;
}

}  // namespace

std::string ToIso(Date date) {
  const DateFields f = date.Fields();
  return Digits(f.year, 4) + '-' + Digits(f.month, 2) + '-' + Digits(f.day, 2) + 'T' +
         Digits(f.hour, 2) + ':' + Digits(f.minute, 2) + ':' + Digits(f.second, 2);
}

std::optional<Date> ParseIso(std::string_view text) {
  DateFields f;
  f.hour = f.minute = f.second = 0;
  if (!Take(text, '\0', 4, f.year) || !Take(text, '-', 2, f.month) || !Take(text, '-', 2, f.day)) {
    return std::nullopt;
  }
  const bool hasTime = !text.empty();
  if (hasTime && (!Take(text, 'T', 2, f.hour) || !Take(text, ':', 2, f.minute) ||
                  !Take(text, ':', 2, f.second) || !text.empty())) {
    return std::nullopt;
  }
  const Date date = Date::FromFields(f);
  // Fields out of their ranges have rolled over.
  if (!date.IsValid() || date.Fields() != f) return std::nullopt;
  return date;
}

}  // namespace velkor
