// calendar/EmbeddedItems.cpp: gathering, order and search of a folder's items.
#include "calendar/EmbeddedItems.h"

#include <algorithm>

#include "support/values/Error.h"

namespace velkor {
namespace {

class EmbeddedItem : public OutlookItem {
 public:
  EmbeddedItem(ItemEntry entry, std::shared_ptr<const ItemFormat> format)
      : entry_(std::move(entry)), format_(std::move(format)) {}

  int Class() override { return entry_.item->itemClass; }
  std::string EntryID() override { return entry_.item->entryId; }
  std::string MessageClass() override { return entry_.item->messageClass; }
  std::string Subject() override { return entry_.Fields().subject; }
  std::string Categories() override {
    std::string joined;
    for (const std::string& name : entry_.Fields().categories) {
      if (!joined.empty()) joined += format_->categorySeparator;
      joined += name;
    }
    return joined;
  }
  std::string Location() override { return entry_.Fields().location; }
  std::string Body() override { return entry_.Fields().body; }
  Date Start() override { return entry_.Start(); }
  Date End() override { return entry_.End(); }
  bool AllDayEvent() override { return entry_.Fields().allDay; }
  bool IsRecurring() override { return entry_.item->recurring; }
  std::unique_ptr<OutlookItem> GetAssociatedAppointment(bool /*addToCalendar*/) override {
    if (!entry_.item->appointment) return nullptr;
    return MakeEmbeddedItem({entry_.item->appointment, -1}, format_);
  }
  Date LastModificationTime() override { ReadOnly(); }
  void SetSubject(std::string_view) override { ReadOnly(); }
  void SetCategories(std::string_view) override { ReadOnly(); }
  void SetLocation(std::string_view) override { ReadOnly(); }
  void SetBody(std::string_view) override { ReadOnly(); }
  void SetStart(Date) override { ReadOnly(); }
  void SetEnd(Date) override { ReadOnly(); }
  void SetAllDayEvent(bool) override { ReadOnly(); }
  void SetReminderSet(bool) override { ReadOnly(); }
  void Save() override { ReadOnly(); }
  void Delete() override { ReadOnly(); }
  void Display(bool) override { ReadOnly(); }

 private:
  [[noreturn]] static void ReadOnly() {
    throw Error(errors::CalendarFailed, "The calendar can only be read.", "Calendar");
  }

  ItemEntry entry_;
  std::shared_ptr<const ItemFormat> format_;
};

}  // namespace

Date ItemEntry::Start() const {
  return index < 0 ? item->start : item->occurrences[static_cast<std::size_t>(index)].start;
}

Date ItemEntry::End() const {
  return index < 0 ? item->end : item->occurrences[static_cast<std::size_t>(index)].end;
}

const AppointmentFields& ItemEntry::Fields() const {
  if (index < 0) return item->fields;
  const std::int32_t changed = item->occurrences[static_cast<std::size_t>(index)].changed;
  return changed < 0 ? item->fields : item->changed[static_cast<std::size_t>(changed)];
}

bool ItemEntry::Passes(const Filter& filter) const {
  const AppointmentFields& fields = Fields();
  return Matches(filter, {Start(), End(), fields.subject, fields.categories, item->messageClass});
}

std::unique_ptr<OutlookItem> MakeEmbeddedItem(ItemEntry entry,
                                              std::shared_ptr<const ItemFormat> format) {
  return std::make_unique<EmbeddedItem>(std::move(entry), std::move(format));
}

std::unique_ptr<OutlookItems> EmbeddedItems::Restrict(std::string_view filter) {
  const Filter more = ParseFilter(filter, format_->dateOrder);
  auto restricted = std::make_unique<EmbeddedItems>(folder_, format_);
  restricted->filter_ = filter_;
  restricted->filter_.insert(restricted->filter_.end(), more.begin(), more.end());
  restricted->sorted_ = sorted_;
  restricted->includeRecurrences_ = includeRecurrences_;
  return restricted;
}

void EmbeddedItems::Sort(std::string_view property) {
  if (property != "[Start]") {
    throw Error(errors::CalendarFailed,
                "Items cannot be sorted by \"" + std::string(property) + "\".", "Calendar");
  }
  sorted_ = true;
  gatheredRevision_.reset();
}

void EmbeddedItems::IncludeRecurrences(bool include) {
  includeRecurrences_ = include;
  gatheredRevision_.reset();
}

void EmbeddedItems::Gather() {
  const FilterBounds bounds = BoundsOf(filter_);
  const bool expand = includeRecurrences_ && bounds.from && bounds.to;
  if (expand && *bounds.from <= *bounds.to) folder_.Load({*bounds.from, *bounds.to});
  if (gatheredRevision_ == folder_.Revision()) return;

  entries_.clear();
  for (const auto& item : folder_.AllItems()) {
    if (!expand || !item->recurring) {
      if (ItemEntry entry{item, -1}; entry.Passes(filter_)) entries_.push_back(std::move(entry));
      continue;
    }
    for (std::size_t i = 0; i < item->occurrences.size(); ++i) {
      ItemEntry entry{item, static_cast<std::int32_t>(i)};
      if (entry.Passes(filter_)) entries_.push_back(std::move(entry));
    }
  }
  if (sorted_) {
    std::stable_sort(entries_.begin(), entries_.end(),
                     [](const ItemEntry& a, const ItemEntry& b) { return a.Start() < b.Start(); });
  }
  gatheredRevision_ = folder_.Revision();
}

std::unique_ptr<OutlookItem> EmbeddedItems::Give(std::size_t index) const {
  if (index >= entries_.size()) return nullptr;
  return MakeEmbeddedItem(entries_[index], format_);
}

std::unique_ptr<OutlookItem> EmbeddedItems::GetFirst() {
  Gather();
  next_ = 1;
  return Give(0);
}

std::unique_ptr<OutlookItem> EmbeddedItems::GetNext() {
  if (!gatheredRevision_) return GetFirst();
  return Give(next_ < entries_.size() ? next_++ : next_);
}

std::unique_ptr<OutlookItem> EmbeddedItems::Find(std::string_view filter) {
  findFilter_ = ParseFilter(filter, format_->dateOrder);
  Gather();
  findNext_ = 0;
  return FindNext();
}

std::unique_ptr<OutlookItem> EmbeddedItems::FindNext() {
  while (findNext_ < entries_.size()) {
    const std::size_t index = findNext_++;
    if (entries_[index].Passes(findFilter_)) return Give(index);
  }
  return nullptr;
}

std::unique_ptr<OutlookItem> EmbeddedItems::Add(std::string_view) {
  throw Error(errors::CalendarFailed, "The calendar can only be read.", "Calendar");
}

}  // namespace velkor
