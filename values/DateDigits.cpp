// values/DateDigits.cpp: writes and reads the numbers of dates and times.
#include "values/DateDigits.h"

#include <algorithm>

#include "values/Text.h"

namespace velkor {

std::string Digits(int number, std::size_t width) {
  const std::string digits = std::to_string(number);
  return std::string(width - std::min(width, digits.size()), '0') + digits;
}

std::optional<int> DigitsOf(std::string_view text) {
  constexpr std::size_t Longest = 9;
  if (text.empty() || text.size() > Longest || !std::all_of(text.begin(), text.end(), IsDigit)) {
    return std::nullopt;
  }
  int number = 0;
  for (const char digit : text) number = number * 10 + (digit - '0');
  return number;
}

std::optional<Date> ExistingDate(const DateFields& fields) {
  const Date date = Date::FromFields(fields);
  // Fields out of their ranges have rolled over.
  return date.IsValid() && date.Fields() == fields ? std::optional(date) : std::nullopt;
}

}  // namespace velkor
