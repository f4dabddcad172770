// hosts/yearplan/commands/CategoriesCommand.cpp: one command of the legend on the calendar file.
#include "hosts/yearplan/commands/CategoriesCommand.h"

#include <algorithm>
#include <memory>
#include <optional>
#include <ostream>
#include <utility>

#include "calendar/EmbeddedOutlook.h"
#include "calendar/ics/IcsCalendar.h"
#include "categories/CategoryCommands.h"
#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "categories/ColourStore.h"
#include "categories/FirstColours.h"
#include "categories/LostNames.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/yearplan/OfferedColours.h"
#include "hosts/yearplan/commands/TerminalSeams.h"
#include "model/CategoryView.h"
#include "span/CategoryFilter.h"
#include "span/Globals.h"
#include "values/Error.h"
#include "values/Text.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

/// Categories have no dates: any year's occurrences do.
DateWindow SomeYear(Clock& clock) {
  const DisplaySpan year{DisplaySpan{0, 1}.ViewYearOf(clock.Now()), 1};
  return WindowOf(year);
}

/// The categories of one planner title, changed in memory and saved by the commands' own store.
class CategoryDesk : public CategoryView {
 public:
  /// Both outlive this. Throws Error when the calendar cannot be read.
  CategoryDesk(const CommandLine& line, std::ostream& messages);

  /// What kept the categories from being read whole; none when they were.
  const std::optional<Error>& Fault() const { return fault_; }
  void Run(const CategoryTask& task);

  const CategoryTable& Categories() const override { return table_; }
  const std::string& TitleOfCategories() const override { return line_.titleName; }
  bool HideNonCategoryItems() const override { return line_.grid.HideNonCategoryItems; }
  bool AreCategoriesKnown() override { return !fault_; }
  void ChangeCategories(std::vector<Category> categories) override {
    table_ = CategoryTable(std::move(categories));
  }
  /// A command shows no events.
  bool IsCarried(std::string_view) const override { return false; }
  void RenameOnShow(std::string_view, std::string_view) override {}

 private:
  std::unique_ptr<OutlookFolder> Folder();
  std::unique_ptr<OutlookFolder> FolderForSaving();
  void ReadTable();
  int IndexOf(const std::string& name) const;
  void RefuseKnown(const std::string& name) const;

  const CommandLine& line_;
  TerminalSeams seams_;
  IcsCalendar calendar_;
  EmbeddedOutlook outlook_;
  CategoryTable table_;
  std::optional<Error> fault_;
};

CategoryDesk::CategoryDesk(const CommandLine& line, std::ostream& messages)
    : line_(line),
      seams_(line.calendar, messages),
      calendar_(line.calendar, SomeYear(seams_.clock)),
      outlook_(calendar_.Store(), seams_.locale,
               {.userName = LoginName(), .listSeparator = seams_.listSeparator, .clock = [this] {
                  return seams_.clock.Now();
                }}) {
  const std::string separator = CategorySeparator(seams_.listSeparator);
  const std::string lost = RemarkOnLostNames(*Folder(), seams_.locale, line.titleName, separator);
  if (!lost.empty()) messages << line.calendar << ": " << lost << '\n';
  OfferFirstColours(calendar_.Folder(), outlook_, seams_.locale, line.titleName, separator);
  ReadTable();
}

std::unique_ptr<OutlookFolder> CategoryDesk::Folder() {
  return outlook_.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar);
}

/// Reads what there is and changes nothing, unlike a planner that starts.
void CategoryDesk::ReadTable() {
  fault_.reset();
  try {
    const auto folder = Folder();
    const auto list = ColourRecords(*folder, seams_.locale).FindList(line_.titleName);
    if (list) {
      ListedCategories listed = CategoriesOf(*list);
      fault_ = listed.fault;
      table_ = CategoryTable(std::move(listed.categories));
      return;
    }
  } catch (const Error& error) {
    fault_ = error;
  }
  table_ =
      MakeFirstCategoryTable(CategoryTextsOf(*Folder()), CategorySeparator(seams_.listSeparator));
}

/// A record in the older form becomes the title's own before it is changed, as when a planner
/// starts.
std::unique_ptr<OutlookFolder> CategoryDesk::FolderForSaving() {
  auto folder = Folder();
  const FoundRecord record = ColourRecords(*folder, seams_.locale).Find(line_.titleName);
  if (record.legacy && record.IsWorthKeeping()) {
    const FetchedColours fetched =
        ColourStore([this] { return Folder(); }, seams_.locale, seams_.messages)
            .Fetch(line_.titleName);
    if (fetched.fault) throw Error(*fetched.fault);
  }
  return folder;
}

/// The first category of this name.
int CategoryDesk::IndexOf(const std::string& name) const {
  const int index = table_.IndexOf(name);
  if (index == 0) throw Error(errors::BadFileName, "There is no category \"" + name + '"');
  return index;
}

/// Two of one name could not be told apart by the next command, nor two that blanks alone tell
/// apart by filters and appointments.
void CategoryDesk::RefuseKnown(const std::string& name) const {
  for (const Category& known : table_.All()) {
    if (Trim(known.name) != Trim(name)) continue;
    throw Error(errors::BadFileName, "The category \"" + known.name + "\" already exists");
  }
}

void CategoryDesk::Run(const CategoryTask& task) {
  // What another command saved since the calendar was read is there before this one begins.
  const auto hold = Folder()->Hold();
  ReadTable();
  if (fault_) return;
  ColourStore colours([this] { return FolderForSaving(); }, seams_.locale, seams_.messages);
  CategoryCommands commands(*this, colours, seams_.On(outlook_));
  if (task.kind != CategoryTask::Kind::New) commands.Select(IndexOf(task.name));
  switch (task.kind) {
    case CategoryTask::Kind::List:
      break;
    case CategoryTask::Kind::New:
      RefuseKnown(Globals::StripControlChars(task.name));
      seams_.inputs.lines = {task.name};
      commands.New();
      break;
    case CategoryTask::Kind::Rename:
      commands.Rename(task.newName, task.listOnly ? RenameReach::List : RenameReach::Appointments);
      break;
    case CategoryTask::Kind::Recolour:
      seams_.dialogs.colours = {task.colour};
      commands.CatColour();
      break;
    case CategoryTask::Kind::Delete:
      commands.CatDelete();
      break;
  }
  const std::string refusal = seams_.messages.Text();
  if (!refusal.empty()) throw Error(errors::CalendarFailed, refusal);
}

}  // namespace

void Categories(const CommandLine& line, std::ostream& out, std::ostream& messages) {
  CategoryDesk desk(line, messages);
  const bool changes = line.categoryTask.kind != CategoryTask::Kind::List;
  if (changes && !desk.Fault()) desk.Run(line.categoryTask);
  if (!changes || !desk.Fault()) {
    for (const Category& category : desk.Categories().All()) {
      out << ColourText(category.colour) << "  " << LegendText(category) << '\n';
    }
  }
  if (desk.Fault()) throw Error(*desk.Fault());
}

}  // namespace velkor
