// calendar/CalendarFolder.cpp: saving, replacing and telling; the window that is loaded.
#include "calendar/CalendarFolder.h"

#include <algorithm>

#include "values/Error.h"
#include "values/FlagScope.h"
#include "values/Text.h"

namespace velkor {
namespace {

constexpr int MarginDays = 366;
/// Windows further apart than this are not joined into one.
constexpr std::int64_t LongestJoinedDays = 20 * 366;
constexpr std::size_t None = static_cast<std::size_t>(-1);

Date Shifted(Date date, int days) {
  const Date shifted = date.AddDays(days);
  return shifted.IsValid() ? shifted : date;
}

/// Times of saving are told apart by whole seconds.
Date LaterThan(Date before, Date wanted) {
  return std::max(wanted, Date::FromSeconds(before.Seconds() + 1));
}

}  // namespace

CalendarFolder& CalendarFolder::AddFolder(std::string name, std::string entryId, int itemType) {
  return *folders_.emplace_back(
      std::make_unique<CalendarFolder>(std::move(name), std::move(entryId), itemType));
}

void CalendarFolder::Add(CalendarItem item) {
  items_.push_back(std::make_shared<const CalendarItem>(std::move(item)));
  const bool isIndexed = indexedRevision_ == revision_;
  ++revision_;
  if (!isIndexed) return;
  index_.try_emplace(items_.back()->entryId, items_.size() - 1);
  indexedRevision_ = revision_;
}

CalendarFolder::Item CalendarFolder::AddSaved(CalendarItem item) {
  Add(std::move(item));
  const Item saved = items_.back();
  Raise({FolderEvent::Kind::Add, saved});
  return saved;
}

void CalendarFolder::AddUnsaved(CalendarItem item) {
  const auto sameSubject = [&](const Item& other) {
    return other->fields.subject == item.fields.subject;
  };
  if (std::any_of(items_.begin(), items_.end(), sameSubject)) return;
  if (item.entryId.empty()) item.entryId = FreshId();
  renamed_.erase(item.entryId);
  unsaved_.insert(item.entryId);
  Add(std::move(item));
}

const std::string& CalendarFolder::CurrentId(const std::string& entryId) const {
  const auto renamed = renamed_.find(entryId);
  return renamed == renamed_.end() ? entryId : renamed->second;
}

std::size_t CalendarFolder::IndexOf(const std::string& entryId) const {
  if (indexedRevision_ != revision_) {
    index_.clear();
    for (std::size_t i = 0; i < items_.size(); ++i) index_.try_emplace(items_[i]->entryId, i);
    indexedRevision_ = revision_;
  }
  const auto found = index_.find(CurrentId(entryId));
  return found == index_.end() ? None : found->second;
}

std::size_t CalendarFolder::Expect(const std::string& entryId) const {
  const std::size_t index = IndexOf(entryId);
  if (index == None) {
    throw Error(errors::CalendarFailed, "The appointment is no longer in the calendar.",
                "Calendar");
  }
  return index;
}

CalendarFolder::Item CalendarFolder::Find(const std::string& entryId) const {
  const std::size_t index = IndexOf(entryId);
  return index == None ? nullptr : items_[index];
}

std::string CalendarFolder::FreshId() {
  std::string id;
  do {
    id = entryId_ + "-" + std::to_string(nextId_++);
  } while (IndexOf(id) != None);
  return id;
}

void CalendarFolder::Put(std::size_t index, CalendarItem item) {
  items_[index] = std::make_shared<const CalendarItem>(std::move(item));
  ++revision_;
}

void CalendarFolder::KeepUnsaved(Items& items) {
  for (const Item& item : items_) {
    if (!unsaved_.contains(item->entryId)) continue;
    const auto same = std::find_if(items.begin(), items.end(), [&](const Item& other) {
      return other->fields.subject == item->fields.subject;
    });
    if (same == items.end()) {
      items.push_back(item);
    } else {
      unsaved_.erase(item->entryId);
      renamed_[item->entryId] = (*same)->entryId;
    }
  }
}

std::vector<FolderEvent> CalendarFolder::DifferencesTo(Items& items) const {
  std::vector<FolderEvent> events;
  for (Item& item : items) {
    const Item before = Find(item->entryId);
    if (before == item) continue;
    if (!before) {
      events.push_back({FolderEvent::Kind::Add, item});
      continue;
    }
    const bool same = SameContent(*before, *item);
    const Date modified = same ? std::max(before->lastModified, item->lastModified)
                               : LaterThan(before->lastModified, item->lastModified);
    if (modified != item->lastModified) {
      CalendarItem stamped = *item;
      stamped.lastModified = modified;
      item = std::make_shared<const CalendarItem>(std::move(stamped));
    }
    if (!same) events.push_back({FolderEvent::Kind::Change, item});
  }
  std::unordered_set<std::string_view> present;
  for (const Item& item : items) present.insert(item->entryId);
  for (const Item& item : items_) {
    if (!present.contains(CurrentId(item->entryId))) {
      events.push_back({FolderEvent::Kind::Remove, nullptr});
    }
  }
  return events;
}

void CalendarFolder::Replace(std::vector<CalendarItem> items, const DateWindow& window) {
  Items replaced;
  replaced.reserve(items.size());
  for (CalendarItem& item : items) {
    replaced.push_back(std::make_shared<const CalendarItem>(std::move(item)));
  }
  Replace(std::move(replaced), window);
}

void CalendarFolder::Replace(Items replaced, const DateWindow& window) {
  const bool isFirst = !loaded_ && items_.empty();
  KeepUnsaved(replaced);
  std::vector<FolderEvent> events;
  if (!isFirst) events = DifferencesTo(replaced);
  items_ = std::move(replaced);
  loaded_ = window;
  ++revision_;
  if (events.size() > MostEvents) events.assign(1, {FolderEvent::Kind::Remove, nullptr});
  for (const FolderEvent& event : events) Raise(event);
}

void CalendarFolder::Load(const DateWindow& window) {
  if (!loader_) return;
  if (loaded_ && loaded_->from <= window.from && window.to <= loaded_->to) return;
  DateWindow wanted{Shifted(window.from, -MarginDays), Shifted(window.to, MarginDays)};
  if (loaded_) {
    const DateWindow joined{std::min(wanted.from, loaded_->from), std::max(wanted.to, loaded_->to)};
    if (joined.to.DayNumber() - joined.from.DayNumber() <= LongestJoinedDays) wanted = joined;
  }
  Replace(loader_(wanted), wanted);
}

CalendarFolder::Item CalendarFolder::SaveNew(CalendarItem item, bool reminder, Date now) {
  item.lastModified = now;
  if (writer_) {
    item = writer_->WriteNew(item, reminder);
  } else {
    item.entryId = FreshId();
  }
  return AddSaved(std::move(item));
}

CalendarFolder::Item CalendarFolder::SaveChange(const std::string& entryId,
                                                const ItemChange& change, Date now) {
  const auto isUnsaved = [&] { return unsaved_.contains(CurrentId(entryId)); };
  if (isUnsaved() && writer_) writer_->Refresh();
  const std::size_t index = Expect(entryId);
  const bool isNew = isUnsaved();
  if (change.IsEmpty() && !isNew) return items_[index];

  CalendarItem after = WithChange(*items_[index], change);
  after.lastModified = LaterThan(after.lastModified, now);
  if (writer_) {
    after = isNew ? writer_->WriteNew(after, change.reminder.value_or(false))
                  : writer_->WriteChange(after, change);
  }
  if (isNew) {
    const std::string before = items_[index]->entryId;
    unsaved_.erase(before);
    if (after.entryId != before) renamed_[before] = after.entryId;
  }
  Put(index, std::move(after));
  const Item saved = items_[index];
  Raise({isNew ? FolderEvent::Kind::Add : FolderEvent::Kind::Change, saved});
  return saved;
}

void CalendarFolder::Delete(const std::string& entryId) {
  const std::size_t index = Expect(entryId);
  const Item item = items_[index];
  const bool wasUnsaved = unsaved_.contains(item->entryId);
  if (writer_ && !wasUnsaved) writer_->WriteDeletion(*item);
  unsaved_.erase(item->entryId);
  items_.erase(items_.begin() + static_cast<std::ptrdiff_t>(index));
  ++revision_;
  Raise({FolderEvent::Kind::Remove, nullptr});
}

bool CalendarFolder::ReplaceCategory(std::string_view from, std::string_view to, Date now) {
  if (!writer_) return false;
  writer_->WriteCategory(from, to, now);
  writer_->Refresh();
  return true;
}

std::shared_ptr<const void> CalendarFolder::Hold() {
  if (!writer_) return nullptr;
  auto hold = writer_->Hold();
  writer_->Refresh();
  return hold;
}

std::shared_ptr<const CalendarFolder::Listener> CalendarFolder::Listen(Listener listener) {
  std::erase_if(listeners_, [](const auto& one) { return one.expired(); });
  auto kept = std::make_shared<const Listener>(std::move(listener));
  listeners_.push_back(kept);
  return kept;
}

void CalendarFolder::Raise(const FolderEvent& event) {
  raised_.push_back(event);
  if (isRaising_) return;
  const FlagScope raising(isRaising_);
  while (!raised_.empty()) {
    const FolderEvent next = std::move(raised_.front());
    raised_.pop_front();
    // Listeners come and go while they are told.
    const std::vector<std::weak_ptr<const Listener>> told = listeners_;
    for (const auto& one : told) {
      if (const auto listener = one.lock()) (*listener)(next);
    }
  }
}

}  // namespace velkor
