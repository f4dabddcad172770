// calendar/EmbeddedItems.h: a folder's items, restricted, sorted and walked through.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "calendar/EmbeddedItem.h"
#include "calendar/FilterText.h"
#include "platform/Outlook.h"

namespace velkor {

/// The folder outlives the collection. The collection is made when it is first walked through,
/// and again when the folder's items have changed since and GetFirst or Find begins anew. Events go
/// through the session's `post`, those that wait there when the collection goes are dropped.
class EmbeddedItems : public OutlookItems {
 public:
  EmbeddedItems(CalendarFolder& folder, std::shared_ptr<const EmbeddedSession> session)
      : folder_(folder), session_(std::move(session)) {}

  std::unique_ptr<OutlookItems> Restrict(std::string_view filter) override;
  void Sort(std::string_view property) override;
  void IncludeRecurrences(bool include) override;
  std::unique_ptr<OutlookItem> GetFirst() override;
  std::unique_ptr<OutlookItem> GetNext() override;
  std::unique_ptr<OutlookItem> Find(std::string_view filter) override;
  std::unique_ptr<OutlookItem> FindNext() override;
  std::unique_ptr<OutlookItem> Add(std::string_view messageClass) override;
  void Connect(OutlookItemEvents* events) override;
  bool IsConnected(bool /*ask*/) override { return listener_ != nullptr; }

 private:
  void Gather();
  std::unique_ptr<OutlookItem> Give(std::size_t index) const;

  CalendarFolder& folder_;
  std::shared_ptr<const EmbeddedSession> session_;
  Filter filter_;
  bool sorted_ = false;
  bool includeRecurrences_ = false;
  std::vector<ItemEntry> entries_;
  std::optional<std::uint64_t> gatheredRevision_;
  std::size_t next_ = 0;
  Filter findFilter_;
  std::size_t findNext_ = 0;
  std::shared_ptr<const CalendarFolder::Listener> listener_;
};

}  // namespace velkor
