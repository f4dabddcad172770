// tests/standin/StandInSession.h: what all objects of the program share; part of the
// calendar program for tests, never shipped.
#pragma once

#include <map>
#include <memory>
#include <string>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "platform/windows/system/WindowsLocale.h"
#include "platform/windows/system/WindowsSystem.h"
#include "tests/standin/CallWatch.h"
#include "tests/standin/ServerLoop.h"

namespace velkor {

/// Starts with "Personal Folders", in it an empty "Calendar", the default one, and an "Inbox".
struct StandInSession {
  /// @param serverLoop  outlives this
  explicit StandInSession(ServerLoop& serverLoop);

  ServerLoop& loop;
  CallWatch watch;
  WindowsLocale locale;
  WindowsClock clock;
  CalendarStore store;
  CalendarFolder& calendar;
  EmbeddedOutlook outlook;
  std::unique_ptr<OutlookNamespace> space;
  /// By identifier of the item, where one was saved.
  std::map<std::string, bool> reminders;
};

/// Throws Error with the number by which Outlook says that there is no such object
/// (MAPI_E_NOT_FOUND).
[[noreturn]] void FailNotFound();

}  // namespace velkor
