// hosts/yearplan/commands/PrintCommand.cpp: the year on the pages of a PDF file.
#include "hosts/yearplan/commands/PrintCommand.h"

#include <QFileInfo>
#include <algorithm>
#include <optional>
#include <ostream>

#include "hosts/yearplan/GivenCalendars.h"
#include "hosts/yearplan/commands/CommandPlanner.h"
#include "print/NumberText.h"
#include "print/PrintOptions.h"
#include "print/frmPrint.h"
#include "span/Locale.h"
#include "values/Error.h"
#include "view/LegendPainter.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

/// Without the line ends that the page needs.
std::string OneLine(std::string text, const std::string& between) {
  while (!text.empty() && text.back() == '\r') text.pop_back();
  std::string line;
  for (const char c : text) {
    if (c == '\r' || c == '\n') {
      if (!line.ends_with(between)) line += between;
    } else {
      line += c;
    }
  }
  return line;
}

void CheckTarget(const CommandLine& line) {
  if (line.printTask.pages) return;
  const QFileInfo output(QString::fromStdString(line.output));
  if (output.suffix().toLower() != "pdf") {
    throw UsageError("print writes a file that ends in .pdf, unlike \"" + line.output + "\"");
  }
  RefuseCalendarAsOutput(line.calendar, line.output);
}

std::string Millimetres(double twips) {
  return OneDecimal(static_cast<float>(twips / TwipsPerMillimetre)) + " mm";
}

/// "March to May", "none".
std::string MonthsOf(const PageMonths& months, const YearGrid& grid, const CalendarNames& names) {
  if (months.last < months.first) return "none";
  const auto name = [&](int row) {
    return names.months.at(static_cast<std::size_t>(grid.Span().MonthOfRow(row)));
  };
  const std::string first = name(months.first);
  return months.first == months.last ? first : first + " to " + name(months.last);
}

/// As the paper shows it: "Work, Travel, 3 more".
std::string LegendOf(const PagePlan& plan, const LegendSlice& slice,
                     const CategoryTable& categories) {
  const LegendRows rows = RowsOfLegend(plan.geometry, slice);
  std::string all;
  const auto add = [&all](const std::string& text) { all += (all.empty() ? "" : ", ") + text; };
  for (int row = 0; row < rows.shown; ++row) add(LegendText(categories.At(slice.first + row)));
  if (rows.more > 0) add(std::to_string(rows.more) + " more");
  return all.empty() ? "none" : all;
}

void TellPages(const PrintTask& task, const CommandPlanner& planner, const CalendarNames& names,
               const PrintDocument& document, std::ostream& out) {
  const YearGrid& grid = planner.Grid();
  const PagePlan& plan = document.Plan();
  out << "Title: " << OneLine(document.Title(), " / ") << '\n'
      << "Row height: " << Millimetres(static_cast<double>(plan.bandHeight)) << '\n';
  const int count = static_cast<int>(plan.pages.size());
  for (int page = 1; page <= count; ++page) {
    const LegendSlice legend = LegendOfPage(plan, page, task.options.ReprintLegend);
    out << PrintStatus(page, count, task.orientation, task.paper) << '\n'
        << "  months: " << MonthsOf(plan.pages[static_cast<std::size_t>(page) - 1], grid, names)
        << '\n'
        << "  legend: " << LegendOf(plan, legend, grid.Categories()) << '\n';
  }
}

/// What the preview's own dialogs would store.
void StoreOptions(const CommandLine& line, Settings& settings) {
  PrintOptions options(settings, {line.properties.TitleName, line.properties.FirstMonth,
                                  line.properties.DisplaySubject});
  options.SetValues(line.printTask.options);
  options.SetPaperSize(line.printTask.paper);
  options.SetOrientation(line.printTask.orientation);
}

}  // namespace

void Print(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  CheckTarget(line);
  CommandPlanner planner(line, messages);
  TerminalSeams& seams = planner.Seams();
  planner.Show(planner.FirstYear());
  RemarkOn(planner.Grid(), messages);
  StoreOptions(line, seams.settings);

  std::optional<int> pages;
  seams.forms.Expect("frmPrint", [&](Form& form) {
    auto& preview = dynamic_cast<frmPrint&>(form);
    pages = preview.Document().PageCount();
    if (line.printTask.pages && *pages > 0) {
      const LocaleId id = seams.locale.ThreadLocale();
      TellPages(line.printTask, planner, Locale::LoadCalendarNames(seams.locale, id),
                preview.Document(), out);
    } else if (*pages > 0) {
      preview.tbPreview.ClickButton(preview_keys::Print);
    }
  });
  planner.Plan().Elements().Toolbar1.ClickButton(toolbar_keys::Print);
  const std::string failure = seams.messages.Take();
  if (!failure.empty()) {
    throw Error(errors::InvalidProcedureCall, OneLine(ReasonOf(failure), "\n"));
  }
  if (!pages) throw Error(errors::InvalidProcedureCall, "The print preview was not opened");
  if (line.printTask.pages) return;
  out << YearName(planner.Grid().Span()) << ", " << *pages << (*pages == 1 ? " page: " : " pages: ")
      << QFileInfo(QString::fromStdString(line.output)).absoluteFilePath().toStdString() << '\n';
}

}  // namespace velkor
