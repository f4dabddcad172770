// tests/control/PlannerCase.h: a planner on scripted seams over a calendar in memory.
#pragma once

#include <gmock/gmock.h>

#include <string>
#include <utility>
#include <vector>

#include "calendar/EmbeddedOutlook.h"
#include "control/YearPlan.h"
#include "model/CacheRecord.h"
#include "model/SynchResult.h"
#include "platform/headless/HeadlessSeams.h"
#include "platform/headless/ScriptedHost.h"
#include "tests/control/LoggedOutlook.h"
#include "tests/model/SampleEvents.h"
#include "view/YearGrid.h"

namespace velkor {

/// Counts what a native window would be asked to do.
class CountingPeer : public ElementPeer {
 public:
  int changes = 0;
  std::vector<Rect> parts;
  std::vector<Point> popUps;

  void Changed() override { ++changes; }
  void Invalidate(const Rect& part) override { parts.push_back(part); }
  void PopUp(Point position) override { popUps.push_back(position); }
};

/// Today is 18 April 2005; the calendar's default folder is empty at first.
class PlannerCase : public testing::Test {
 protected:
  PlannerCase() {
    store_.SetDefaultCalendar(&calendar_);
    bag_.values["AllEvents"] = true;
  }

  Platform On(OutlookApplication& outlook) { return seams_.On(outlook, messages_); }
  /// Reads the bag and runs the start-up sequence.
  void Start() {
    plan_.Resize({15000, 9000}, {});
    plan_.ReadProperties(bag_);
    plan_.Elements().tmrStart.Tick();
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
  CalendarItem Item(const std::string& id, Date start, Date end) {
    CalendarItem item;
    item.entryId = id;
    item.fields.subject = "Subject of " + id;
    item.start = start;
    item.end = end;
    return item;
  }
  /// The middle of a cell, in the coordinates of pic1.
  Point CellPoint(int row, int column, int band) {
    const GridGeometry& geometry = plan_.Grid().Geometry();
    const double offset =
        plan_.Elements().VScroll1.Value() * static_cast<double>(geometry.pixel.height);
    return {(geometry.ColumnEdge(column - 1) + geometry.ColumnEdge(column)) / 2,
            geometry.RowTop(plan_.Grid().Layout(), row) + geometry.BandEdge(band) -
                geometry.BandEdge(1) / 2 - offset};
  }
  Point DayPoint(Date day, int band) {
    const GridCell cell = *plan_.Grid().Columns().CellOf(day);
    return CellPoint(cell.row, cell.column, band);
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

  HeadlessSeams seams_;
  ScriptedMessageBoxes messages_{[](const std::string& what) { ADD_FAILURE() << what; }};
  CalendarStore store_{"store"};
  CalendarFolder& calendar_ =
      store_.AddFolder("Calendar", "calendar", outlook::ItemTypeAppointment);
  std::function<void(OutlookItem&)> inspect_ = [](OutlookItem&) {
    ADD_FAILURE() << "Nothing should be shown";
  };
  EmbeddedOutlook embedded_{
      store_, seams_.locale, {.userName = "Ann", .inspector = [this](OutlookItem& item) {
                                inspect_(item);
                              }}};
  LoggedOutlook outlook_{embedded_};
  ScriptedHost host_;
  MemoryPropertyBag bag_;
  YearPlan plan_{On(outlook_), host_};
};

}  // namespace velkor
