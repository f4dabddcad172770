// calendar/EmbeddedItems.cpp: gathering, order and search of a folder's items.
#include "calendar/EmbeddedItems.h"

#include <algorithm>

#include "values/Error.h"

namespace velkor {
std::unique_ptr<OutlookItems> EmbeddedItems::Restrict(std::string_view filter) {
  const Filter more = ParseFilter(filter, session_->dateOrder);
  auto restricted = std::make_unique<EmbeddedItems>(folder_, session_);
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
  return MakeEmbeddedItem(&folder_, entries_[index], session_);
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
  findFilter_ = ParseFilter(filter, session_->dateOrder);
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

std::unique_ptr<OutlookItem> EmbeddedItems::Add(std::string_view messageClass) {
  return MakeNewItem(folder_, messageClass, session_);
}

void EmbeddedItems::Connect(OutlookItemEvents* events) {
  listener_.reset();
  if (!events) return;
  const auto deliver = [events, session = session_, folder = &folder_](const FolderEvent& event) {
    try {
      if (event.kind == FolderEvent::Kind::Remove) {
        events->ItemRemove();
        return;
      }
      const auto item = MakeEmbeddedItem(folder, {event.item, -1}, session);
      if (event.kind == FolderEvent::Kind::Add) {
        events->ItemAdd(*item);
      } else {
        events->ItemChange(*item);
      }
    } catch (const Error&) {
      // What a sink fails at is its own affair; the item is saved.
    }
  };
  if (!session_->post) {
    listener_ = folder_.Listen(deliver);
    return;
  }
  auto alive = std::make_shared<const bool>(true);
  listener_ = folder_.Listen([deliver, session = session_, alive](const FolderEvent& event) {
    session->post([deliver, event, whileAlive = std::weak_ptr<const bool>(alive)] {
      if (!whileAlive.expired()) deliver(event);
    });
  });
}

}  // namespace velkor
