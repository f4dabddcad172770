// support/DatePattern.cpp: reducing a format to its fields, and filling them in.
#include "support/DatePattern.h"

#include "values/DateDigits.h"

namespace velkor {
namespace {

constexpr std::string_view Fields = "yMd";

std::string Reduced(std::string_view format) {
  std::string result;
  bool quoted = false;
  for (const char c : format) {
    if (c == '\'') quoted = !quoted;
    const bool field = Fields.find(c) != std::string_view::npos;
    const bool separator = c >= ' ' && c < '0' && c != '\'';
    const bool wanted = field ? result.find(c) == std::string::npos : separator;
    if (!quoted && wanted) result.push_back(c);
  }
  for (const char field : Fields) {
    if (result.find(field) == std::string::npos) return "y-M-d";
  }
  const std::size_t first = result.find_first_of(Fields);
  return result.substr(first, result.find_last_of(Fields) - first + 1);
}

}  // namespace

DatePattern::DatePattern(std::string_view format, bool halfDays)
    : pattern_(Reduced(format)),
      padded_(format.find("dd") != std::string_view::npos),
      halfDays_(halfDays) {}

DateOrder DatePattern::FieldOrder() const {
  if (pattern_.front() == 'y') return DateOrder::YearMonthDay;
  return pattern_.find('d') < pattern_.find('M') ? DateOrder::DayMonthYear
                                                 : DateOrder::MonthDayYear;
}

std::string DatePattern::ShortDate(Date date) const {
  const DateFields fields = date.Fields();
  const std::size_t width = padded_ ? 2 : 1;
  std::string text;
  for (const char c : pattern_) {
    if (c == 'y') {
      text += Digits(fields.year, 4);
    } else if (c == 'M') {
      text += Digits(fields.month, width);
    } else if (c == 'd') {
      text += Digits(fields.day, width);
    } else {
      text.push_back(c);
    }
  }
  return text;
}

std::string DatePattern::DateToText(Date date) const {
  const DateFields fields = date.Fields();
  const std::string day = ShortDate(date);
  if (fields.hour == 0 && fields.minute == 0 && fields.second == 0) return day;
  const std::string rest = ':' + Digits(fields.minute, 2) + ':' + Digits(fields.second, 2);
  if (!halfDays_) return day + ' ' + Digits(fields.hour, 2) + rest;
  return day + ' ' + Digits((fields.hour + 11) % 12 + 1, 1) + rest +
         (fields.hour < 12 ? " AM" : " PM");
}

}  // namespace velkor
