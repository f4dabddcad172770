// support/DatePattern.h: dates as text by a short date format.
#pragma once

#include <string>
#include <string_view>

#include "values/Date.h"

namespace velkor {

/// Where day, month and year stand in a short date (LOCALE_IDATE, winnls.h).
enum class DateOrder { MonthDayYear, DayMonthYear, YearMonthDay };

/// Writes dates in ASCII digits with a four-digit year, in the order and with the separators of a
/// short date format ("dd.MM.yy"; text in single quotes and what is not ASCII is left out). Month
/// and day have two digits where the format's day has. A format without day, month or year counts
/// as "y-M-d".
class DatePattern {
 public:
  /// `halfDays`: times of day with AM and PM.
  explicit DatePattern(std::string_view format, bool halfDays = false);

  DateOrder FieldOrder() const;
  std::string ShortDate(Date date) const;
  /// The short date, then a blank and the time to the second unless it is midnight.
  std::string DateToText(Date date) const;

 private:
  /// One of y, M and d for each field, and the separators.
  std::string pattern_;
  bool padded_;
  bool halfDays_;
};

}  // namespace velkor
