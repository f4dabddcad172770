// hosts/vkrRefresh/YearJob.cpp: a calendar of its own for the refresh, and its end in words.
#include "hosts/vkrRefresh/YearJob.h"

#include <algorithm>
#include <exception>
#include <iterator>
#include <new>
#include <ostream>
#include <set>
#include <utility>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "calendar/ics/read/IcsAnswer.h"
#include "calendar/ics/read/IcsParser.h"
#include "calendar/set/ReadPlace.h"
#include "calendar/set/SetCalendar.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/vkrRefresh/ReadApart.h"
#include "model/CacheRecord.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/DesktopLocale.h"
#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/TerminalMessageBoxes.h"
#include "support/RegIO.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// The user's list separator, as the client's own session reads it.
std::string ListSeparator() {
  DesktopRegistry registry;
  std::ostream nowhere(nullptr);
  TerminalMessageBoxes messages(nowhere);
  return RegIO::ListSeparator(registry, messages);
}

/// What the year's cache file has of these calendars: items as RefreshYear writes them again.
std::vector<CalendarItem> ItemsInCache(const std::string& cacheFile,
                                       const std::set<std::string>& prefixes) {
  std::vector<CalendarItem> items;
  DesktopFiles files;
  DesktopLocale locale;
  const auto bytes = files.Read(cacheFile);
  if (!bytes || prefixes.empty()) return items;
  const std::size_t length = prefixes.begin()->size();
  CacheRecordReader records(*bytes, locale);
  for (CalEvent event; records.Next(event);) {
    if (!prefixes.contains(event.EventID.substr(0, length))) continue;
    CalendarItem& item = items.emplace_back();
    item.entryId = std::move(event.EventID);
    item.fields.subject = std::move(event.Subject);
    if (!event.Categories.empty()) item.fields.categories = {std::move(event.Categories)};
    item.start = event.StartDate;
    item.end = event.EndDate;
  }
  return items;
}

/// Of all calendars of a set that can be read, and of the last good copies of others; what has
/// neither keeps what the cache file has of it.
std::vector<CalendarItem> ItemsOfSet(const RefreshInputs& inputs, const DateWindow& window,
                                     const ProcessLimits& limits) {
  const CalendarSet set = LoadSet(inputs.storeId);
  const std::vector<const SetSource*> sources = ShownSources(set);
  const std::vector<std::string> answers = ReadApart(sources, window, limits);
  std::vector<CalendarItem> items;
  std::set<std::string> failed;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    try {
      for (CalendarItem& item : DecodeAnswer(answers[i]).items) {
        item.entryId.insert(0, sources[i]->id);
        items.push_back(std::move(item));
      }
    } catch (const Error&) {
      // Whoever shows the set tells.
      failed.insert(sources[i]->id);
    }
  }
  std::ranges::move(ItemsInCache(inputs.cacheFile, failed), std::back_inserter(items));
  return items;
}

std::vector<CalendarItem> ItemsOf(const RefreshInputs& inputs, const DateWindow& window,
                                  const ProcessLimits& limits) {
  if (IsSetPath(inputs.storeId)) return ItemsOfSet(inputs, window, limits);
  const ReadingTime time(limits);
  return ParseIcsFile(inputs.storeId, window).items;
}

RefreshAnswer Refresh(const RefreshInputs& inputs, const ProcessLimits& limits) {
  const DisplaySpan span{inputs.viewYear, inputs.firstMonth};
  if (!IsValidSpan(span)) {
    throw Error(errors::InvalidProcedureCall, "There is no year " +
                                                  std::to_string(inputs.viewYear) + " from month " +
                                                  std::to_string(inputs.firstMonth) + " on.");
  }
  CalendarStore store(inputs.storeId);
  DesktopFiles files;
  DesktopLocale locale;
  // The user's name plays no part in what a refresh writes.
  EmbeddedOutlook outlook(store, locale, {.userName = {}, .listSeparator = ListSeparator()});
  const RefreshRequest request = RequestOf(inputs);
  const auto open = [&] {
    store = CalendarStore(inputs.storeId);
    CalendarFolder& folder =
        store.AddFolder({}, FolderIdOf(inputs.storeId), outlook::ItemTypeAppointment);
    folder.Replace(ItemsOf(inputs, WindowOf(span), limits), WindowOf(span));
    store.SetDefaultCalendar(&folder);
  };
  return RefreshPatiently(request, outlook, files, locale, {}, open);
}

std::string TextOf(SynchResult result, long error, const std::string& words) {
  return std::to_string(static_cast<short>(result)) + ' ' + std::to_string(error) + ' ' + words +
         '\n';
}

}  // namespace

std::string AnswerOfYear(const RefreshInputs& inputs, const ProcessLimits& limits) {
  try {
    const RefreshAnswer answer = Refresh(inputs, limits);
    return TextOf(answer.result, answer.error, answer.description);
  } catch (const Error& error) {
    return TextOf(SynchResult::FetchingFailed, error.Number(), error.Description());
  } catch (const std::bad_alloc&) {
    return TextOf(SynchResult::FetchingFailed, errors::CalendarFailed,
                  "The calendar file " + inputs.storeId + " needs more memory than is allowed.");
  } catch (const std::exception& error) {
    return TextOf(SynchResult::FetchingFailed, errors::InvalidProcedureCall, error.what());
  }
}

}  // namespace velkor
