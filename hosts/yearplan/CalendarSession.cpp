// hosts/yearplan/CalendarSession.cpp: one year of a calendar file: refreshed, loaded and laid out.
#include "hosts/yearplan/CalendarSession.h"

#include <algorithm>
#include <ostream>
#include <utility>

#include "calendar/EmbeddedOutlook.h"
#include "calendar/IcsReader.h"
#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/yearplan/FirstCategoryTable.h"
#include "model/CacheFile.h"
#include "support/RegIO.h"
#include "support/values/Error.h"
#include "tools/SilentPlanner.h"

namespace velkor {
namespace {

constexpr std::size_t MostMessages = 20;

void Report(const std::vector<Diagnostic>& diagnostics, std::ostream& messages) {
  const std::size_t shown = std::min(diagnostics.size(), MostMessages);
  for (std::size_t i = 0; i < shown; ++i) messages << ToText(diagnostics[i]) << '\n';
  if (shown < diagnostics.size()) {
    messages << "... and " << diagnostics.size() - shown << " more\n";
  }
}

}  // namespace

CalendarSession::CalendarSession(const CommandLine& line, std::ostream& messages)
    : line_(line),
      messages_(messages),
      environment_(line.calendar),
      messageBoxes_(messages),
      today_(line.today.value_or(clock_.Now())),
      span_{line.year.value_or(DisplaySpan{0, line.firstMonth}.ViewYearOf(today_)),
            line.firstMonth},
      listSeparator_(RegIO::ListSeparator(registry_, messageBoxes_)),
      paths_{line.cacheFile, {}} {}

std::size_t CalendarSession::Refresh() {
  CalendarStore store("yearplan");
  Report(OpenIcsCalendar(store, line_.calendar, WindowOf(span_)), messages_);
  EmbeddedOutlook outlook(store, locale_,
                          {.userName = LoginName(), .listSeparator = listSeparator_});
  const auto folder = outlook.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar);
  paths_ =
      MakeCachePaths(velkor::CacheFileName(outlook.CurrentUserName(), span_.ViewYear, {}, locale_),
                     environment_, files_);
  const std::size_t count = RefreshFolder(*folder, outlook);
  ReadCategories(*folder);
  return count;
}

std::size_t CalendarSession::RefreshFolder(OutlookFolder& folder, OutlookApplication& outlook) {
  const RefreshRequest request{span_, paths_, folder.EntryID(), folder.StoreID()};
  const RefreshAnswer answer = RefreshPatiently(request, outlook, files_, locale_);
  std::string text = MessageOf(answer.result, answer.error, paths_);
  if (text.empty()) return answer.count;
  if (!answer.description.empty()) text += ": " + answer.description;
  throw Error(answer.error, text, "refresh");
}

void CalendarSession::ReadCategories(OutlookFolder& folder) {
  // Events name their categories as the cache file could keep them, so a first table does too.
  std::vector<std::string> texts;
  std::size_t lost = 0;
  const auto items = folder.Items();
  for (auto item = items->GetFirst(); item; item = items->GetNext()) {
    texts.push_back(AsCached(locale_, item->Categories()));
    const std::string subject = item->Subject();
    if (AsCached(locale_, subject) != subject) ++lost;
  }
  if (lost > 0) {
    messages_ << line_.calendar << ": " << lost << " of all its subjects hold characters that code "
              << "page " << locale_.AnsiCodePage() << " of the cache file lacks; each shows as ?\n";
  }
  table_ = MakeFirstCategoryTable(texts, CategorySeparator(listSeparator_));
  try {
    if (const auto list = ColourRecords(folder, locale_).FindList(line_.titleName)) {
      ListedCategories listed = CategoriesOf(*list);
      if (!listed.categories.empty()) table_ = CategoryTable(std::move(listed.categories));
      if (listed.fault) throw Error(*listed.fault);
    }
  } catch (const Error& error) {
    messages_ << "Error fetching category colours " << error.Number() << ' ' << error.Description()
              << '\n';
  }
}

EventCollection CalendarSession::LoadEvents(const EventFields& fields) {
  SilentPlanner planner;
  EventCollection events;
  const LoadOutcome outcome =
      CacheFile(files_, locale_, planner).Load(paths_.cacheFile, fields, events);
  if (outcome == LoadOutcome::NoFile) {
    throw Error(errors::FileNotFound, "There is no cache file " + paths_.cacheFile);
  }
  if (outcome == LoadOutcome::LoadedInPart && events.Count() == 0) {
    throw Error(errors::BadFileMode, paths_.cacheFile + " is no cache file");
  }
  if (outcome == LoadOutcome::LoadedInPart) {
    messages_ << paths_.cacheFile << ": not a whole cache file; the first " << events.Count()
              << " events are shown\n";
  }
  return events;
}

CategoryTable CalendarSession::TableOfCache() {
  const CategoryTable none;
  std::vector<std::string> texts;
  SilentPlanner planner;
  EventCollection events;
  CacheFile(files_, locale_, planner)
      .Load(paths_.cacheFile, EventFields{span_, MonthColumns(span_), none}, events);
  for (const CalEvent& event : events) texts.push_back(event.Categories);
  return MakeFirstCategoryTable(texts, CategorySeparator(listSeparator_));
}

void CalendarSession::ReportUnknownNames(const YearGrid& grid) {
  for (const std::string& name : grid.Filter().CategoryFilterList()) {
    CategoryFilter alone(grid.Filter().FilterSeparator());
    alone.SetCategoryFilter(name);
    const bool carried =
        std::any_of(grid.Events().begin(), grid.Events().end(),
                    [&](const CalEvent& event) { return !alone.IsFilteredOut(event.Categories); });
    if (carried) continue;
    messages_ << "No event of the year has the category \"" << name << "\" of the filter; names "
              << "are told apart by case and joined by \"" << grid.Filter().FilterSeparator()
              << "\"\n";
  }
}

PlannedYear CalendarSession::Plan() {
  if (line_.calendar.empty()) {
    table_ = TableOfCache();
  } else {
    Refresh();
  }
  CategoryFilter filter(CategorySeparator(listSeparator_));
  filter.SetCategoryFilter(line_.filter);
  filter.SetFilterMode(line_.matchAll);
  PlannedYear year{YearGrid(span_, *table_, std::move(filter), line_.grid),
                   Locale::LoadCalendarNames(locale_, locale_.ThreadLocale()),
                   {},
                   today_};
  Locale::ApplyCodePageFont(year.font, Locale::AnsiCodePageOf(locale_, locale_.ThreadLocale()));
  year.grid.SetEvents(LoadEvents(year.grid.Fields()));
  ReportUnknownNames(year.grid);
  return year;
}

}  // namespace velkor
