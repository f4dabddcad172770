// print/PrintDocument.h: the displayed year as a document of pages: laid out, drawn, printed.
#pragma once

#include <string>
#include <vector>

#include "model/CategoryTable.h"
#include "model/EventCollection.h"
#include "print/PagePlan.h"
#include "print/PrintOptionSet.h"
#include "support/values/Twips.h"
#include "view/BandLayout.h"
#include "view/Bar.h"
#include "view/span/Locale.h"

namespace velkor {

class Printer;
class Surface;
class YearGrid;

/// Takes the year as it is when it is laid out; what changes on show later does not reach it.
class PrintDocument {
 public:
  /// The grid outlives this.
  PrintDocument(const YearGrid& grid, CalendarNames names);

  /// Lays the bands out anew for paper and plans the pages. Plan tells when that failed.
  /// @param page  what can be printed on, in twips
  /// @param measuring  measures texts as the printer draws them
  void LayOut(const PrintOptionSet& options, Extent page, Surface& measuring);

  const PagePlan& Plan() const { return plan_; }
  /// As it stands on every page.
  const std::string& Title() const { return title_; }

  /// Draws a page of the plan, counted from 1, with its top left corner at the surface's origin.
  /// The same calls for every surface. Nothing is drawn of a plan that failed.
  void DrawPage(Surface& surface, int page) const;

  /// Prints every page of the plan; nothing of one that failed. Throws Error when the printer fails
  /// or there is none; the document is given up then.
  /// @return whether it was printed
  bool Print(Printer& printer, const std::string& name) const;

 private:
  const YearGrid& grid_;
  CalendarNames names_;
  PrintOptionSet options_;
  BarRule rule_;
  CategoryTable categories_;
  EventCollection events_;
  BandLayout layout_;
  PageMetrics metrics_;
  PagePlan plan_;
  std::string title_;
};

}  // namespace velkor
