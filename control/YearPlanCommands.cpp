// control/YearPlanCommands.cpp: what the toolbar, the menus and the public methods do.
#include <algorithm>
#include <utility>

#include "categories/ColourList.h"
#include "categories/MasterList.h"
#include "categories/dlgFilter.h"
#include "control/YearPlanParts.h"
#include "control/frmAbout.h"
#include "exchange/CategoryImport.h"
#include "exchange/XmlExport.h"
#include "model/Guard.h"
#include "model/Status.h"
#include "model/WaitPointer.h"
#include "model/YearRefresh.h"
#include "platform/Forms.h"
#include "print/frmPrint.h"
#include "values/Error.h"
#include "values/NameList.h"

namespace velkor {
void YearPlan::Parts::Command1_Click() {
  if (ticksToStart_) return StartUp(true);
  if (!live_) return;
  Guard(platform_.messages, "Error refreshing the year ", [&] {
    ReloadEvents();
    refresh_.StartRefresh(true);
  });
}

void YearPlan::Parts::Toolbar1_ButtonClick(std::string_view key) {
  if (key == toolbar_keys::Back) ChangeYear(-1);
  if (key == toolbar_keys::Next) ChangeYear(1);
  if (key == toolbar_keys::Filter) Filter_Click();
  if (key == toolbar_keys::Print) Print_Click();
  if (key == toolbar_keys::Open) ImportCategories(platform_);
  if (key == toolbar_keys::Save) XmlExport(*this, platform_).Run();
}

void YearPlan::Parts::Filter_Click() {
  Guard(platform_.messages, "Error setting the filter ", [&] {
    dlgFilter form(
        grid_.Filter(), Properties().TitleName,
        [this] {
          return MasterCategories(platform_.outlook, platform_.registry, platform_.messages);
        },
        platform_.settings, platform_.locale, platform_.messages);
    {
      const WaitPointer wait(platform_.shell);
      form.VelkorLegends = CategoryNames();
      form.Load();
    }
    platform_.forms.ShowModal(form);
    if (!form.OKPressed()) return;
    const WaitPointer wait(platform_.shell);
    CategoryFilter filter = grid_.Filter();
    filter.SetCategoryFilter(form.FilterText());
    filter.SetFilterMode(form.MatchAll());
    ApplyFilter(std::move(filter));
  });
}

void YearPlan::Parts::Print_Click() {
  Guard(platform_.messages, "Error printing ", [&] {
    // What is printed is what is on show.
    Redraw(false);
    frmPrint form(grid_, names_,
                  {Properties().TitleName, grid_.Span().FirstMonth, Properties().DisplaySubject},
                  platform_);
    {
      const WaitPointer wait(platform_.shell);
      if (!form.Load()) return;
    }
    platform_.forms.ShowModal(form);
  });
}

void YearPlan::Parts::ApplyFilter(CategoryFilter filter) {
  const bool active = !filter.GetCategoryFilter().empty();
  elements.Toolbar1.SetButtonToolTip(toolbar_keys::Filter, filter.ToolTip());
  elements.Toolbar1.SetButtonImage(toolbar_keys::Filter,
                                   active ? toolbar_images::ActiveFilter : toolbar_images::Filter);
  grid_.SetFilter(std::move(filter));
  Redraw(false);
}

std::vector<std::string> YearPlan::Parts::CategoryNames() {
  if (!live_) return {};
  return CategoryNamesOf(colours_.CollectAllLists());
}

void YearPlan::Parts::CatDelete(std::string_view name) {
  if (live_) categoryCommands_.CatDelete(name);
}

void YearPlan::Parts::CatColour(std::string_view name) {
  if (live_) categoryCommands_.CatColour(name);
}

void YearPlan::Parts::CatRename(std::string_view newName, RenameReach reach) {
  if (live_) categoryCommands_.Rename(newName, reach);
}

bool YearPlan::Parts::AreCategoriesKnown() {
  // What another planner saved a moment ago.
  access_.Arrivals().Take();
  if (knownTitle_ != Properties().TitleName) ReloadCategories();
  return knownTitle_ == Properties().TitleName;
}

void YearPlan::Parts::ChangeCategories(std::vector<Category> categories) {
  grid_.SetCategories(CategoryTable(std::move(categories)));
  legend_.CategoriesChanged();
  Redraw(false);
}

bool YearPlan::Parts::IsCarried(std::string_view category) const {
  return std::any_of(grid_.Events().begin(), grid_.Events().end(), [&](const CalEvent& event) {
    return HasName(event.Categories, grid_.Filter().FilterSeparator(), category);
  });
}

void YearPlan::Parts::RenameOnShow(std::string_view from, std::string_view to) {
  const EventFields fields = grid_.Fields();
  ChangeEvents([&](EventCollection& events) {
    for (CalEvent& event : events) {
      event.Categories =
          WithNameReplaced(event.Categories, grid_.Filter().FilterSeparator(), from, to);
      fields.Derive(event);
    }
  });
}

std::optional<EventCollection> YearPlan::Parts::EventsOf(int viewYear,
                                                         const std::function<bool()>& goesOn) {
  const DisplaySpan span{viewYear, grid_.Span().FirstMonth};
  EventCollection events;
  if (!IsValidSpan(span)) return events;
  EventFields fields = grid_.Fields();
  fields.span = span;
  fields.columns = MonthColumns(span);
  const CachePaths paths = CachePathsOf(viewYear);
  // A file of its own: the other one knows what the displayed year's held.
  const auto load = [&] {
    ReportLoad(status::Starting);
    const LoadOutcome loaded =
        CacheFile(platform_.files, platform_.locale).Load(paths.cacheFile, fields, events);
    ReportLoad(status::Idle);
    return loaded;
  };
  LoadOutcome outcome = load();
  if (outcome == LoadOutcome::NoFile) {
    if (!RefreshAndWait(platform_, InputsOf(span, paths), goesOn)) return std::nullopt;
    outcome = load();
  }
  if (outcome != LoadOutcome::Loaded) {
    throw Error(errors::InputPastEnd, "The year " + std::to_string(viewYear) +
                                          " has no whole cache file: " + paths.cacheFile);
  }
  return events;
}

void YearPlan::Parts::BeginReadingYears() {
  refresh_.PauseTimer();
}

void YearPlan::Parts::EndReadingYears() {
  refresh_.ResumeTimer();
  ReloadEvents();
}

void YearPlan::Parts::mnuNew_Click() {
  const auto days = gridView_.DaysForNew();
  if (days && commands_.New(days->start, days->end)) gridView_.ClearSelection();
}

void YearPlan::Parts::mnuAbout_Click() {
  frmAbout form(platform_.shell);
  platform_.forms.ShowModal(form);
}

void YearPlan::Parts::mnuSelection_Click(int index) {
  for (MenuItem* mode : elements.mnuSelectionMode.entries) {
    mode->SetChecked(mode->Index() == index);
  }
  gridView_.SetSelectionMode(index);
}

}  // namespace velkor
