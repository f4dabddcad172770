// platform/windows/outlook/AutomationItems.cpp: filters, order, recurrences and events of items.
#include "platform/windows/outlook/AutomationItems.h"

#include "platform/windows/outlook/AutomationItem.h"

namespace velkor {
namespace {

AutomationObject AllItems(OutlookLink& link, const AutomationObject& folder) {
  return link.NeedObject(link.items, folder.Get("Items"), link.folder, "Items");
}

AutomationObject Restricted(OutlookLink& link, const AutomationObject& items,
                            std::string_view filter) {
  return link.NeedObject(link.items, items.Call("Restrict", {Variant(filter)}), link.items,
                         "Restrict");
}

}  // namespace

std::unique_ptr<OutlookItems> ItemsOf(OutlookLink& link, const AutomationObject& folder) {
  return std::make_unique<AutomationItems>(link, folder, AllItems(link, folder));
}

std::unique_ptr<OutlookItems> AutomationItems::Restrict(std::string_view filter) {
  AutomationObject restricted = Restricted(link_, items_, filter);
  std::vector<std::string> filters = filters_;
  filters.emplace_back(filter);
  return std::make_unique<AutomationItems>(link_, folder_, std::move(restricted),
                                           std::move(filters));
}

void AutomationItems::Sort(std::string_view property) {
  items_.Call("Sort", {Variant(property)});
  sortedBy_ = property;
}

void AutomationItems::IncludeRecurrences(bool include) {
  if (!include || filters_.empty()) {
    items_.Put("IncludeRecurrences", Variant(include));
    return;
  }
  // A filter has passed or dropped a series by its first occurrence. So that it judges each
  // occurrence, the items must have been sorted and widened before ("Items.IncludeRecurrences").
  const std::string order = sortedBy_.empty() ? "[Start]" : sortedBy_;
  AutomationObject widened = AllItems(link_, folder_);
  widened.Call("Sort", {Variant(order)});
  widened.Put("IncludeRecurrences", Variant(true));
  for (const std::string& filter : filters_) widened = Restricted(link_, widened, filter);
  widened.Call("Sort", {Variant(order)});
  items_ = std::move(widened);
}

std::unique_ptr<OutlookItem> AutomationItems::Find(std::string_view filter) {
  return Item("Find", {Variant(filter)});
}

std::unique_ptr<OutlookItem> AutomationItems::Add(std::string_view messageClass) {
  // Without a type the item is of the folder's own ("Items.Add").
  if (messageClass.empty()) return Item("Add");
  return Item("Add", {Variant(messageClass)});
}

std::unique_ptr<OutlookItem> AutomationItems::Item(std::string_view member,
                                                   AutomationObject::Arguments arguments) {
  return ItemOf(link_, items_.Call(member, arguments));
}

void AutomationItems::Connect(OutlookItemEvents* events) {
  connection_.reset();
  if (events == nullptr) return;
  connection_ = std::make_unique<ItemEventConnection>(link_, items_, *events);
}

}  // namespace velkor
