// tests/model/CalendarCase.h: a calendar in memory, connected to a view of 2006.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>

#include "calendar/EmbeddedOutlook.h"
#include "model/CalendarAccess.h"
#include "platform/headless/HeadlessSeams.h"
#include "support/values/Error.h"
#include "tests/model/WatchedView.h"

namespace velkor {

/// Keeps items in memory until it is told to refuse.
class RefusingWriter : public CalendarWriter {
 public:
  bool refuses = true;

  CalendarItem WriteNew(const CalendarItem& item, bool /*reminder*/) override {
    Check();
    CalendarItem saved = item;
    saved.entryId = "saved " + std::to_string(++count_);
    return saved;
  }
  CalendarItem WriteChange(const CalendarItem& after, const ItemChange& /*change*/) override {
    Check();
    return after;
  }
  void WriteDeletion(const CalendarItem& /*item*/) override { Check(); }
  void Refresh() override {}

 private:
  void Check() const {
    if (refuses) throw Error(errors::CalendarFailed, "The disk is full.");
  }
  int count_ = 0;
};

inline CalendarItem SampleItem(std::string id, Date start, Date end) {
  CalendarItem item;
  item.fields.subject = "Subject of " + id;
  item.entryId = std::move(id);
  item.start = start;
  item.end = end;
  return item;
}

class CalendarCase : public testing::Test {
 protected:
  CalendarCase() {
    store_.SetDefaultCalendar(&calendar_);
    access_.Open();
  }

  /// At 9 o'clock on Thursdays of 2006, and on one before it.
  static CalendarItem Weekly() {
    CalendarItem item = SampleItem("weekly", At(2005, 12, 29, 9), At(2005, 12, 29, 10));
    item.recurring = true;
    for (const int day : {-2, 5, 12, 19}) {
      item.occurrences.push_back({At(2006, 1, day, 9), At(2006, 1, day, 10), -1});
    }
    return item;
  }
  /// Saves it as another program does: the folder tells of it.
  std::string Save(CalendarItem item) {
    return calendar_.SaveNew(std::move(item), false, At(2006, 1, 1))->entryId;
  }
  std::string Told() { return messages_.Shown().back().text; }

  HeadlessSeams seams_;
  ScriptedMessageBoxes messages_{[](const std::string& what) { ADD_FAILURE() << what; }};
  CalendarStore store_{"store"};
  CalendarFolder& root_ = store_.AddFolder("Mailbox", "root", outlook::ItemTypeMail);
  CalendarFolder& calendar_ = root_.AddFolder("Calendar", "calendar", outlook::ItemTypeAppointment);
  std::function<void(OutlookItem&)> inspect_ = [](OutlookItem&) {};
  EmbeddedOutlook outlook_{
      store_, seams_.locale, {.userName = "Ann", .inspector = [this](OutlookItem& item) {
                                inspect_(item);
                              }}};
  RefusingWriter writer_;
  WatchedView view_;
  std::string appointmentForm_ = "IPM.Appointment";
  const Platform platform_ = seams_.On(outlook_, messages_);
  CalendarAccess access_{view_, view_, platform_, appointmentForm_};
};

}  // namespace velkor
