// hosts/yearplan/commands/CategoriesCommand.cpp: one command of the legend on the calendar file.
#include "hosts/yearplan/commands/CategoriesCommand.h"

#include <optional>
#include <ostream>

#include "calendar/set/SetCalendar.h"
#include "categories/CategoryCommands.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/yearplan/CalendarOptions.h"
#include "hosts/yearplan/commands/CommandPlanner.h"
#include "platform/desktop/DesktopSystem.h"
#include "span/Globals.h"
#include "values/Error.h"
#include "values/Text.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

/// Categories have no dates: any year's occurrences do.
DateWindow SomeYear() {
  return WindowOf({DisplaySpan{0, 1}.ViewYearOf(DesktopClock().Now()), 1});
}

/// The first category of this name.
int IndexOf(const CategoryTable& categories, const std::string& name) {
  const int index = categories.IndexOf(name);
  if (index == 0) throw Error(errors::BadFileName, "There is no category \"" + name + '"');
  return index;
}

/// Two of one name could not be told apart by the next command, nor two that blanks alone tell
/// apart by filters and appointments.
void RefuseKnown(const CategoryTable& categories, const std::string& name) {
  for (const Category& known : categories.All()) {
    if (Trim(known.name) != Trim(name)) continue;
    throw Error(errors::BadFileName, "The category \"" + known.name + "\" already exists");
  }
}

void Press(const CategoryTask& task, YearPlan& plan, TerminalSeams& seams) {
  const CategoryTable& categories = plan.Grid().Categories();
  LegendElements& legend = plan.Elements().legend;
  if (task.kind != CategoryTask::Kind::New) {
    const Rect row = LegendRowRect(IndexOf(categories, task.name), LegendRowHeight);
    legend.picCats.onMouseDown(MouseButton::Left, {row.left, (row.top + row.bottom) / 2});
  }
  switch (task.kind) {
    case CategoryTask::Kind::List:
      break;
    case CategoryTask::Kind::New:
      RefuseKnown(categories, Globals::StripControlChars(task.name));
      seams.inputs.lines = {task.name};
      legend.mnuCatNew.Click();
      break;
    case CategoryTask::Kind::Rename:
      plan.CatRename(task.newName, task.listOnly ? RenameReach::List : RenameReach::Appointments);
      break;
    case CategoryTask::Kind::Recolour:
      seams.dialogs.colours = {task.colour};
      legend.mnuCatColour.Click();
      break;
    case CategoryTask::Kind::Delete:
      legend.mnuCatDelete.Click();
      break;
  }
  const std::string refusal = seams.messages.Take();
  if (!refusal.empty()) throw Error(errors::CalendarFailed, refusal);
}

/// The categories of a planner and what kept them from being read whole; empty when they were.
struct Listed {
  CategoryTable categories;
  std::string fault;
};

/// Carries a task out, unless the categories could not be read whole.
/// @param saves  false: on a calendar that nothing is written to
Listed CarryOut(const CommandLine& line, const CategoryTask& task, bool saves,
                std::ostream& messages) {
  SetCalendar calendar(line.calendar, SomeYear(), OptionsFor(line.calendar));
  // What another command saved since the calendar was read is there before this one begins.
  const auto hold = saves ? calendar.Folder().Hold() : nullptr;
  if (!saves) calendar.Folder().SetWriter(nullptr);
  CommandPlanner planner(line, messages, &calendar);
  if (planner.Fault().empty() && task.kind != CategoryTask::Kind::List) {
    Press(task, planner.Plan(), planner.Seams());
  }
  return {planner.Grid().Categories(), ReasonOf(planner.Fault())};
}

}  // namespace

void Categories(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  const bool changes = line.categoryTask.kind != CategoryTask::Kind::List;
  // A planner that starts saves a list of the older form as its own: what is refused must be known
  // before. Whether appointments can follow is asked when they do.
  CategoryTask trial = line.categoryTask;
  trial.listOnly = true;
  Listed listed = CarryOut(line, trial, false, messages);
  if (changes && listed.fault.empty()) {
    std::ostream nowhere(nullptr);
    listed = CarryOut(line, line.categoryTask, true, nowhere);
  }
  if (!changes || listed.fault.empty()) {
    for (const Category& category : listed.categories.All()) {
      out << ColourText(category.colour) << "  " << LegendText(category) << '\n';
    }
  }
  if (!listed.fault.empty()) throw Error(errors::CalendarFailed, listed.fault);
}

}  // namespace velkor
