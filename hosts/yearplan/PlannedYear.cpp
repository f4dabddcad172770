// hosts/yearplan/PlannedYear.cpp: a year of a calendar file, refreshed, loaded and laid out.
#include "hosts/yearplan/PlannedYear.h"

#include <pwd.h>
#include <unistd.h>

#include <QCryptographicHash>
#include <QFileInfo>
#include <algorithm>
#include <chrono>
#include <ostream>
#include <thread>
#include <utility>
#include <vector>

#include "calendar/EmbeddedOutlook.h"
#include "calendar/IcsReader.h"
#include "categories/ColourList.h"
#include "categories/ColourStore.h"
#include "hosts/yearplan/FirstCategoryTable.h"
#include "model/CacheFile.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/DesktopLocale.h"
#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/TerminalMessageBoxes.h"
#include "refresh/RefreshYear.h"
#include "support/RegIO.h"
#include "support/values/Error.h"
#include "tools/SilentPlanner.h"

namespace velkor {
namespace {

constexpr std::size_t MostMessages = 20;

/// The desktop's side of the seams.
struct Desktop {
  explicit Desktop(std::ostream& messageStream) : messages(messageStream) {}

  DesktopClock clock;
  DesktopEnvironment environment;
  DesktopFiles files;
  DesktopLocale locale;
  DesktopRegistry registry;
  TerminalMessageBoxes messages;
};

std::string LoginName() {
  const passwd* user = getpwuid(geteuid());
  return user != nullptr && user->pw_name != nullptr ? user->pw_name : "user";
}

/// What stands for the Folder property in the cache file's name: the file's name for people, and
/// a hash of its whole path so that no two calendars share a cache.
std::string FolderOf(const std::string& calendar) {
  const QFileInfo file(QString::fromStdString(calendar));
  const QString place =
      file.canonicalFilePath().isEmpty() ? file.absoluteFilePath() : file.canonicalFilePath();
  const QByteArray hash =
      QCryptographicHash::hash(place.toUtf8(), QCryptographicHash::Sha256).toHex().left(16);
  return file.completeBaseName().left(40).toStdString() + " " + hash.toStdString();
}

void Report(const std::vector<Diagnostic>& diagnostics, std::ostream& messages) {
  const std::size_t shown = std::min(diagnostics.size(), MostMessages);
  for (std::size_t i = 0; i < shown; ++i) messages << ToText(diagnostics[i]) << '\n';
  if (shown < diagnostics.size()) {
    messages << "... and " << diagnostics.size() - shown << " more\n";
  }
}

/// Another run may hold the work file of the same calendar and year; it will not hold it for long.
RefreshAnswer RefreshPatiently(const RefreshRequest& request, OutlookApplication& outlook,
                               Desktop& desktop) {
  constexpr int Attempts = 50;
  constexpr std::chrono::milliseconds Pause{100};
  for (int attempt = 1;; ++attempt) {
    RefreshAnswer answer = RefreshYear(request, outlook, desktop.files, desktop.locale);
    if (answer.result != SynchResult::WorkFileNotOpened || attempt == Attempts) return answer;
    std::this_thread::sleep_for(Pause);
  }
}

void Refresh(const RefreshRequest& request, OutlookApplication& outlook, Desktop& desktop) {
  const RefreshAnswer answer = RefreshPatiently(request, outlook, desktop);
  std::string text = MessageOf(answer.result, answer.error, request.paths);
  if (text.empty()) return;
  if (!answer.description.empty()) text += " " + answer.description;
  throw Error(answer.error, text, "refresh");
}

/// A text after its way through the cache file.
std::string AsCached(const std::string& text, LocaleApi& locale) {
  const CodePage page = locale.AnsiCodePage();
  return locale.FromCodePage(locale.ToCodePage(text, page), page);
}

/// The colours that the calendar holds for this title, else a first table of the host's own.
CategoryTable TableOf(OutlookFolder& folder, const CommandLine& line, const std::string& separator,
                      Desktop& desktop, std::ostream& messages) {
  try {
    if (const auto list = ColourStore(folder, desktop.locale).FindList(line.titleName)) {
      return CategoryTable(CategoriesOf(*list));
    }
  } catch (const Error& error) {
    messages << "Error fetching category colours " << error.Number() << ' ' << error.Description()
             << '\n';
  }
  // Events name their categories as the cache file could keep them, so the table does too.
  std::vector<std::string> texts;
  const auto items = folder.Items();
  for (auto item = items->GetFirst(); item; item = items->GetNext()) {
    texts.push_back(AsCached(item->Categories(), desktop.locale));
  }
  return MakeFirstCategoryTable(texts, separator);
}

/// Says how many subjects the cache file cannot keep as they are.
void ReportLostCharacters(const CommandLine& line, OutlookFolder& folder, LocaleApi& locale,
                          std::ostream& messages) {
  std::size_t lost = 0;
  const auto items = folder.Items();
  for (auto item = items->GetFirst(); item; item = items->GetNext()) {
    const std::string subject = item->Subject();
    if (AsCached(subject, locale) != subject) ++lost;
  }
  if (lost == 0) return;
  messages << line.calendar << ": " << lost << " subjects hold characters that code page "
           << locale.AnsiCodePage() << " of the cache file lacks; each shows as ?\n";
}

CategoryTable TableOfCache(const std::string& cacheFile, const DisplaySpan& span,
                           const std::string& separator, Desktop& desktop) {
  const CategoryTable none;
  EventCollection events;
  SilentPlanner planner;
  CacheFile(desktop.files, desktop.locale, planner)
      .Load(cacheFile, EventFields{span, MonthColumns(span), none, separator}, events);
  std::vector<std::string> texts;
  for (const CalEvent& event : events) texts.push_back(event.Categories);
  return MakeFirstCategoryTable(texts, separator);
}

void Load(PlannedYear& year, Desktop& desktop, std::ostream& messages) {
  SilentPlanner planner;
  const LoadOutcome outcome =
      CacheFile(desktop.files, desktop.locale, planner)
          .Load(year.paths.cacheFile, year.grid.Fields(), year.grid.Events());
  if (outcome == LoadOutcome::NoFile) {
    throw Error(errors::FileNotFound, "There is no cache file " + year.paths.cacheFile);
  }
  if (outcome == LoadOutcome::LoadedInPart) {
    messages << year.paths.cacheFile << ": not a whole cache file; the first "
             << year.grid.Events().Count() << " events are shown\n";
  }
  year.grid.LayOut();
}

}  // namespace

PlannedYear PlanYear(const CommandLine& line, std::ostream& messages) {
  Desktop desktop(messages);
  const Date today = line.today.value_or(desktop.clock.Now());
  DisplaySpan span{0, line.firstMonth};
  span.ViewYear = line.year.value_or(span.ViewYearOf(today));

  const std::string listSeparator = RegIO::ListSeparator(desktop.registry, desktop.messages);
  CategoryFilter filter(CategorySeparator(listSeparator));
  filter.SetCategoryFilter(line.filter);
  filter.SetFilterMode(line.matchAll);

  CachePaths paths{line.cacheFile, {}};
  CategoryTable table;
  if (line.calendar.empty()) {
    table = TableOfCache(line.cacheFile, span, filter.FilterSeparator(), desktop);
  } else {
    CalendarStore store("yearplan");
    Report(OpenIcsCalendar(store, line.calendar,
                           {span.ViewStartDate(), span.ViewEndDate().AddDays(1)}),
           messages);
    EmbeddedOutlook outlook(store, desktop.locale,
                            {.userName = LoginName(), .listSeparator = listSeparator});
    const auto folder = outlook.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar);
    paths = MakeCachePaths(CacheFileName(outlook.CurrentUserName(), span.ViewYear,
                                         FolderOf(line.calendar), desktop.locale),
                           desktop.environment, desktop.files);
    Refresh({span, paths, folder->EntryID(), folder->StoreID()}, outlook, desktop);
    ReportLostCharacters(line, *folder, desktop.locale, messages);
    table = TableOf(*folder, line, filter.FilterSeparator(), desktop, messages);
  }

  const LocaleId locale = desktop.locale.ThreadLocale();
  PlannedYear year{YearGrid(span, std::move(table), std::move(filter), line.grid),
                   Locale::LoadCalendarNames(desktop.locale, locale),
                   {},
                   today,
                   std::move(paths)};
  Locale::ApplyCodePageFont(year.font, desktop.locale.AnsiCodePage());
  Load(year, desktop, messages);
  return year;
}

}  // namespace velkor
