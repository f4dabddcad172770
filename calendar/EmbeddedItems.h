// calendar/EmbeddedItems.h: a folder's items, restricted, sorted and walked through.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/FilterText.h"
#include "platform/Outlook.h"

namespace velkor {

/// How the items of one application are shown; shared by all its collections.
struct ItemFormat {
  /// What stands between category names.
  std::string categorySeparator;
  DateOrder dateOrder = DateOrder::MonthDayYear;
};

/// One item, or one occurrence of a recurring item (`index` into its occurrences, else -1).
struct ItemEntry {
  std::shared_ptr<const CalendarItem> item;
  std::int32_t index = -1;

  Date Start() const;
  Date End() const;
  const AppointmentFields& Fields() const;
  bool Passes(const Filter& filter) const;
};

std::unique_ptr<OutlookItem> MakeEmbeddedItem(ItemEntry entry,
                                              std::shared_ptr<const ItemFormat> format);

/// The folder outlives the collection. The collection is made when it is first walked through,
/// and again when the folder's items have changed since and GetFirst or Find begins anew.
class EmbeddedItems : public OutlookItems {
 public:
  EmbeddedItems(CalendarFolder& folder, std::shared_ptr<const ItemFormat> format)
      : folder_(folder), format_(std::move(format)) {}

  std::unique_ptr<OutlookItems> Restrict(std::string_view filter) override;
  void Sort(std::string_view property) override;
  void IncludeRecurrences(bool include) override;
  std::unique_ptr<OutlookItem> GetFirst() override;
  std::unique_ptr<OutlookItem> GetNext() override;
  std::unique_ptr<OutlookItem> Find(std::string_view filter) override;
  std::unique_ptr<OutlookItem> FindNext() override;
  std::unique_ptr<OutlookItem> Add(std::string_view messageClass) override;
  void Connect(OutlookItemEvents*) override {}

 private:
  void Gather();
  std::unique_ptr<OutlookItem> Give(std::size_t index) const;

  CalendarFolder& folder_;
  std::shared_ptr<const ItemFormat> format_;
  Filter filter_;
  bool sorted_ = false;
  bool includeRecurrences_ = false;
  std::vector<ItemEntry> entries_;
  std::optional<std::uint64_t> gatheredRevision_;
  std::size_t next_ = 0;
  Filter findFilter_;
  std::size_t findNext_ = 0;
};

}  // namespace velkor
