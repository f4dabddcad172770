// print/PrintDocument.cpp: the displayed year as a document of pages: laid out, drawn, printed.
#include "print/PrintDocument.h"

#include <utility>

#include "platform/Printer.h"
#include "print/PagePainter.h"
#include "view/YearGrid.h"

namespace velkor {

PrintDocument::PrintDocument(const YearGrid& grid, CalendarNames names)
    : grid_(grid), names_(std::move(names)) {}

void PrintDocument::LayOut(const PrintOptionSet& options, Extent page, Surface& measuring) {
  options_ = options;
  rule_ = grid_.Rule();
  categories_ = grid_.Categories();
  events_ = grid_.Events();
  layout_ = LayOutBands(events_, rule_, grid_.Filter(), options.MinBands);
  title_ = PageTitle(rule_.span.ViewYear, options.Header);
  metrics_ = MetricsOf(page, options, title_, names_, measuring);
  plan_ = PlanPages(options, metrics_, rule_.span, layout_.BandsInRow, LegendHeights(categories_));
}

void PrintDocument::DrawPage(Surface& surface, int page) const {
  if (plan_.failure) return;
  const PrintedYear year{rule_, categories_, events_, layout_, names_, title_};
  PagePainter(year, options_, metrics_, plan_).Draw(surface, page);
}

bool PrintDocument::Print(Printer& printer, const std::string& name) const {
  if (plan_.failure) return false;
  const auto job = printer.Begin(name);
  if (!job) return false;
  const int count = static_cast<int>(plan_.pages.size());
  for (int page = 1; page <= count; ++page) {
    if (page > 1) job->NewPage();
    DrawPage(job->Page(), page);
  }
  job->EndDocument();
  return true;
}

}  // namespace velkor
