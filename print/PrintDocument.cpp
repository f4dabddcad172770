// print/PrintDocument.cpp: the displayed year as a document of pages: laid out, drawn, printed.
#include "print/PrintDocument.h"

#include <utility>

#include "platform/Printer.h"
#include "print/PagePainter.h"
#include "view/YearGrid.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

constexpr const char* NoRoomAcross =
    "Margins and legend leave no room for the days across the page\r\rYou can increase the "
    "printing area by reducing the left and right margins or the legend width.";

}  // namespace

PrintDocument::PrintDocument(const YearGrid& grid, CalendarNames names)
    : grid_(grid), names_(std::move(names)) {}

void PrintDocument::LayOut(const PrintOptionSet& options, Extent page, Surface& measuring) {
  options_ = options;
  rule_ = grid_.Rule();
  categories_ = grid_.Categories();
  events_ = grid_.Events();
  daysOff_ = grid_.OffDays();
  eventColour_ = grid_.ColourOfEvents();
  layout_ = LayOutBands(events_, rule_, grid_.Filter(), options.MinBands);
  title_ = PageTitle(rule_.span.ViewYear, options.Header);
  metrics_ = MetricsOf(page, options, title_, names_, measuring);
  plan_ = PlanPages(options, metrics_, rule_.span, layout_.BandsInRow, LegendHeights(categories_));
  failure_ = plan_.failure;
  if (!failure_ && !(plan_.geometry.columnWidth > 0)) failure_ = PageFailure{NoRoomAcross};
}

std::string PrintDocument::Name() const {
  return YearCaption(rule_.span.ViewYear);
}

void PrintDocument::DrawPage(Surface& surface, int page) const {
  if (failure_) return;
  const PrintedYear year{rule_,    categories_,  events_, layout_,
                         daysOff_, eventColour_, names_,  title_};
  PagePainter(year, options_, metrics_, plan_).Draw(surface, page);
}

void PrintDocument::Print(PrintJob& job) const {
  for (int page = 1; page <= PageCount(); ++page) {
    if (page > 1) job.NewPage();
    DrawPage(job.Page(), page);
  }
  job.EndDocument();
}

}  // namespace velkor
