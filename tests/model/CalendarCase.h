// tests/model/CalendarCase.h: a calendar in memory, connected to a view of 2006.
#pragma once

#include <string>

#include "model/BackgroundRefresh.h"
#include "model/CalendarAccess.h"
#include "model/Status.h"
#include "platform/Elements.h"
#include "tests/calendar/CalendarDoubles.h"
#include "tests/model/CalendarInMemory.h"
#include "tests/model/WatchedView.h"

namespace velkor {

class CalendarCase : public CalendarInMemory {
 protected:
  CalendarCase() {
    tmrItems_.onTimer = [this] { access_.Arrivals().Take(); };
    access_.Open();
    seams_.shell.onMessages = [this](int) { seams_.cacheUtilities.Complete(6); };
    refresh_.CreateCacheUtility();
    refresh_.StartRefresh(false);
    view_.Take();
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
    const std::string id = calendar_.SaveNew(std::move(item), false, At(2006, 1, 1))->entryId;
    tmrItems_.Tick();
    return id;
  }
  std::string Told() { return messages_.Shown().back().text; }
  /// A forced refresh cancels the outstanding one before it starts.
  void NoteRefresh(Colour colour) {
    const bool isForced = !view_.log.empty() && view_.log.back() == "force";
    if (colour == status::Failed) view_.log.emplace_back("force");
    if (colour == status::Starting && !isForced) view_.log.emplace_back("refresh");
  }

  ScriptedWriter writer_;
  WatchedView view_;
  std::string appointmentForm_ = "IPM.Appointment";
  const Platform platform_ = seams_.On(embedded_, messages_);
  Timer tmrItems_{"tmrItems", 50};
  Timer tmrBackground_{"tmrBackground", 50000};
  /// One is outstanding from the beginning.
  BackgroundRefresh refresh_{platform_, tmrBackground_, [] { return RefreshInputs(); },
                             [this](Colour colour) { NoteRefresh(colour); }, view_.view.reload};
  CalendarAccess access_{view_.view, refresh_, platform_, tmrItems_, appointmentForm_};
};

}  // namespace velkor
