// platform/windows/outlook/AutomationItems.h: the items of a folder of the calendar program.
#pragma once

#include <string>
#include <vector>

#include "platform/Outlook.h"
#include "platform/windows/outlook/OutlookLink.h"

namespace velkor {

class AutomationItems : public OutlookItems {
 public:
  /// @param folder   holds the items
  /// @param filters  what `items` were restricted by, one after the other
  AutomationItems(OutlookLink& link, AutomationObject folder, AutomationObject items,
                  std::vector<std::string> filters = {})
      : link_(link),
        folder_(std::move(folder)),
        items_(std::move(items)),
        filters_(std::move(filters)) {}

  std::unique_ptr<OutlookItems> Restrict(std::string_view filter) override;
  void Sort(std::string_view property) override;
  void IncludeRecurrences(bool include) override;
  std::unique_ptr<OutlookItem> GetFirst() override { return Item("GetFirst"); }
  std::unique_ptr<OutlookItem> GetNext() override { return Item("GetNext"); }
  std::unique_ptr<OutlookItem> Find(std::string_view filter) override;
  std::unique_ptr<OutlookItem> FindNext() override { return Item("FindNext"); }
  std::unique_ptr<OutlookItem> Add(std::string_view messageClass) override;
  void Connect(OutlookItemEvents* events) override;
  bool IsConnected(bool ask) override { return connection_ && connection_->IsAlive(ask); }

 private:
  std::unique_ptr<OutlookItem> Item(std::string_view member,
                                    AutomationObject::Arguments arguments = {});

  OutlookLink& link_;
  AutomationObject folder_;
  AutomationObject items_;
  std::vector<std::string> filters_;
  /// Empty while they are not sorted.
  std::string sortedBy_;
  std::unique_ptr<ItemEventConnection> connection_;
};

/// All items of a folder.
std::unique_ptr<OutlookItems> ItemsOf(OutlookLink& link, const AutomationObject& folder);

}  // namespace velkor
