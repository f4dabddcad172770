// hosts/yearplan/commands/ExportCommand.cpp: the years of a command line, as an export reads them.
#include "hosts/yearplan/commands/ExportCommand.h"

#include <QFileInfo>
#include <algorithm>
#include <cstddef>
#include <ostream>

#include "categories/UncarriedNames.h"
#include "exchange/XmlExport.h"
#include "exchange/dlgSaveType.h"
#include "hosts/yearplan/GivenCalendars.h"
#include "hosts/yearplan/commands/CommandPlanner.h"
#include "values/Error.h"
#include "view/Bar.h"

namespace velkor {
namespace {

/// "1 appointment", "2 appointments".
std::string Counted(int count, const std::string& one, const std::string& many) {
  return std::to_string(count) + ' ' + (count == 1 ? one : many);
}

/// "Years 2025 to 2026, 40 appointments, 5 categories".
std::string Summary(const CommandLine& line, const CommandPlanner& planner, int appointments) {
  const int count = planner.Grid().Categories().Count();
  const std::string categories = Counted(count, "category", "categories");
  if (line.categoriesOnly) return categories;
  const std::string first = std::to_string(planner.FirstYear());
  const std::string span = planner.FirstYear() == planner.LastYear()
                               ? "Year " + first
                               : "Years " + first + " to " + std::to_string(planner.LastYear());
  return span + ", " + Counted(appointments, "appointment", "appointments") + ", " + categories;
}

/// Brings the cache files of all years up to date, of which the export takes them.
/// @return appointments that are shown
int ShowYears(CommandPlanner& planner, UncarriedNames& uncarried) {
  const auto progress = planner.Seams().progress.Begin("Export");
  const int total = planner.LastYear() - planner.FirstYear() + 1;
  std::ptrdiff_t shown = 0;
  for (int year = planner.FirstYear(); year <= planner.LastYear(); ++year) {
    progress->Step(year - planner.FirstYear(), total, "Year " + std::to_string(year));
    planner.Show(year);
    const EventCollection& events = planner.Grid().Events();
    uncarried.Look(events);
    shown += std::count_if(events.begin(), events.end(), [&](const CalEvent& event) {
      return IsShown(event, planner.Grid().Filter());
    });
  }
  return static_cast<int>(shown);
}

/// What the dialogs of the button are answered.
void Answer(const CommandLine& line, const CommandPlanner& planner, const std::string& path,
            TerminalSeams& seams) {
  seams.dialogs.fileNames = {path};
  seams.forms.Expect("dlgSaveType", [&](Form& form) {
    auto& dialog = dynamic_cast<dlgSaveType&>(form);
    dialog.tbFrom.SetText("1/1/" + std::to_string(planner.FirstYear()));
    dialog.tbTo.SetText("31/12/" + std::to_string(planner.LastYear()));
    if (line.categoriesOnly) dialog.rbCatsOnly.Choose();
    dialog.OKButton.Click();
  });
}

}  // namespace

void Export(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  RefuseCalendarAsOutput(line.calendar, line.output);
  CommandPlanner planner(line, messages);
  TerminalSeams& seams = planner.Seams();
  UncarriedNames uncarried(planner.Grid().Filter());
  const int appointments = line.categoriesOnly ? 0 : ShowYears(planner, uncarried);
  const std::string path =
      QFileInfo(QString::fromStdString(line.output)).absoluteFilePath().toStdString();
  Answer(line, planner, path, seams);
  planner.Plan().Elements().Toolbar1.ClickButton(toolbar_keys::Save);
  const std::string told = seams.messages.Take();
  if (told != ExportSaved) {
    const std::string reason = ReasonOf(told);
    throw Error(errors::PathNotFound, reason == told ? told + ' ' + path : reason);
  }
  if (!line.categoriesOnly) uncarried.Report(messages, "these years");
  out << Summary(line, planner, appointments) << ": " << path << '\n';
}

}  // namespace velkor
