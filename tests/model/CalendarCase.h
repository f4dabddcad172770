// tests/model/CalendarCase.h: a calendar in memory, connected to a view of 2006.
#pragma once

#include <string>

#include "model/CalendarAccess.h"
#include "support/values/Error.h"
#include "tests/model/CalendarInMemory.h"
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

class CalendarCase : public CalendarInMemory {
 protected:
  CalendarCase() { access_.Open(); }

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

  RefusingWriter writer_;
  WatchedView view_;
  std::string appointmentForm_ = "IPM.Appointment";
  const Platform platform_ = seams_.On(embedded_, messages_);
  CalendarAccess access_{view_, view_, platform_, appointmentForm_};
};

}  // namespace velkor
