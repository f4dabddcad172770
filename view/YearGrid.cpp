// view/YearGrid.cpp: the year of one planner: its events, laid out in bands, sized and mapped.
#include "view/YearGrid.h"

#include <utility>

namespace velkor {

YearGrid::YearGrid(const DisplaySpan& span, CategoryTable categories, CategoryFilter filter,
                   GridOptions options)
    : categories_(std::move(categories)),
      filter_(std::move(filter)),
      options_(options),
      rule_{span, MonthColumns(span), options.AllEvents} {
  LayOut();
}

EventFields YearGrid::Fields() const {
  return {rule_.span, rule_.columns, categories_, filter_.FilterSeparator(),
          options_.HideNonCategoryItems};
}

void YearGrid::LayOut() {
  layout_ = LayOutBands(events_, rule_, filter_);
  cells_ = CellMap(layout_);
}

void YearGrid::Resize(Extent picParent, Twips scrollBarWidth, PixelSize pixel) {
  geometry_ = SizeGrid(picParent, scrollBarWidth, pixel, layout_);
}

std::optional<GridHit> YearGrid::HitTestAt(Point point) const {
  return HitTest(point, geometry_, layout_, rule_.columns);
}

std::optional<std::size_t> YearGrid::EventAt(const GridHit& hit) const {
  return cells_.At(hit.row, hit.cellColumn, hit.band);
}

std::optional<TodayMark> YearGrid::TodayMarkAt(Date today) const {
  if (!rule_.span.IsDateInView(today)) return std::nullopt;
  const DateFields fields = today.Fields();
  const int row = rule_.span.RowOfMonth(fields.month);
  return TodayMarkOf(row, fields.day + rule_.columns.RowDayOffset[row], geometry_, layout_);
}

}  // namespace velkor
