// view/YearGrid.h: holds the year of one planner and its properties, lays it out, sizes and maps
// it.
#pragma once

#include <optional>
#include <utility>
#include <vector>

#include "model/CategoryTable.h"
#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "model/PlannerProperties.h"
#include "span/CategoryFilter.h"
#include "view/BandLayout.h"
#include "view/CellMap.h"
#include "view/DaysOff.h"
#include "view/EventColour.h"
#include "view/GridGeometry.h"

namespace velkor {

/// Whatever it is asked, its layout, sizes and cells fit the events that it holds.
class YearGrid {
 public:
  YearGrid(const DisplaySpan& span, CategoryTable categories, CategoryFilter filter,
           PlannerProperties properties);

  const DisplaySpan& Span() const { return rule_.span; }
  const MonthColumns& Columns() const { return rule_.columns; }
  const CategoryTable& Categories() const { return categories_; }
  const CategoryFilter& Filter() const { return filter_; }
  /// The planner's one set of properties. A change of AllEvents counts from the next layout.
  const PlannerProperties& Properties() const { return properties_; }
  PlannerProperties& Properties() { return properties_; }
  const BarRule& Rule() const { return rule_; }

  /// Each lays the year out anew; the events' derived fields stay until they are loaded again.
  void SetFilter(CategoryFilter filter);
  /// Each event finds its category anew.
  void SetCategories(CategoryTable categories);
  /// Also leaves the grid without events: what they were derived by is gone.
  void SetSpan(const DisplaySpan& span);

  /// What a loader derives the events' fields by; valid as long as this grid.
  EventFields Fields() const;
  /// Replaces all events by others whose fields are derived, and lays them out.
  void SetEvents(EventCollection events);
  const EventCollection& Events() const { return events_; }
  /// Lets `change` alter the events, then lays them out.
  template <typename Change>
  void ChangeEvents(Change&& change) {
    change(events_);
    LayOut();
  }
  /// Of any year; those of the span are on show. They change no layout.
  void SetDaysOff(std::vector<DayOff> days);
  const DaysOff& OffDays() const { return daysOff_; }
  /// What bars are drawn in; null: their categories' colours.
  void SetColourOfEvents(EventColour colour) { eventColour_ = std::move(colour); }
  const EventColour& ColourOfEvents() const { return eventColour_; }

  /// Grows with every layout: what was asked of an earlier one may not stand any more.
  std::uint64_t Revision() const { return revision_; }

  /// Gives the events their bands anew and sizes the grid to them.
  void LayOut();
  const BandLayout& Layout() const { return layout_; }

  /// Bands that would be lower are scrolled instead. Whole twips; counts from the next sizing.
  Twips MinBandHeight() const { return minBandHeight_; }
  void SetMinBandHeight(Twips height) { minBandHeight_ = height; }
  /// Sizes the grid to `picParent`, now and after every layout.
  void Resize(Extent picParent, Twips scrollBarWidth, PixelSize pixel);
  const GridGeometry& Geometry() const { return geometry_; }

  /// The row at a height, RowOutside beyond the grid.
  int RowAt(Twips y) const { return velkor::RowAt(y, geometry_, layout_); }
  /// What lies under a point of the grid; nothing outside it.
  std::optional<GridHit> HitTestAt(Point point) const;
  /// Index of the event under a hit.
  std::optional<std::size_t> EventAt(const GridHit& hit) const;
  /// The mark around a date's cell; nothing outside the span.
  std::optional<TodayMark> TodayMarkAt(Date today) const;

 private:
  void Size();

  CategoryTable categories_;
  CategoryFilter filter_;
  PlannerProperties properties_;
  BarRule rule_;
  EventCollection events_;
  BandLayout layout_;
  CellMap cells_;
  DaysOff daysOff_;
  EventColour eventColour_;
  Twips minBandHeight_ = LeastBandHeight;
  Extent picParent_;
  Twips scrollBarWidth_ = 0;
  PixelSize pixel_;
  GridGeometry geometry_;
  std::uint64_t revision_ = 0;
};

}  // namespace velkor
