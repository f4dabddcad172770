// print/PrintDocument.h: the displayed year as a document of pages: laid out, drawn, printed.
#pragma once

#include <optional>
#include <string>
#include <vector>

#include "model/CategoryTable.h"
#include "model/EventCollection.h"
#include "print/PagePlan.h"
#include "print/PrintOptionSet.h"
#include "span/Locale.h"
#include "values/Twips.h"
#include "view/BandLayout.h"
#include "view/Bar.h"
#include "view/DaysOff.h"
#include "view/EventColour.h"

namespace velkor {

class PrintJob;
class Surface;
class YearGrid;

/// Takes the year as it is when it is laid out; what changes on show later does not reach it.
class PrintDocument {
 public:
  /// The grid outlives this.
  PrintDocument(const YearGrid& grid, CalendarNames names);

  /// Lays the bands out anew for paper and plans the pages. Failure tells when that failed.
  /// @param page  what can be printed on, in twips
  /// @param measuring  measures texts as the printer draws them
  void LayOut(const PrintOptionSet& options, Extent page, Surface& measuring);

  const PagePlan& Plan() const { return plan_; }
  /// Why there is nothing to draw: the plan failed, or has no room for the days across the page.
  const std::optional<PageFailure>& Failure() const { return failure_; }
  /// 0 before LayOut, and after one that failed.
  int PageCount() const { return failure_ ? 0 : static_cast<int>(plan_.pages.size()); }
  /// "Year 2026", as a print queue shows it.
  std::string Name() const;
  /// As it stands on every page.
  const std::string& Title() const { return title_; }

  /// Draws a page of the plan, counted from 1, with its top left corner at the surface's origin.
  /// The same calls for every surface. Nothing is drawn after a failure.
  void DrawPage(Surface& surface, int page) const;

  /// Prints every page and ends the job. Throws Error when the printer fails.
  void Print(PrintJob& job) const;

 private:
  const YearGrid& grid_;
  CalendarNames names_;
  PrintOptionSet options_;
  BarRule rule_;
  CategoryTable categories_;
  EventCollection events_;
  DaysOff daysOff_;
  EventColour eventColour_;
  BandLayout layout_;
  PageMetrics metrics_;
  PagePlan plan_;
  std::optional<PageFailure> failure_;
  std::string title_;
};

}  // namespace velkor
