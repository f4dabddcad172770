// hosts/vkrRefresh/main.cpp: the cache utility: refreshes the cache files of one client.
#include <unistd.h>

#include <QCoreApplication>
#include <cstdio>
#include <exception>
#include <ostream>
#include <string>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "calendar/ics/read/IcsReader.h"
#include "hosts/CalendarRefresh.h"
#include "hosts/vkrRefresh/RefreshCommands.h"
#include "platform/desktop/DesktopFiles.h"
#include "platform/desktop/DesktopLocale.h"
#include "platform/desktop/DesktopRegistry.h"
#include "platform/desktop/RefreshProtocol.h"
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

RefreshAnswer Refresh(const RefreshInputs& inputs, RefreshCommands& commands) {
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
  const RefreshRequest request{
      span, {inputs.cacheFile, inputs.workFile}, inputs.folderId, inputs.storeId};
  const auto open = [&] {
    store = CalendarStore(inputs.storeId);
    commands.RunUnasked([&] { OpenIcsCalendar(store, inputs.storeId, WindowOf(span)); });
  };
  return RefreshPatiently(
      request, outlook, files, locale, [&] { return !commands.Stopped(); }, open);
}

refresh_protocol::Report ReportOf(const RefreshInputs& inputs, RefreshCommands& commands) {
  constexpr auto Failed = static_cast<short>(SynchResult::FetchingFailed);
  try {
    const RefreshAnswer answer = Refresh(inputs, commands);
    return {static_cast<short>(answer.result), answer.error, answer.description};
  } catch (const Error& error) {
    return {Failed, error.Number(), error.Description()};
  } catch (const std::exception& error) {
    return {Failed, 0, error.what()};
  }
}

bool Write(const std::string& line) {
  return std::fwrite(line.data(), 1, line.size(), stdout) == line.size() &&
         std::fflush(stdout) == 0;
}

}  // namespace
}  // namespace velkor

int main(int argc, char** argv) {
  // A group of its own, so that the reader of the calendar ends with this process.
  ::setpgid(0, 0);
  const QCoreApplication application(argc, argv);
  velkor::RefreshCommands commands;
  while (const auto inputs = commands.Next()) {
    const velkor::refresh_protocol::Report report = velkor::ReportOf(*inputs, commands);
    commands.Done();
    // A client that does not listen any more is gone.
    if (!velkor::Write(velkor::refresh_protocol::Encode(report))) ::_exit(1);
  }
  return 0;
}
