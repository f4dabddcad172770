// tests/model/CalendarInMemory.h: scripted seams over a calendar in memory.
#pragma once

#include <gmock/gmock.h>

#include <functional>
#include <string>
#include <utility>

#include "calendar/EmbeddedOutlook.h"
#include "platform/headless/HeadlessSeams.h"
#include "tests/model/SampleEvents.h"

namespace velkor {

inline CalendarItem SampleItem(std::string id, Date start, Date end) {
  CalendarItem item;
  item.fields.subject = "Subject of " + id;
  item.entryId = std::move(id);
  item.start = start;
  item.end = end;
  return item;
}

/// A hidden appointment with a list of colours; its identifier is the subject.
inline CalendarItem SampleRecord(const std::string& subject, std::string body,
                                 Date at = At(2011, 1, 1, 1, 30)) {
  CalendarItem item = SampleItem(subject, at, at);
  item.fields.subject = subject;
  item.fields.body = std::move(body);
  return item;
}

/// The default folder is "Mailbox\\Calendar", empty at first.
class CalendarInMemory : public testing::Test {
 protected:
  CalendarInMemory() { store_.SetDefaultCalendar(&calendar_); }

  HeadlessSeams seams_;
  ScriptedMessageBoxes messages_{[](const std::string& what) { ADD_FAILURE() << what; }};
  CalendarStore store_{"store"};
  CalendarFolder& root_ = store_.AddFolder("Mailbox", "root", outlook::ItemTypeMail);
  CalendarFolder& calendar_ = root_.AddFolder("Calendar", "calendar", outlook::ItemTypeAppointment);
  std::function<void(OutlookItem&)> inspect_ = [](OutlookItem&) {};
  EmbeddedOutlook embedded_{
      store_, seams_.locale, {.userName = "Ann", .inspector = [this](OutlookItem& item) {
                                inspect_(item);
                              }}};
};

}  // namespace velkor
