// view/DaysOff.h: says which cells of a year are days off, and what each is called.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <vector>

#include "span/DisplaySpan.h"
#include "values/DayOff.h"

namespace velkor {

class DaysOff {
 public:
  DaysOff() = default;
  /// Those without valid dates are left out.
  explicit DaysOff(std::vector<DayOff> days);

  /// Of any year.
  const std::vector<DayOff>& All() const { return days_; }
  /// Finds the cells of a span, which are the ones on show from now on.
  void PlaceIn(const MonthColumns& columns);
  /// Whether a cell on show is one; rows from 1 to 12, columns from 1 to 37.
  bool Has(int row, int column) const { return (columns_[Index(row)] >> column & 1) != 0; }

  /// Calls `visit(first, last)` for each unbroken stretch of columns of a row, both included.
  template <typename Visit>
  void ForEachStretch(int row, Visit&& visit) const {
    if (columns_[Index(row)] == 0) return;
    for (int column = 1; column <= GridColumns; ++column) {
      if (!Has(row, column)) continue;
      const int first = column;
      while (column < GridColumns && Has(row, column + 1)) ++column;
      visit(first, column);
    }
  }

  /// The different names of a day, joined by commas; "Day off" where it has none, and nothing for a
  /// day that is none.
  std::string NameOf(Date day) const;

 private:
  static std::size_t Index(int row) { return static_cast<std::size_t>(row); }

  std::vector<DayOff> days_;
  /// Bits 1 to 37 of each row.
  std::array<std::uint64_t, MonthRows + 1> columns_{};
};

}  // namespace velkor
