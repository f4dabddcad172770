// view/YearGrid.cpp: the year of one planner: its events, laid out in bands, sized and mapped.
#include "view/YearGrid.h"

#include <utility>

namespace velkor {

YearGrid::YearGrid(const DisplaySpan& span, CategoryTable categories, CategoryFilter filter,
                   PlannerProperties properties)
    : categories_(std::move(categories)),
      filter_(std::move(filter)),
      properties_(std::move(properties)),
      rule_{span, MonthColumns(span)} {
  LayOut();
}

EventFields YearGrid::Fields() const {
  return {rule_.span, rule_.columns, categories_, filter_.FilterSeparator(),
          properties_.HideNonCategoryItems};
}

void YearGrid::SetEvents(EventCollection events) {
  events_ = std::move(events);
  LayOut();
}

void YearGrid::SetFilter(CategoryFilter filter) {
  filter_ = std::move(filter);
  LayOut();
}

void YearGrid::SetSpan(const DisplaySpan& span) {
  rule_.span = span;
  rule_.columns = MonthColumns(span);
  daysOff_.PlaceIn(rule_.columns);
  SetEvents({});
}

void YearGrid::SetDaysOff(std::vector<DayOff> days) {
  daysOff_ = DaysOff(std::move(days));
  daysOff_.PlaceIn(rule_.columns);
}

void YearGrid::SetCategories(CategoryTable categories) {
  categories_ = std::move(categories);
  for (CalEvent& event : events_) {
    event.CatIndex = categories_.CatIndexOf(event.Categories, filter_.FilterSeparator(),
                                            properties_.HideNonCategoryItems);
  }
  LayOut();
}

void YearGrid::LayOut() {
  ++revision_;
  rule_.allEvents = properties_.AllEvents;
  layout_ = LayOutBands(events_, rule_, filter_);
  cells_ = CellMap(layout_);
  Size();
}

void YearGrid::Resize(Extent picParent, Twips scrollBarWidth, PixelSize pixel) {
  picParent_ = picParent;
  scrollBarWidth_ = scrollBarWidth;
  pixel_ = pixel;
  Size();
}

void YearGrid::Size() {
  geometry_ = SizeGrid(picParent_, scrollBarWidth_, pixel_, layout_, minBandHeight_);
}

std::optional<GridHit> YearGrid::HitTestAt(Point point) const {
  return HitTest(point, geometry_, layout_, rule_.columns);
}

std::optional<std::size_t> YearGrid::EventAt(const GridHit& hit) const {
  return cells_.At(hit.row, hit.cellColumn, hit.band);
}

std::optional<TodayMark> YearGrid::TodayMarkAt(Date today) const {
  const std::optional<GridCell> cell = rule_.columns.CellOf(today);
  if (!cell) return std::nullopt;
  return TodayMarkOf(cell->row, cell->column, geometry_, layout_);
}

}  // namespace velkor
