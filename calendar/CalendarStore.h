// calendar/CalendarStore.h: the data of the embedded calendar: folders, items, occurrences.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "platform/Outlook.h"
#include "support/values/Date.h"

namespace velkor {

/// What an appointment, or one changed occurrence of it, shows. Texts are UTF-8; the lines of
/// `body` end in CR LF.
struct AppointmentFields {
  std::string subject;
  std::vector<std::string> categories;
  std::string location;
  std::string body;
  bool allDay = false;
};

/// One occurrence in local wall-clock time, `end` exclusive and never before `start`.
struct CalendarOccurrence {
  Date start;
  Date end;
  /// Index into CalendarItem::changed of the fields that stand instead of the item's; -1 for none.
  std::int32_t changed = -1;
};

/// An item as it was read; it does not change while it is in a folder, it is replaced.
struct CalendarItem {
  /// Not empty; shared by all occurrences.
  std::string entryId;
  int itemClass = outlook::ClassAppointment;
  std::string messageClass = "IPM.Appointment";
  AppointmentFields fields;
  /// Of the only or the first occurrence.
  Date start;
  Date end;
  bool recurring = false;
  /// Of a recurring item: those that touch the folder's loaded window, by start.
  std::vector<CalendarOccurrence> occurrences;
  std::vector<AppointmentFields> changed;
  /// The appointment behind a meeting item.
  std::shared_ptr<const CalendarItem> appointment;
};

/// A stretch of time, both ends included.
struct DateWindow {
  Date from;
  Date to;
};

class CalendarFolder {
 public:
  using Items = std::vector<std::shared_ptr<const CalendarItem>>;
  /// Reads the folder's items again, with the occurrences of another window; may throw Error.
  using Loader = std::function<std::vector<CalendarItem>(const DateWindow&)>;

  CalendarFolder(std::string name, std::string entryId, int itemType)
      : name_(std::move(name)), entryId_(std::move(entryId)), itemType_(itemType) {}

  const std::string& Name() const { return name_; }
  const std::string& EntryID() const { return entryId_; }
  /// OlItemType.
  int ItemType() const { return itemType_; }

  CalendarFolder& AddFolder(std::string name, std::string entryId, int itemType);
  const std::vector<std::unique_ptr<CalendarFolder>>& Folders() const { return folders_; }

  void Add(CalendarItem item);
  /// Replaces all items by others with the occurrences of `window`. Without a loader a folder
  /// counts as loaded for every window.
  void SetItems(std::vector<CalendarItem> items, const DateWindow& window);
  void SetLoader(Loader loader) { loader_ = std::move(loader); }
  const Items& AllItems() const { return items_; }
  /// Grows with every change of the items.
  std::uint64_t Revision() const { return revision_; }

  /// Makes sure that every occurrence which touches `window` is there. Loads more than asked for,
  /// so that neighbouring windows need no second load. A load that fails throws the loader's Error
  /// and leaves the items as they are.
  void Load(const DateWindow& window);

 private:
  std::string name_;
  std::string entryId_;
  int itemType_;
  std::vector<std::unique_ptr<CalendarFolder>> folders_;
  Items items_;
  std::uint64_t revision_ = 0;
  Loader loader_;
  std::optional<DateWindow> loaded_;
};

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

 private:
  std::string storeId_;
  std::vector<std::unique_ptr<CalendarFolder>> folders_;
  CalendarFolder* defaultCalendar_ = nullptr;
};

}  // namespace velkor
