// print/PagePlan.h: which months and which part of the legend go on which page, and how large.
#pragma once

#include <array>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

#include "print/PrintOptionSet.h"
#include "span/DisplaySpan.h"
#include "values/Twips.h"
#include "view/BandLayout.h"

namespace velkor {

/// What a layout of pages is made for, in twips.
struct PageMetrics {
  /// What can be printed on.
  Extent page;
  Twips monthLabelWidth = 0;
  Twips dayHeaderHeight = 0;
  Twips titleHeight = 0;
};

/// Where things stand on every page, in twips; sizes may be 0 or less where the margins leave no
/// room. What is a whole number was rounded, ties to the even one.
struct PageGeometry {
  Twips gridWidth = 0;
  Twips columnWidth = 0;
  Twips legendTextWidth = 0;
  std::int32_t bodyHeight = 0;
  std::int32_t bandAreaHeight = 0;
};

/// Positions of months in the order of the span, 1 to 12; a page without months has 1 to 0.
struct PageMonths {
  int first = 1;
  int last = 0;
};

/// Entries of the legend, counted from 1; a page without entries has 1 to 0.
struct LegendSlice {
  int first = 1;
  int last = 0;
};

/// Why there is no plan to print by.
struct PageFailure {
  /// The text for the user.
  std::string message;
};

/// As far as it was built where there is a failure; no page at all is to be printed then.
struct PagePlan {
  PageGeometry geometry;
  /// Pages that carry nothing but a part of the legend have no months.
  std::vector<PageMonths> pages;
  std::vector<LegendSlice> legend;
  float bandHeight = 0;
  /// Height of the months of the first page, in twips.
  float firstPageBody = 0;
  std::optional<PageFailure> failure;
};

/// Running totals of band rows by position in the span, entry 0 is 0: what a layout of bands gives.
using BandRows = decltype(BandLayout::BandsInRow);

/// Running totals of the rows that each position needs.
/// @param needed      by position less 1
/// @param leastBands  of every position, whatever it needs
BandRows TotalBandRows(const std::array<int, MonthRows>& needed, int leastBands);

/// Lays the pages out. Work grows with months and legend entries.
/// A legend entry or a month that is too large for any page is a failure, as is a range of months
/// without rows or a page without room for bands.
/// @param options  start and end are months, 1 to 12
/// @param legendHeights  running totals of the entries' heights, one for each entry
PagePlan PlanPages(const PrintOptionSet& options, const PageMetrics& metrics,
                   const DisplaySpan& span, const BandRows& rows,
                   const std::vector<Twips>& legendHeights);

/// "Year " and the year, a carriage return, then the header with another one unless it is empty.
std::string PageTitle(int viewYear, const std::string& header);

/// The slice of the legend that page `page`, counted from 1, carries: its own while there is one,
/// later those from the beginning again when the legend is printed on every page.
LegendSlice LegendOfPage(const PagePlan& plan, int page, bool reprintLegend);

/// The rows that a slice of the legend is drawn in.
struct LegendRows {
  Twips height = 0;
  /// Entries that have a row.
  int shown = 0;
  /// Entries that the last row only counts; 0 where all are shown.
  int more = 0;
};

/// A slice that is too long for the body has lower rows, and is cut where they are as low as can be
/// read. Nothing is shown where there is no room for the legend's texts or for a single row.
LegendRows RowsOfLegend(const PageGeometry& geometry, const LegendSlice& slice);

/// The page on show, and which ways lead from it.
class PageTurner {
 public:
  /// Begins at a page of `count`, at the last one where there are fewer.
  void Begin(int count, int page = 1);
  int Page() const { return page_; }
  int Count() const { return count_; }
  bool BackEnabled() const { return backEnabled_; }
  bool NextEnabled() const { return nextEnabled_; }
  /// Each does nothing while its button is disabled.
  void Back();
  void Next();

 private:
  int page_ = 1;
  int count_ = 0;
  bool backEnabled_ = false;
  bool nextEnabled_ = false;
};

/// "Page 1 of 3  Landscape A4, 210 x 297 mm"; unknown codes have empty names.
/// @param orientation, paperSize  codes of the device mode
std::string PrintStatus(int page, int count, int orientation, int paperSize);

}  // namespace velkor
