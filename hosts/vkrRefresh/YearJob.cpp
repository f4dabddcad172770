// hosts/vkrRefresh/YearJob.cpp: a calendar of its own for the refresh, and its end in words.
#include "hosts/vkrRefresh/YearJob.h"

#include <exception>
#include <new>
#include <ostream>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "calendar/ics/read/IcsAnswer.h"
#include "calendar/ics/read/IcsParser.h"
#include "calendar/set/ReadPlace.h"
#include "calendar/set/SetCalendar.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/vkrRefresh/ReadApart.h"
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

/// Of all calendars of a set that can be read; of the others, those of their last good copies.
std::vector<CalendarItem> ItemsOfSet(const std::string& path, const DateWindow& window,
                                     const ProcessLimits& limits) {
  const CalendarSet set = LoadSet(path);
  const std::vector<const SetSource*> sources = ShownSources(set);
  const std::vector<std::string> answers = ReadApart(sources, window, limits);
  std::vector<CalendarItem> items;
  for (std::size_t i = 0; i < sources.size(); ++i) {
    try {
      for (CalendarItem& item : DecodeAnswer(answers[i]).items) {
        item.entryId.insert(0, sources[i]->id);
        items.push_back(std::move(item));
      }
    } catch (const Error&) {
      // Whoever shows the set tells.
    }
  }
  return items;
}

std::vector<CalendarItem> ItemsOf(const std::string& calendar, const DateWindow& window,
                                  const ProcessLimits& limits) {
  if (IsSetPath(calendar)) return ItemsOfSet(calendar, window, limits);
  const ReadingTime time(limits);
  return ParseIcsFile(calendar, window).items;
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
    folder.Replace(ItemsOf(inputs.storeId, WindowOf(span), limits), WindowOf(span));
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
