// span/DisplaySpan.cpp: the one home of date-to-row and date-to-column arithmetic.
#include "span/DisplaySpan.h"

namespace velkor {
namespace {

int MonthsBetween(Date from, Date to) {
  const DateFields a = from.Fields();
  const DateFields b = to.Fields();
  return (b.year - a.year) * 12 + b.month - a.month;
}

}  // namespace

int DisplaySpan::MonthOfRow(int row) const {
  return row < 1 ? 0 : (FirstMonth + row - 2) % 12 + 1;
}

int DisplaySpan::RowOfMonth(int month) const {
  return month >= FirstMonth ? month - FirstMonth + 1 : month - FirstMonth + 13;
}

int DisplaySpan::YearOfMonth(int month) const {
  return month < FirstMonth ? ViewYear + 1 : ViewYear;
}

Date DisplaySpan::ViewStartDate() const {
  return Date::FromYmd(ViewYear, FirstMonth, 1);
}

Date DisplaySpan::ViewEndDate() const {
  if (FirstMonth < 2) return Date::FromYmd(ViewYear, 12, 31);
  return Date::FromYmd(ViewYear + 1, (FirstMonth + 11) % 12 + 1, 0);
}

int DisplaySpan::LastMonthOfView() const {
  return (FirstMonth + 10) % 12 + 1;
}

bool DisplaySpan::IsDateInView(Date date) const {
  const DateFields fields = date.Fields();
  return fields.year == YearOfMonth(fields.month);
}

int DisplaySpan::ViewYearOf(Date date) const {
  const DateFields fields = date.Fields();
  return fields.month < FirstMonth ? fields.year - 1 : fields.year;
}

int DisplaySpan::DaysInMonth(int month) const {
  return Date::FromYmd(YearOfMonth(month), month + 1, 0).Fields().day;
}

int DisplaySpan::FirstWeekdayOfMonth(int month) const {
  return Date::FromYmd(YearOfMonth(month), month, 1).Weekday();
}

Date DisplaySpan::DateOfColumn(int column, int month) const {
  return Date::FromYmd(YearOfMonth(month), month, column - FirstWeekdayOfMonth(month) + 1);
}

Date DisplaySpan::DateAtCell(int column, int row) const {
  return DateOfColumn(column, MonthOfRow(row));
}

int DisplaySpan::MonthIndexOf(Date date) const {
  if (!IsValidDate(date)) return 0;
  if (IsDateInView(date)) return date.Fields().month;
  if (date >= ViewStartDate()) return 12 + MonthsBetween(ViewEndDate(), date);
  return 1 + MonthsBetween(ViewStartDate(), date);
}

bool IsValidSpan(const DisplaySpan& span) {
  const bool isMonth = span.FirstMonth >= 1 && span.FirstMonth <= 12;
  const bool isYear = span.ViewYear >= 100 && span.ViewYear <= 9999;
  return isMonth && isYear && IsValidDate(span.ViewEndDate());
}

bool IsValidDate(Date date) {
  return date.IsValid();
}

bool HasTimeOfDay(Date date) {
  const DateFields fields = date.Fields();
  return fields.hour != 0 || fields.minute != 0;
}

std::int64_t DaysBetween(Date from, Date to) {
  return to.DayNumber() - from.DayNumber();
}

MonthColumns::MonthColumns(const DisplaySpan& span) {
  for (int row = 1; row <= MonthRows; ++row) {
    const int month = span.MonthOfRow(row);
    RowDayOffset[row] = span.FirstWeekdayOfMonth(month) - 1;
    RowLastColumn[row] = RowDayOffset[row] + span.DaysInMonth(month);
    RowFirstDay[row] = Date::FromYmd(span.YearOfMonth(month), month, 1).DayNumber();
  }
  RowFirstDay[MonthRows + 1] = span.ViewEndDate().DayNumber() + 1;
}

std::optional<GridCell> MonthColumns::CellOf(Date date) const {
  const std::int64_t day = date.DayNumber();
  if (day < RowFirstDay[1] || day >= RowFirstDay[MonthRows + 1]) return std::nullopt;
  // No month is longer than 31 days, so the guess is the row or the one before it.
  int row = 1 + static_cast<int>((day - RowFirstDay[1]) / 31);
  if (day >= RowFirstDay[row + 1]) ++row;
  return GridCell{row, static_cast<int>(day - RowFirstDay[row]) + 1 + RowDayOffset[row]};
}

}  // namespace velkor
