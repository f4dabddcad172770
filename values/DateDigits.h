// values/DateDigits.h: writes and reads the numbers of dates and times.
#pragma once

#include <cstddef>
#include <optional>
#include <string>
#include <string_view>

#include "values/Date.h"

namespace velkor {

/// With zeros before it up to so many digits. @param number  not below 0
std::string Digits(int number, std::size_t width);

/// The number of a text that is nothing but digits, one to nine of them; none for another.
std::optional<int> DigitsOf(std::string_view text);

/// The date of these fields; none where one of them lies outside its range, as 31 June, or the year
/// outside 100 to 9999.
std::optional<Date> ExistingDate(const DateFields& fields);

}  // namespace velkor
