// calendar/CalendarStore.cpp: the search through the folder tree.
#include "calendar/CalendarStore.h"

namespace velkor {
namespace {

using FolderList = std::vector<std::unique_ptr<CalendarFolder>>;

/// The first folder, parents before children, that `wanted` accepts.
template <typename Wanted>
CalendarFolder* FindFolder(const FolderList& folders, const Wanted& wanted) {
  for (const auto& folder : folders) {
    if (wanted(*folder)) return folder.get();
    if (CalendarFolder* found = FindFolder(folder->Folders(), wanted)) return found;
  }
  return nullptr;
}

}  // namespace

CalendarFolder& CalendarStore::AddFolder(std::string name, std::string entryId, int itemType) {
  return *folders_.emplace_back(
      std::make_unique<CalendarFolder>(std::move(name), std::move(entryId), itemType));
}

CalendarFolder* CalendarStore::FolderById(std::string_view entryId) const {
  return FindFolder(folders_,
                    [&](const CalendarFolder& folder) { return folder.EntryID() == entryId; });
}

CalendarFolder* CalendarStore::FolderOfItem(const std::string& entryId) const {
  return FindFolder(folders_,
                    [&](const CalendarFolder& folder) { return folder.Find(entryId) != nullptr; });
}

}  // namespace velkor
