// tests/control/PlannerCase.h: a planner on scripted seams over a calendar in memory.
#pragma once

#include <string>
#include <vector>

#include "control/YearPlan.h"
#include "model/CacheRecord.h"
#include "model/SynchResult.h"
#include "platform/headless/ScriptedHost.h"
#include "tests/control/LoggedOutlook.h"
#include "tests/model/CalendarInMemory.h"
#include "tests/platform/headless/CountingPeer.h"
#include "tests/view/SampleGrid.h"

namespace velkor {

/// Today is 18 April 2005; the calendar's default folder is empty at first.
class PlannerCase : public CalendarInMemory {
 protected:
  PlannerCase() {
    inspect_ = [](OutlookItem&) { ADD_FAILURE() << "Nothing should be shown"; };
    bag_.values["AllEvents"] = true;
  }

  /// On show in 2005 for two days, without a category.
  const CalEvent EventA = SampleEvent("a", At(2005, 3, 3), At(2005, 3, 5));

  Platform On(OutlookApplication& outlook) { return seams_.On(outlook, messages_); }
  /// Reads the bag and runs the start-up sequence.
  void Start() {
    plan_.Resize({15000, 9000}, {});
    Start(plan_);
  }
  void Start(YearPlan& plan) {
    plan.ReadProperties(bag_);
    plan.Elements().tmrStart.Tick();
  }
  /// Every wait for a refresh ends at once.
  void AnswerEveryStop() {
    seams_.shell.onMessages = [&](int) { seams_.cacheUtilities.Complete(6); };
  }
  static std::string CacheFileOf(int year) { return "/temp/Ann" + std::to_string(year) + "0.tmp"; }
  std::string Records(const std::vector<CalEvent>& events) {
    std::string bytes;
    for (const CalEvent& event : events) {
      AppendCacheRecord(bytes, event.EventID, event.Subject, event.Categories, event.StartDate,
                        event.EndDate, seams_.locale);
    }
    return bytes;
  }
  /// What a refresh of the displayed year does that finds these events.
  void Refreshed(const std::vector<CalEvent>& events) {
    seams_.files.contents[seams_.cacheUtilities.started.back().cacheFile] = Records(events);
    seams_.cacheUtilities.Complete(static_cast<short>(SynchResult::CacheWritten));
  }
  /// The middle of a day's cell, in the coordinates of pic1.
  Point DayPoint(Date day, int band) {
    const GridCell cell = *plan_.Grid().Columns().CellOf(day);
    Point point = CentreOf(plan_.Grid(), cell.row, cell.column, band);
    point.y -= plan_.Elements().VScroll1.Value() *
               static_cast<double>(plan_.Grid().Geometry().pixel.height);
    return point;
  }
  void Click(MouseButton button, Point at) {
    PictureBox& pic1 = plan_.Elements().pic1;
    pic1.onMouseMove(at);
    pic1.onMouseDown(button, at);
    pic1.onMouseUp(button, at);
  }
  void Drag(Point from, Point to) {
    PictureBox& pic1 = plan_.Elements().pic1;
    pic1.onMouseMove(from);
    pic1.onMouseDown(MouseButton::Left, from);
    pic1.onMouseMove(to);
    pic1.onMouseUp(MouseButton::Left, to);
  }

  LoggedOutlook outlook_{embedded_};
  ScriptedHost host_;
  MemoryPropertyBag bag_;
  YearPlan plan_{On(outlook_), host_};
};

}  // namespace velkor
