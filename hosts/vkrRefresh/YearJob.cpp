// hosts/vkrRefresh/YearJob.cpp: a calendar of its own for the refresh, and its end in words.
#include "hosts/vkrRefresh/YearJob.h"

#include <exception>
#include <new>
#include <ostream>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "calendar/ics/read/IcsReader.h"
#include "hosts/CalendarRefresh.h"
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
    const ReadingTime time(limits);
    store = CalendarStore(inputs.storeId);
    OpenIcsCalendar(store, inputs.storeId, WindowOf(span), ParseIcsFile);
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
