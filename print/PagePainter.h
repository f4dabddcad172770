// print/PagePainter.h: draws the pages of a printed year: title, months, legend, page number.
#pragma once

#include <string>
#include <vector>

#include "model/CategoryTable.h"
#include "model/EventCollection.h"
#include "platform/Surface.h"
#include "print/PagePlan.h"
#include "print/PrintOptionSet.h"
#include "span/Locale.h"
#include "view/BandLayout.h"
#include "view/DaysOff.h"
#include "view/EventColour.h"
#include "view/GridGeometry.h"

namespace velkor {

/// Measures what stands around the months.
/// @param page  what can be printed on
/// @param title  as it stands on every page
/// @param measuring  measures texts as the printer draws them
PageMetrics MetricsOf(Extent page, const PrintOptionSet& options, const std::string& title,
                      const CalendarNames& names, Surface& measuring);

/// Running totals of the heights of the legend's entries.
std::vector<Twips> LegendHeights(const CategoryTable& categories);

/// What the pages show; what it refers to outlives it.
struct PrintedYear {
  const BarRule& rule;
  const CategoryTable& categories;
  const EventCollection& events;
  /// Of the whole span, made for paper.
  const BandLayout& layout;
  const DaysOff& daysOff;
  const EventColour& eventColour;
  const CalendarNames& names;
  const std::string& title;
};

/// Draws the pages of a plan that did not fail. Lengths are twips of the page whatever the pixels
/// of the surface, so that every surface is called alike as far as it measures texts alike.
class PagePainter {
 public:
  /// All of them outlive this.
  PagePainter(const PrintedYear& year, const PrintOptionSet& options, const PageMetrics& metrics,
              const PagePlan& plan);

  /// Draws a page, counted from 1, with its top left corner at the surface's origin. Nothing is
  /// drawn beyond the margins, nor for a page that there is not.
  void Draw(Surface& surface, int page) const;

 private:
  void DrawTitle(Surface& surface) const;
  /// How wide and high the cells of the body are.
  GridGeometry GeometryOfMonths() const;
  void DrawMonths(Surface& surface, const PageMonths& months) const;
  void DrawLegendPart(Surface& surface, const LegendSlice& slice) const;
  void DrawPageNumber(Surface& surface, int page) const;
  int PageCount() const { return static_cast<int>(plan_.pages.size()); }

  const PrintedYear& year_;
  const PrintOptionSet& options_;
  const PageMetrics& metrics_;
  const PagePlan& plan_;
  /// Inside the margins.
  Rect printed_;
  /// Months and legend: between title and page number.
  Rect body_;
};

}  // namespace velkor
