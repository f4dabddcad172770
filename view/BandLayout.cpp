// view/BandLayout.cpp: stacks the events of the span in bands and gives every row its height.
#include "view/BandLayout.h"

#include <algorithm>

#include "view/BandTree.h"

namespace velkor {

bool IsShown(const CalEvent& event, const CategoryFilter& filter) {
  return event.CatIndex >= 0 && TouchesSpan(event) && !filter.IsFilteredOut(event.Categories);
}

BandLayout LayOutBands(EventCollection& events, const BarRule& rule, const CategoryFilter& filter,
                       int leastBands) {
  BandLayout layout;
  // Cell b - FirstBand of a row holds the last column that band b has occupied there.
  std::array<BandTree, MonthRows + 1> occupied;
  auto& bands = layout.BandsInRow;
  std::fill(bands.begin() + 1, bands.end(), leastBands);
  layout.bars.reserve(events.Count());

  for (std::size_t i = 0; i < events.Count(); ++i) {
    CalEvent& event = events[i];
    event.Band = 0;
    if (!IsShown(event, filter)) continue;
    const int startRow = StartRowOf(event, rule.span);
    const int bound = std::max<int>(event.StartDay, 1);
    const std::size_t cell = occupied[startRow].FirstBelow(static_cast<std::int8_t>(bound));
    event.Band = static_cast<std::int32_t>(cell) + FirstBand;
    bands[startRow] = std::max(bands[startRow], event.Band);
    ForEachSegment(event, rule, [&](const Segment& segment) {
      occupied[segment.row].Set(cell, static_cast<std::int8_t>(segment.last));
      bands[segment.row] = std::max(bands[segment.row], event.Band);
      layout.bars.push_back(
          {static_cast<std::uint32_t>(i), event.Band, static_cast<std::int16_t>(segment.row),
           static_cast<std::int16_t>(segment.first), static_cast<std::int16_t>(segment.last)});
    });
  }
  for (int row = 1; row <= MonthRows; ++row) bands[row] += bands[row - 1];
  return layout;
}

}  // namespace velkor
