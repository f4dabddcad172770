// tests/model/WatchedView.h: a view of 2006 that writes down what it is asked to do.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "model/EventView.h"
#include "model/Planner.h"
#include "span/CategoryFilter.h"
#include "tests/model/SampleEvents.h"

namespace velkor {

class WatchedView : public EventView, public Planner {
 public:
  EventCollection events;
  DisplaySpan span{2006, 1};
  CategoryTable categories = SampleCategories();
  CategoryFilter filter;
  bool hideNonCategoryItems = false;
  int reloads = 0;
  bool outstanding = false;
  bool busy = false;
  bool categoriesKnown = true;
  std::vector<Colour> statuses;
  /// Called once, by the next status.
  std::function<void()> onStatus;
  std::function<void()> onCancel;

  const EventCollection& Events() const override { return events; }
  EventFields Fields() const override {
    return {span, MonthColumns(span), categories, ", ", hideNonCategoryItems};
  }
  const CategoryFilter& Filter() const override { return filter; }
  void ChangeEvents(const std::function<void(EventCollection&)>& change) override {
    change(events);
    log_.emplace_back("change");
  }
  void ReloadEvents() override {
    ++reloads;
    log_.emplace_back("reload");
  }
  void RewriteCache() override { log_.emplace_back("rewrite"); }
  bool ReloadCategories() override {
    log_.emplace_back("colours");
    return categoriesKnown;
  }

  void ReportStatus(Colour colour) override {
    statuses.push_back(colour);
    if (const auto once = std::exchange(onStatus, nullptr)) once();
  }
  bool RefreshOutstanding() const override { return outstanding; }
  void CancelRefresh() override {
    outstanding = false;
    log_.emplace_back("cancel");
    if (onCancel) onCancel();
  }
  void StartRefresh(bool force) override { log_.emplace_back(force ? "force" : "refresh"); }
  void FollowChanges(const std::function<bool()>& steps) override {
    if (steps()) log_.emplace_back("told");
  }
  bool IsRefreshBusy() const override { return busy; }

  /// What was asked since the last call.
  std::vector<std::string> Take() { return std::exchange(log_, {}); }

  /// Each event as "id day.month hour".
  std::vector<std::string> Shown() const {
    std::vector<std::string> shown;
    for (const CalEvent& event : events) {
      const DateFields at = event.StartDate.Fields();
      shown.push_back(event.EventID + " " + std::to_string(at.day) + "." +
                      std::to_string(at.month) + " " + std::to_string(at.hour));
    }
    return shown;
  }

 private:
  std::vector<std::string> log_;
};

}  // namespace velkor
