// span/DisplaySpan.h: the twelve months on show, and dates to rows and columns and back.
#pragma once

#include <array>
#include <cstdint>
#include <optional>

#include "values/Date.h"

namespace velkor {

inline constexpr int MonthRows = 12;
inline constexpr int GridColumns = 37;

/// Twelve consecutive months, one to a row. Rows, months and columns count from 1; column 1 is a
/// Sunday, and the 1st of a month stands in the column of its weekday.
struct DisplaySpan {
  /// The calendar year in which the span begins, 100 to 9998; 9999 too when FirstMonth is 1.
  int ViewYear = 1900;
  /// The month shown in row 1, 1 to 12.
  int FirstMonth = 1;

  /// The month of a row; 0 for a row below 1.
  int MonthOfRow(int row) const;
  int RowOfMonth(int month) const;
  int YearOfMonth(int month) const;
  Date ViewStartDate() const;
  /// The last day of the span, at 00:00.
  Date ViewEndDate() const;
  /// The month in row 12.
  int LastMonthOfView() const;
  /// The time of day does not count.
  bool IsDateInView(Date date) const;
  /// The ViewYear whose span contains the date.
  int ViewYearOf(Date date) const;
  int DaysInMonth(int month) const;
  /// 1 is Sunday, 7 is Saturday, whatever day the user's week begins with.
  int FirstWeekdayOfMonth(int month) const;
  /// The date in a column of a month's row; columns outside the month roll into its neighbours.
  Date DateOfColumn(int column, int month) const;
  Date DateAtCell(int column, int row) const;
  /// The calendar month (1 to 12) of a date in the span; 0 or less before the span, 13 or more
  /// after it, each month counting one; 0 also for a date that is not valid.
  int MonthIndexOf(Date date) const;

  friend bool operator==(const DisplaySpan&, const DisplaySpan&) = default;
};

/// True when every day of the span is a valid date and FirstMonth a month.
bool IsValidSpan(const DisplaySpan& span);

bool IsValidDate(Date date);

/// True when the date lies a minute or more after its midnight.
bool HasTimeOfDay(Date date);

/// A day's place in the grid.
struct GridCell {
  int row = 0;
  int column = 0;

  friend bool operator==(const GridCell&, const GridCell&) = default;
};

/// Calendar days from one date to another, whatever their times of day.
std::int64_t DaysBetween(Date from, Date to);

/// The columns that each row's month takes, by row 1 to 12 (entry 0 is 0): what loading, layout
/// and drawing read, computed once for a span.
struct MonthColumns {
  MonthColumns() = default;
  explicit MonthColumns(const DisplaySpan& span);

  /// Row and column of a date; none outside the span.
  std::optional<GridCell> CellOf(Date date) const;

  /// Empty columns before the 1st, 0 to 6.
  std::array<int, MonthRows + 1> RowDayOffset{};
  /// The column of the last day, 28 to 37.
  std::array<int, MonthRows + 1> RowLastColumn{};
  /// Day number of the 1st; entry 13 is the day after the span.
  std::array<std::int64_t, MonthRows + 2> RowFirstDay{};
};

}  // namespace velkor
