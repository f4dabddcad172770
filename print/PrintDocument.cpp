// print/PrintDocument.cpp: the displayed year as a document of pages: laid out, drawn, printed.
#include "print/PrintDocument.h"

#include <memory>
#include <utility>

#include "platform/Printer.h"
#include "print/PagePainter.h"
#include "view/YearGrid.h"

namespace velkor {

PrintDocument::PrintDocument(const YearGrid& grid, CalendarNames names)
    : grid_(grid), names_(std::move(names)) {}

void PrintDocument::LayOut(const PrintOptionSet& options, Extent page, Surface& measuring) {
  options_ = options;
  events_ = grid_.Events();
  layout_ = LayOutBands(events_, grid_.Rule(), grid_.Filter(), options.MinBands);
  title_ = PageTitle(grid_.Span().ViewYear, options.Header);
  metrics_ = MetricsOf(page, options_, title_, names_, measuring);
  plan_ = PlanPages(options_, metrics_, grid_.Span(), layout_.BandsInRow,
                    LegendHeights(grid_.Categories()));
}

void PrintDocument::DrawPage(Surface& surface, int page) const {
  if (plan_.failure) return;
  const PrintedYear year{grid_.Rule(), grid_.Categories(), events_, layout_, names_, title_};
  PagePainter(year, options_, metrics_, plan_).Draw(surface, page);
}

void PrintDocument::Print(Printer& printer, const std::string& name) const {
  const std::unique_ptr<PrintJob> job = printer.Begin(name);
  for (int page = 1; page <= static_cast<int>(plan_.pages.size()); ++page) {
    if (page > 1) job->NewPage();
    DrawPage(job->Page(), page);
  }
  job->EndDocument();
}

}  // namespace velkor
