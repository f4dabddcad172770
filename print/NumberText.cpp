// print/NumberText.cpp: numbers as the print options store, show and read them, in any locale.
#include "print/NumberText.h"

#include <algorithm>
#include <array>
#include <charconv>
#include <cstddef>

#include "platform/LocaleApi.h"
#include "values/Text.h"

namespace velkor {
namespace {

/// Digits with at most one point among them, at least one digit.
bool IsDecimal(std::string_view text) {
  const auto digits = std::count_if(text.begin(), text.end(), IsDigit);
  const auto points = std::count(text.begin(), text.end(), '.');
  return digits > 0 && points <= 1 && digits + points == static_cast<std::ptrdiff_t>(text.size());
}

}  // namespace

std::string DecimalSign(LocaleApi& locale) {
  std::string sign = locale.LocaleInfo(locale.ThreadLocale(), locale_info::DecimalSign);
  sign.resize(std::min(sign.find('\0'), sign.size()));
  return sign.empty() ? "." : sign;
}

std::optional<double> ParseNumber(std::string_view text, std::string_view decimalSign) {
  std::string pointed;
  if (const auto sign = text.find(decimalSign); sign != std::string_view::npos) {
    pointed.append(text.substr(0, sign)).append(".");
    text = pointed.append(text.substr(sign + decimalSign.size()));
  }
  text = Trim(text);
  const bool negative = text.starts_with('-');
  if (negative || text.starts_with('+')) text.remove_prefix(1);
  if (!IsDecimal(text)) return std::nullopt;
  double value = 0;
  const auto [end, error] =
      std::from_chars(text.data(), text.data() + text.size(), value, std::chars_format::fixed);
  if (error == std::errc::result_out_of_range) {
    // Too many digits before the point, or nothing but noughts for too long.
    const std::string_view whole = text.substr(0, text.find('.'));
    const bool huge = whole.find_first_not_of('0') != std::string_view::npos;
    value = huge ? std::numeric_limits<double>::infinity() : 0;
  }
  return negative ? -value : value;
}

float ToSingle(double value, std::string_view what) {
  if (!(std::fabs(value) <= std::numeric_limits<float>::max())) {
    throw Error(errors::Overflow, "Overflow: " + std::string(what), "PrintOptions");
  }
  return static_cast<float>(value);
}

std::string DecimalText(float value) {
  // A sign, a point, and at most 39 digits before it or some 55 behind it.
  std::array<char, 128> buffer{};
  const auto [end, error] =
      std::to_chars(buffer.data(), buffer.data() + buffer.size(), value, std::chars_format::fixed);
  return {buffer.data(), end};
}

std::string OneDecimal(float value) {
  // Rounds the digits: in binary most ties lie a hair beside themselves.
  std::string text = DecimalText(std::fabs(value));
  const std::size_t point = std::min(text.find('.'), text.size());
  if (point == text.size()) text += ".0";
  bool carry = text.size() > point + 2 && text[point + 2] >= '5';
  text.resize(point + 2);
  for (std::size_t i = text.size(); carry && i-- > 0;) {
    if (text[i] == '.') continue;
    carry = text[i] == '9';
    text[i] = carry ? '0' : static_cast<char>(text[i] + 1);
  }
  if (carry) text.insert(0, "1");
  return value < 0 && text != "0.0" ? "-" + text : text;
}

}  // namespace velkor
