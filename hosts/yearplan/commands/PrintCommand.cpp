// hosts/yearplan/commands/PrintCommand.cpp: the year on the pages of a PDF file.
#include "hosts/yearplan/commands/PrintCommand.h"

#include <QFileInfo>
#include <algorithm>
#include <ostream>

#include "hosts/yearplan/commands/CalendarSession.h"
#include "platform/desktop/PdfPrinter.h"
#include "print/NumberText.h"
#include "print/PrintDocument.h"
#include "values/Error.h"
#include "view/Face.h"
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
  const QString target = output.canonicalFilePath();
  if (!target.isEmpty() &&
      target == QFileInfo(QString::fromStdString(line.calendar)).canonicalFilePath()) {
    throw Error(errors::BadFileName, line.output + " is the calendar itself; nothing was written");
  }
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

void TellPages(const PrintTask& task, const PlannedYear& year, const PrintDocument& document,
               std::ostream& out) {
  const PagePlan& plan = document.Plan();
  out << "Title: " << OneLine(document.Title(), " / ") << '\n'
      << "Row height: " << Millimetres(static_cast<double>(plan.bandHeight)) << '\n';
  const int count = static_cast<int>(plan.pages.size());
  for (int page = 1; page <= count; ++page) {
    const LegendSlice legend = LegendOfPage(plan, page, task.options.ReprintLegend);
    out << PrintStatus(page, count, task.orientation, task.paper) << '\n'
        << "  months: "
        << MonthsOf(plan.pages[static_cast<std::size_t>(page) - 1], year.grid, year.names) << '\n'
        << "  legend: " << LegendOf(plan, legend, year.grid.Categories()) << '\n';
  }
}

}  // namespace

void Print(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  CheckTarget(line);
  const PrintTask& task = line.printTask;
  const PlannedYear year = CalendarSession(line, messages).Plan();
  const QFileInfo target(QString::fromStdString(line.output));
  PdfPrinter printer(target.absoluteFilePath().toStdString());
  printer.Apply({.device = {},
                 .driver = {},
                 .port = {},
                 .orientation = task.orientation,
                 .paperSize = task.paper});

  PrintDocument document(year.grid, year.names);
  document.LayOut(task.options, printer.PageSize(), printer.MeasuringSurface());
  if (const auto& failure = document.Failure()) {
    throw Error(errors::InvalidProcedureCall, OneLine(failure->message, "\n"));
  }
  if (task.pages) return TellPages(task, year, document, out);
  document.Print(*printer.Begin(document.Name()));
  const int pages = document.PageCount();
  out << YearName(year.grid.Span()) << ", " << pages << (pages == 1 ? " page: " : " pages: ")
      << target.absoluteFilePath().toStdString() << '\n';
}

}  // namespace velkor
