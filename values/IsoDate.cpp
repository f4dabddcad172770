// values/IsoDate.cpp: dates as ISO 8601 text.
#include "values/IsoDate.h"

#include <cstddef>

#include "values/DateDigits.h"

namespace velkor {
namespace {

/// Takes a number of exactly `width` digits and the separator before it.
bool Take(std::string_view& text, char separator, std::size_t width, int& value) {
  if (separator != '\0') {
    if (!text.starts_with(separator)) return false;
    text.remove_prefix(1);
  }
  const auto number = text.size() < width ? std::nullopt : DigitsOf(text.substr(0, width));
  if (!number) return false;
  value = *number;
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
  if (!Take(text, '\0', 4, f.year) || !Take(text, '-', 2, f.month) || !Take(text, '-', 2, f.day)) {
    return std::nullopt;
  }
  const bool hasTime = !text.empty();
  if (hasTime && (!Take(text, 'T', 2, f.hour) || !Take(text, ':', 2, f.minute) ||
                  !Take(text, ':', 2, f.second) || !text.empty())) {
    return std::nullopt;
  }
  return ExistingDate(f);
}

}  // namespace velkor
