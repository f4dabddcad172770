// print/NumberText.h: numbers as the print options store, show and read them, in any locale.
#pragma once

#include <cmath>
#include <limits>
#include <optional>
#include <string>
#include <string_view>

#include "values/Error.h"
#include "values/Twips.h"

namespace velkor {

class LocaleApi;

/// The sign before the decimals in the user's locale, "." where the locale names none.
std::string DecimalSign(LocaleApi& locale);

/// The number that a text is: blanks around, a sign, digits, one decimal point or one decimal sign
/// of the user's. None for any other text; infinite for more than a double holds.
std::optional<double> ParseNumber(std::string_view text, std::string_view decimalSign = ".");

/// The nearest whole number, ties to the even one; throws an overflow Error that names `what`
/// where the type cannot hold it.
template <typename Whole>
Whole ToWhole(double value, std::string_view what) {
  const double rounded = RoundHalfEven(value);
  using Limits = std::numeric_limits<Whole>;
  if (!(rounded >= Limits::min() && rounded <= Limits::max())) {
    throw Error(errors::Overflow, "Overflow: " + std::string(what), "PrintOptions");
  }
  return static_cast<Whole>(rounded);
}

/// In single precision; throws as ToWhole does.
float ToSingle(double value, std::string_view what);

/// The shortest decimal text that is this number again, without an exponent.
std::string DecimalText(float value);

/// With one digit behind a point; a tie of the decimal text goes away from zero.
std::string OneDecimal(float value);

}  // namespace velkor
