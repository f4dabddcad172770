// calendar/CalendarStore.h: the tree of folders of the embedded calendar.
#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "calendar/CalendarFolder.h"

namespace velkor {

/// One store with its tree of folders. Folders stay where they are until the store goes.
class CalendarStore {
 public:
  explicit CalendarStore(std::string storeId) : storeId_(std::move(storeId)) {}

  const std::string& StoreID() const { return storeId_; }
  CalendarFolder& AddFolder(std::string name, std::string entryId, int itemType);
  const std::vector<std::unique_ptr<CalendarFolder>>& Folders() const { return folders_; }
  /// A folder of this store at any depth, or null for none.
  void SetDefaultCalendar(CalendarFolder* folder) { defaultCalendar_ = folder; }
  CalendarFolder* DefaultCalendar() const { return defaultCalendar_; }
  /// The folder with this identifier at any depth; null when there is none.
  CalendarFolder* FolderById(std::string_view entryId) const;
  /// The folder that holds the item with this identifier, at any depth; null when none does.
  CalendarFolder* FolderOfItem(const std::string& entryId) const;

 private:
  std::string storeId_;
  std::vector<std::unique_ptr<CalendarFolder>> folders_;
  CalendarFolder* defaultCalendar_ = nullptr;
};

}  // namespace velkor
