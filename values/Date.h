// values/Date.h: a date and time as a count of days, and its calendar fields.
#pragma once

#include <compare>
#include <cstdint>

namespace velkor {

inline constexpr std::int64_t SecondsPerDay = 86400;

/// Calendar fields of a Date: month 1 to 12, day from 1, 24-hour clock.
struct DateFields {
  int year = 1899;
  int month = 12;
  int day = 30;
  int hour = 0;
  int minute = 0;
  int second = 0;

  friend auto operator<=>(const DateFields&, const DateFields&) = default;
};

/// Days since 30 December 1899, the time of day as the fraction. The fraction of a negative date
/// counts forward from its midnight too: -1.25 is 29 December 1899, 06:00 (the DATE type of OLE
/// Automation). The count itself is kept bit for bit; order and equality go by whole seconds.
class Date {
 public:
  constexpr Date() = default;
  constexpr explicit Date(double days) : days_(days) {}

  /// The date of these fields; month and day may lie outside their ranges and roll over by
  /// ordinary calendar arithmetic (day 0 is the last day of the month before).
  static Date FromFields(const DateFields& fields);
  static Date FromYmd(int year, int month, int day) { return FromFields({year, month, day}); }
  /// The date that lies this many whole seconds after 30 December 1899, 00:00.
  static Date FromSeconds(std::int64_t seconds);

  constexpr double Days() const { return days_; }
  /// True for a number whose year lies in 100 to 9999. The other members need a valid date.
  bool IsValid() const;
  /// Whole seconds since 30 December 1899, 00:00, rounded to the nearest.
  std::int64_t Seconds() const;
  /// Whole days since 30 December 1899, after rounding to the nearest second.
  std::int64_t DayNumber() const;
  /// Calendar fields, after rounding to the nearest second.
  DateFields Fields() const;
  /// 1 is Sunday, 7 is Saturday.
  int Weekday() const;
  /// The same day at 00:00.
  Date Midnight() const;
  Date AddDays(int days) const;

  friend std::strong_ordering operator<=>(const Date& a, const Date& b) {
    return a.Seconds() <=> b.Seconds();
  }
  friend bool operator==(const Date& a, const Date& b) { return a.Seconds() == b.Seconds(); }

 private:
  double days_ = 0;
};

}  // namespace velkor
