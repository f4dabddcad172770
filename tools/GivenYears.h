// tools/GivenYears.h: years of a calendar as they are given, without a control.
#pragma once

#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>

#include "calendar/EmbeddedOutlook.h"
#include "model/YearSource.h"
#include "platform/headless/FixedLocale.h"
#include "span/CategoryFilter.h"

namespace velkor {

/// Fields of the events are those that were given. Their items lie in a calendar in memory.
class GivenYears : public YearSource {
 public:
  CategoryTable categories;
  CategoryFilter filter;
  std::map<int, EventCollection> years;

  void AddItem(std::string entryId, std::string body, std::string location) {
    CalendarItem item;
    item.entryId = std::move(entryId);
    item.fields.body = std::move(body);
    item.fields.location = std::move(location);
    folder_.Add(std::move(item));
  }
  OutlookApplication& Outlook() { return outlook_; }

  int DisplayedYear() const override { return years.empty() ? 0 : years.begin()->first; }
  const CategoryTable& Categories() const override { return categories; }
  const CategoryFilter& Filter() const override { return filter; }
  std::optional<EventCollection> EventsOf(int viewYear,
                                          const std::function<bool()>& /*goesOn*/) override {
    const auto found = years.find(viewYear);
    return found == years.end() ? EventCollection() : found->second;
  }
  std::unique_ptr<OutlookItem> ItemOf(std::string_view eventId) override {
    return session_->GetItemFromID(eventId, store_.StoreID());
  }
  void BeginReadingYears() override {}
  void EndReadingYears() override {}

 private:
  FixedLocale locale_;
  CalendarStore store_{"store"};
  CalendarFolder& folder_ = store_.AddFolder("Calendar", "folder", outlook::ItemTypeAppointment);
  EmbeddedOutlook outlook_{store_, locale_, {.userName = "given"}};
  const std::unique_ptr<OutlookNamespace> session_ = outlook_.GetNamespace("MAPI");
};

}  // namespace velkor
