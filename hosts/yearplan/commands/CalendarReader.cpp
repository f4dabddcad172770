// hosts/yearplan/commands/CalendarReader.cpp: reading a calendar file, its colours and its cache
// files.
#include "hosts/yearplan/commands/CalendarReader.h"

#include <algorithm>
#include <ostream>
#include <utility>
#include <vector>

#include "calendar/ics/read/IcsReader.h"
#include "categories/ColourList.h"
#include "categories/ColourRecords.h"
#include "categories/FirstColours.h"
#include "categories/LostNames.h"
#include "hosts/CalendarRefresh.h"
#include "model/CacheFile.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr std::size_t MostMessages = 20;

}  // namespace

CalendarReader::CalendarReader(const CommandLine& line, std::ostream& messages)
    : line_(line),
      messages_(messages),
      seams_(line.calendar, messages),
      outlook_(store_, seams_.locale,
               {.userName = LoginName(), .listSeparator = seams_.listSeparator}) {}

CategoryFilter CalendarReader::Filter() const {
  CategoryFilter filter(CategorySeparator(seams_.listSeparator));
  filter.SetCategoryFilter(line_.filter);
  filter.SetFilterMode(line_.matchAll);
  return filter;
}

void CalendarReader::Open(const DisplaySpan& first, const DisplaySpan& last) {
  const DateWindow window{WindowOf(first).from, WindowOf(last).to};
  if (CalendarFolder* const read = store_.DefaultCalendar()) {
    ParsedCalendar calendar = ReadIcsFile(line_.calendar, window);
    Report(calendar.diagnostics);
    read->Replace(std::move(calendar.items), window);
    return;
  }
  Report(OpenIcsCalendar(store_, line_.calendar, window));
  const std::string& trouble = seams_.environment.Trouble();
  if (!trouble.empty()) messages_ << trouble << '\n';
  session_ = outlook_.GetNamespace("MAPI");
  folder_ = session_->GetDefaultFolder(outlook::FolderCalendar);
  ReadCategories();
}

void CalendarReader::Report(const std::vector<Diagnostic>& diagnostics) {
  std::size_t more = 0;
  for (const Diagnostic& diagnostic : diagnostics) {
    std::string text = ToText(diagnostic);
    if (reported_.contains(text)) continue;
    if (reported_.size() < MostMessages) {
      messages_ << text << '\n';
    } else {
      ++more;
    }
    reported_.insert(std::move(text));
  }
  if (more > 0) messages_ << "... and " << more << " more\n";
}

CachePaths CalendarReader::PathsOf(int viewYear) {
  return MakeCachePaths(CacheFileName(outlook_.CurrentUserName(), viewYear, {}, seams_.locale),
                        seams_.environment, seams_.files);
}

std::size_t CalendarReader::Refresh(const DisplaySpan& span) {
  const RefreshRequest request{span, PathsOf(span.ViewYear), folder_->EntryID(),
                               folder_->StoreID()};
  const RefreshAnswer answer = RefreshPatiently(request, outlook_, seams_.files, seams_.locale);
  std::string text = MessageOf(answer.result, answer.error, request.paths);
  if (text.empty()) return answer.count;
  if (!answer.description.empty()) text += ": " + answer.description;
  throw Error(answer.error, text, "refresh");
}

std::unique_ptr<OutlookItem> CalendarReader::ItemOf(std::string_view eventId) {
  return session_->GetItemFromID(eventId, folder_->StoreID());
}

void CalendarReader::ReadCategories() {
  const std::string separator = CategorySeparator(seams_.listSeparator);
  const std::string lost = RemarkOnLostNames(*folder_, seams_.locale, line_.titleName, separator);
  if (!lost.empty()) messages_ << line_.calendar << ": " << lost << '\n';
  table_ = MakeFirstCategoryTable(CategoryTextsOf(*folder_), separator);
  try {
    if (const auto list = ColourRecords(*folder_, seams_.locale).FindList(line_.titleName)) {
      ListedCategories listed = CategoriesOf(*list);
      if (!listed.categories.empty()) table_ = CategoryTable(std::move(listed.categories));
      if (listed.fault) throw Error(*listed.fault);
    }
  } catch (const Error& error) {
    messages_ << "Error fetching category colours " << error.Number() << ' ' << error.Description()
              << '\n';
  }
}

EventCollection CalendarReader::Load(const std::string& cacheFile, const EventFields& fields) {
  EventCollection events;
  const LoadOutcome outcome =
      CacheFile(seams_.files, seams_.locale).Load(cacheFile, fields, events);
  if (outcome == LoadOutcome::NoFile) {
    throw Error(errors::FileNotFound,
                seams_.files.Exists(cacheFile)
                    ? cacheFile + " is no cache file of this version: its texts are not in UTF-8"
                    : "There is no cache file " + cacheFile);
  }
  if (outcome == LoadOutcome::LoadedInPart && events.Count() == 0) {
    throw Error(errors::BadFileMode, cacheFile + " is no cache file");
  }
  if (outcome == LoadOutcome::LoadedInPart) {
    messages_ << cacheFile << ": not a whole cache file; the first " << events.Count()
              << " events are shown\n";
  }
  return events;
}

}  // namespace velkor
