// calendar/CalendarStore.cpp: the folder tree and the window of occurrences that is loaded.
#include "calendar/CalendarStore.h"

#include <algorithm>

namespace velkor {
namespace {

constexpr int MarginDays = 366;
/// Windows further apart than this are not joined into one.
constexpr std::int64_t LongestJoinedDays = 20 * 366;

Date Shifted(Date date, int days) {
  const Date shifted = date.AddDays(days);
  return shifted.IsValid() ? shifted : date;
}

using FolderList = std::vector<std::unique_ptr<CalendarFolder>>;

CalendarFolder* FindById(const FolderList& folders, std::string_view entryId) {
  for (const auto& folder : folders) {
    if (folder->EntryID() == entryId) return folder.get();
    if (CalendarFolder* found = FindById(folder->Folders(), entryId)) return found;
  }
  return nullptr;
}

CalendarFolder& AppendFolder(FolderList& folders, std::string name, std::string entryId,
                             int itemType) {
  return *folders.emplace_back(
      std::make_unique<CalendarFolder>(std::move(name), std::move(entryId), itemType));
}

}  // namespace

CalendarFolder& CalendarFolder::AddFolder(std::string name, std::string entryId, int itemType) {
  return AppendFolder(folders_, std::move(name), std::move(entryId), itemType);
}

void CalendarFolder::Add(CalendarItem item) {
  items_.push_back(std::make_shared<const CalendarItem>(std::move(item)));
  ++revision_;
}

void CalendarFolder::SetItems(std::vector<CalendarItem> items, const DateWindow& window) {
  Items replaced;
  replaced.reserve(items.size());
  for (CalendarItem& item : items) {
    replaced.push_back(std::make_shared<const CalendarItem>(std::move(item)));
  }
  items_ = std::move(replaced);
  loaded_ = window;
  ++revision_;
}

void CalendarFolder::Load(const DateWindow& window) {
  if (!loader_) return;
  if (loaded_ && loaded_->from <= window.from && window.to <= loaded_->to) return;
  DateWindow wanted{Shifted(window.from, -MarginDays), Shifted(window.to, MarginDays)};
  if (loaded_) {
    const DateWindow joined{std::min(wanted.from, loaded_->from), std::max(wanted.to, loaded_->to)};
    if (joined.to.DayNumber() - joined.from.DayNumber() <= LongestJoinedDays) wanted = joined;
  }
  SetItems(loader_(wanted), wanted);
}

CalendarFolder& CalendarStore::AddFolder(std::string name, std::string entryId, int itemType) {
  return AppendFolder(folders_, std::move(name), std::move(entryId), itemType);
}

CalendarFolder* CalendarStore::FolderById(std::string_view entryId) const {
  return FindById(folders_, entryId);
}

}  // namespace velkor
