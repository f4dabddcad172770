// tests/model/WatchedView.h: a view of 2006 that writes down what it is asked to do.
#pragma once

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "model/EventCollection.h"
#include "model/EventFields.h"
#include "model/EventView.h"
#include "span/CategoryFilter.h"
#include "tests/model/SampleEvents.h"

namespace velkor {

struct WatchedView {
  EventCollection events;
  DisplaySpan span{2006, 1};
  CategoryTable categories = SampleCategories();
  CategoryFilter filter;
  bool hideNonCategoryItems = false;
  bool categoriesKnown = true;
  /// What was asked since the last Take.
  std::vector<std::string> log;

  const EventView view{
      events,
      filter,
      [this] {
        return EventFields{span, MonthColumns(span), categories, ", ", hideNonCategoryItems};
      },
      [this](const auto& alter) {
        alter(events);
        log.emplace_back("change");
      },
      [this] { log.emplace_back("reload"); },
      [this] { log.emplace_back("rewrite"); },
      [this] {
        log.emplace_back("colours");
        return categoriesKnown;
      }};

  std::vector<std::string> Take() { return std::exchange(log, {}); }

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
};

}  // namespace velkor
