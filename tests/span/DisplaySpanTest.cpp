// tests/span/DisplaySpanTest.cpp: rows, columns and spans for every first month.
#include "span/DisplaySpan.h"

#include <gtest/gtest.h>

namespace velkor {
namespace {

/// Every first month, over a full cycle of weekdays and leap years and at both ends of time.
template <typename Visit>
void ForEachSpan(Visit&& visit) {
  for (const auto& [from, to] :
       {std::pair(100, 104), std::pair(1890, 1930), std::pair(1999, 2030), std::pair(9995, 9998)}) {
    for (int year = from; year <= to; ++year) {
      for (int firstMonth = 1; firstMonth <= 12; ++firstMonth) {
        SCOPED_TRACE(testing::Message() << year << " from month " << firstMonth);
        visit(DisplaySpan{year, firstMonth});
      }
    }
  }
}

bool IsLeapYear(int year) {
  return year % 4 == 0 && (year % 100 != 0 || year % 400 == 0);
}

TEST(DisplaySpan, EveryDayOfItIsFoundInItsCellAgain) {
  static constexpr int Days[] = {31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
  ForEachSpan([](const DisplaySpan& span) {
    const MonthColumns columns(span);
    Date day = span.ViewStartDate();
    for (int row = 1; row <= MonthRows; ++row) {
      const int month = span.MonthOfRow(row);
      const bool leapDay = month == 2 && IsLeapYear(span.YearOfMonth(month));
      ASSERT_EQ(span.DaysInMonth(month), Days[month - 1] + leapDay);
      ASSERT_EQ(columns.RowDayOffset[row] + 1, span.FirstWeekdayOfMonth(month));
      ASSERT_EQ(columns.RowLastColumn[row], columns.RowDayOffset[row] + span.DaysInMonth(month));
      ASSERT_LE(columns.RowLastColumn[row], GridColumns);
      for (int column = columns.RowDayOffset[row] + 1; column <= columns.RowLastColumn[row];
           ++column) {
        ASSERT_EQ(span.DateAtCell(column, row), day);
        const DateFields fields = day.Fields();
        ASSERT_EQ(span.RowOfMonth(fields.month), row);
        ASSERT_EQ(fields.day + columns.RowDayOffset[row], column);
        ASSERT_EQ((column - 1) % 7 + 1, day.Weekday());
        const Date lastMinute = Date::FromSeconds(day.Seconds() + 86399);
        ASSERT_TRUE(span.IsDateInView(day) && span.IsDateInView(lastMinute));
        ASSERT_EQ(span.ViewYearOf(lastMinute), span.ViewYear);
        ASSERT_EQ(span.MonthIndexOf(lastMinute), month);
        day = day.AddDays(1);
      }
    }
    EXPECT_EQ(day, span.ViewEndDate().AddDays(1));
  });
}

}  // namespace
}  // namespace velkor
