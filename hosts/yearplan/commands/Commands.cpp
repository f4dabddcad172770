// hosts/yearplan/commands/Commands.cpp: what the commands of yearplan do.
#include "hosts/yearplan/commands/Commands.h"

#include <QFileInfo>
#include <algorithm>
#include <cmath>
#include <ostream>

#include "Version.h"
#include "control/Picture.h"
#include "hosts/yearplan/commands/CategoriesCommand.h"
#include "hosts/yearplan/commands/CommandPlanner.h"
#include "hosts/yearplan/commands/ExportCommand.h"
#include "hosts/yearplan/commands/GridOfCache.h"
#include "hosts/yearplan/commands/LayoutJson.h"
#include "hosts/yearplan/commands/PrintCommand.h"
#include "hosts/yearplan/commands/SyncCommand.h"
#include "platform/desktop/PictureFile.h"
#include "platform/desktop/QtPages.h"
#include "values/Error.h"
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

Extent PictureSize(const CommandLine& line) {
  return {line.width * TwipsPerPixel, line.height * TwipsPerPixel};
}

void ShowReadable(CommandPlanner& planner) {
  QtMeasuringPage measuring{PixelSize()};
  planner.Plan().KeepBandsReadable(measuring.Page());
  planner.Plan().LayOutAsPicture();
  planner.Show(planner.FirstYear());
}

/// Instead of scrolling, a picture grows in height until every band fits.
Extent SizeWithoutScrolling(Extent picture, YearPlan& plan) {
  plan.Resize(picture, {});
  if (!plan.Grid().Geometry().scroll) return picture;
  picture.height = std::ceil(plan.LeastHeight() / TwipsPerPixel) * TwipsPerPixel;
  plan.Resize(picture, {});
  return picture;
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
  CommandPlanner planner(line, messages);
  ShowReadable(planner);
  const YearGrid& grid = planner.Grid();
  RemarkOn(grid, messages);
  const Extent size = SizeWithoutScrolling(PictureSize(line), planner.Plan());
  write(path, size,
        [&](Surface& surface) { DrawControl(surface, planner.Plan().Elements(), size); },
        {.title = YearName(grid.Span())});
  out << YearName(grid.Span()) << ", " << EventCount(grid) << ": "
      << QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString() << '\n';
}

/// Where calendars that were only named are drawn: the current folder, by the name of the first.
std::string PictureOf(const CommandLine& line) {
  const QString name = QFileInfo(QString::fromStdString(line.calendars.front())).completeBaseName();
  return ((name.isEmpty() ? "calendar" : name) + ".png").toStdString();
}

void Refresh(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  const std::string trouble = CalendarEnvironment(line.calendar).Trouble();
  if (!trouble.empty()) throw Error(errors::PathNotFound, trouble);
  CommandPlanner planner(line, messages);
  planner.Show(planner.FirstYear());
  const YearGrid& grid = planner.Grid();
  out << YearName(grid.Span()) << ", " << grid.Events().Count()
      << " events: " << planner.CacheFile() << '\n';
}

void Inspect(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  const auto print = [&](const YearGrid& grid, Date today) {
    nlohmann::ordered_json more = nlohmann::ordered_json::object();
    if (!line.points.empty()) more["hits"] = HitsJson(grid, line.points);
    PrintLayoutJson(out, grid, today, more);
  };
  if (!line.cacheFile.empty()) {
    TerminalSeams seams(line, messages);
    const YearGrid grid = GridOfCache(line, seams, messages);
    RemarkOn(grid, messages);
    return print(grid, seams.clock.Now());
  }
  CommandPlanner planner(line, messages);
  ShowReadable(planner);
  RemarkOn(planner.Grid(), messages);
  planner.Plan().Resize(PictureSize(line), {});
  print(planner.Grid(), planner.Seams().clock.Now());
}

}  // namespace

int RunCommand(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  switch (line.command) {
    case Command::Open:
      Render(line, PictureOf(line), out, messages);
      break;
    case Command::Render:
      Render(line, line.output, out, messages);
      break;
    case Command::Refresh:
      Refresh(line, out, messages);
      break;
    case Command::Inspect:
      Inspect(line, out, messages);
      break;
    case Command::Export:
      Export(line, out, messages);
      break;
    case Command::Print:
      Print(line, out, messages);
      break;
    case Command::Categories:
      Categories(line, out, messages);
      break;
    case Command::Sync:
      return Synchronise(line.calendar, line.syncTask, out, messages);
    case Command::Help:
      out << HelpText();
      break;
    case Command::Version:
      out << "yearplan " << Version << '\n';
      break;
  }
  return 0;
}

}  // namespace velkor
