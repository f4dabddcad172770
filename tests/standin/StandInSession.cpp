// tests/standin/StandInSession.cpp: the folders at the start, and the calendar over them.
#include "tests/standin/StandInSession.h"

#include "platform/windows/system/Wide.h"
#include "values/Error.h"

namespace velkor {
namespace {

CalendarFolder& AddFolders(CalendarStore& store) {
  CalendarFolder& top = store.AddFolder("Personal Folders", "F-TOP", outlook::ItemTypeMail);
  top.AddFolder("Inbox", "F-INBOX", outlook::ItemTypeMail);
  CalendarFolder& calendar = top.AddFolder("Calendar", "F-CALENDAR", outlook::ItemTypeAppointment);
  store.SetDefaultCalendar(&calendar);
  return calendar;
}

std::string ListSeparator() {
  wchar_t text[8] = {};
  const int length =
      ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SLIST, text, static_cast<int>(std::size(text)));
  return length > 1 ? ToUtf8(std::wstring_view(text, static_cast<std::size_t>(length - 1))) : ",";
}

}  // namespace

StandInSession::StandInSession(ServerLoop& serverLoop)
    : loop(serverLoop),
      store("S-STANDIN"),
      calendar(AddFolders(store)),
      outlook(store, locale,
              {.userName = "Test User",
               .listSeparator = ListSeparator(),
               .version = "16.0.0.1",
               .post = [this](std::function<void()> task) { loop.Post(std::move(task)); },
               .clock = [this] { return clock.Now(); }}),
      space(outlook.GetNamespace("MAPI")) {}

void FailNotFound() {
  throw Error(static_cast<long>(0x8004010F), "The operation failed. An object could not be found.");
}

}  // namespace velkor
