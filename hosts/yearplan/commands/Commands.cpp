// hosts/yearplan/commands/Commands.cpp: what the commands of yearplan do.
#include "hosts/yearplan/commands/Commands.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <ostream>

#include "Version.h"
#include "hosts/yearplan/commands/CalendarSession.h"
#include "hosts/yearplan/commands/CategoriesCommand.h"
#include "hosts/yearplan/commands/ExportCommand.h"
#include "hosts/yearplan/commands/LayoutJson.h"
#include "hosts/yearplan/commands/PrintCommand.h"
#include "platform/desktop/PictureFile.h"
#include "values/Error.h"
#include "view/Face.h"
#include "view/YearTexts.h"

namespace velkor {
namespace {

/// The function that draws files of a picture's kind.
auto WriterFor(const std::string& path) {
  const QString suffix = QFileInfo(QString::fromStdString(path)).suffix().toLower();
  if (suffix == "png") return RenderToPng;
  if (suffix == "svg") return RenderToSvg;
  if (suffix == "pdf") return RenderToPdf;
  throw UsageError("The name of a picture ends in .png, .svg or .pdf, unlike \"" + path + "\"");
}

FaceLayout SizeTo(Extent control, YearGrid& grid) {
  const FaceLayout face = DivideFace(control);
  grid.Resize({face.picParent.Width(), face.picParent.Height()}, ScrollBarWidth, {});
  return face;
}

Extent ControlSize(const CommandLine& line) {
  return {line.width * TwipsPerPixel, line.height * TwipsPerPixel};
}

/// Instead of scrolling, a picture grows in height until every band fits.
Extent SizeWithoutScrolling(const CommandLine& line, YearGrid& grid) {
  Extent control = ControlSize(line);
  SizeTo(control, grid);
  if (!grid.Geometry().scroll) return control;
  control.height = std::ceil(LeastControlHeight(grid, {}) / TwipsPerPixel) * TwipsPerPixel;
  return control;
}

/// "19 events", or "2 of 19 events" where some are hidden.
std::string EventCount(const YearGrid& grid) {
  const auto shown =
      std::count_if(grid.Events().begin(), grid.Events().end(),
                    [&](const CalEvent& event) { return IsShown(event, grid.Filter()); });
  const auto all = static_cast<std::ptrdiff_t>(grid.Events().Count());
  return (shown == all ? "" : std::to_string(shown) + " of ") + std::to_string(all) + " events";
}

void Render(const CommandLine& line, const std::string& path, std::ostream& out,
            std::ostream& messages) {
  const auto write = WriterFor(path);
  PlannedYear year = CalendarSession(line, messages).Plan();
  const Extent size = SizeWithoutScrolling(line, year.grid);
  const FaceLayout face = SizeTo(size, year.grid);
  const FaceContent content{YearCaption(year.grid.Span().ViewYear), year.names, year.font,
                            year.today};
  write(path, size, [&](Surface& surface) { DrawFace(surface, face, year.grid, content); },
        {.title = YearName(year.grid.Span())});
  out << YearName(year.grid.Span()) << ", " << EventCount(year.grid) << ": "
      << QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString() << '\n';
}

/// Where a calendar that was only named is drawn: the current folder.
std::string PictureOf(const CommandLine& line) {
  const QFileInfo calendar(QString::fromStdString(line.calendar));
  return (calendar.completeBaseName() + ".png").toStdString();
}

void Refresh(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  CalendarSession session(line, messages);
  if (!session.CacheTrouble().empty()) {
    throw Error(errors::PathNotFound, session.CacheTrouble());
  }
  const std::size_t count = session.Refresh();
  out << YearName(session.Span()) << ", " << count << " events: " << session.CacheFileName()
      << '\n';
}

void Inspect(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  PlannedYear year = CalendarSession(line, messages).Plan();
  SizeTo(ControlSize(line), year.grid);
  nlohmann::ordered_json more = nlohmann::ordered_json::object();
  if (!line.points.empty()) more["hits"] = HitsJson(year.grid, line.points);
  PrintLayoutJson(out, year.grid, year.today, more);
}

}  // namespace

void RunCommand(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  switch (line.command) {
    case Command::Open:
      return Render(line, PictureOf(line), out, messages);
    case Command::Render:
      return Render(line, line.output, out, messages);
    case Command::Refresh:
      return Refresh(line, out, messages);
    case Command::Inspect:
      return Inspect(line, out, messages);
    case Command::Export:
      return Export(line, out, messages);
    case Command::Print:
      return Print(line, out, messages);
    case Command::Categories:
      return Categories(line, out, messages);
    case Command::Help:
      out << HelpText();
      return;
    case Command::Version:
      out << "yearplan " << Version << '\n';
      return;
  }
}

}  // namespace velkor
