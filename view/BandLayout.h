// view/BandLayout.h: stacks the events of the span in bands and gives every row its height.
#pragma once

#include <array>
#include <vector>

#include "model/EventCollection.h"
#include "span/CategoryFilter.h"
#include "view/Bar.h"

namespace velkor {

/// The least number of bands of a row.
inline constexpr int LeastBands = 4;
/// The first band that is given to events.
inline constexpr int FirstBand = 2;

struct BandLayout {
  /// Running totals: the bands of rows 1 up to this one; entry 0 is 0. Row r begins as many bands
  /// below the grid's top as the entry of row r - 1 says.
  std::array<int, MonthRows + 1> BandsInRow{};
  /// In the order of the events, each event's rows from the top.
  std::vector<Bar> bars;

  int BandsOf(int row) const { return BandsInRow[row] - BandsInRow[row - 1]; }
  int TotalBands() const { return BandsInRow[MonthRows]; }
};

/// True when an event is drawn at all: it has a category, passes the filter and touches the span.
bool IsShown(const CalEvent& event, const CategoryFilter& filter);

/// Gives each shown event its Band (0 to the others), the first that is free where the event
/// begins, in the order of the collection. A band is chosen by the event's first row alone: further
/// down, a long event may share it with another bar.
/// @param leastBands  of every row, whether there are events or not
BandLayout LayOutBands(EventCollection& events, const BarRule& rule, const CategoryFilter& filter,
                       int leastBands = LeastBands);

}  // namespace velkor
