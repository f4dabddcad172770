// platform/Outlook.h: the calendar program, shaped as Outlook's object model.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "values/Date.h"

namespace velkor {

/// Kinds of default folder (OlDefaultFolders) and of item (OlItemType, OlObjectClass).
namespace outlook {
inline constexpr int FolderCalendar = 9;
inline constexpr int ItemTypeMail = 0;
inline constexpr int ItemTypeAppointment = 1;
inline constexpr int ClassAppointment = 26;
inline constexpr int ClassMeetingRequest = 53;
inline constexpr int ClassMeetingResponseTentative = 57;
/// Requests, cancellations and the three kinds of answers are meeting items.
constexpr bool IsMeetingClass(int itemClass) {
  return itemClass >= ClassMeetingRequest && itemClass <= ClassMeetingResponseTentative;
}
}  // namespace outlook

/// Every call of these interfaces may throw Error with the calendar program's number and text.
/// An object stays usable for as long as its holder keeps it; the application outlives all.
class OutlookItem {
 public:
  virtual ~OutlookItem() = default;
  /// OlObjectClass: an appointment, a meeting item, or anything else.
  virtual int Class() = 0;
  /// One appointment and all its occurrences share this identifier.
  virtual std::string EntryID() = 0;
  virtual std::string MessageClass() = 0;
  virtual std::string Subject() = 0;
  /// Names joined by the list separator and one blank.
  virtual std::string Categories() = 0;
  virtual std::string Location() = 0;
  virtual std::string Body() = 0;
  /// Local wall-clock time of this occurrence.
  virtual Date Start() = 0;
  /// Exclusive.
  virtual Date End() = 0;
  virtual bool AllDayEvent() = 0;
  virtual bool IsRecurring() = 0;
  /// When the item was last saved; another value after a change.
  virtual Date LastModificationTime() = 0;

  // What is set takes effect when the item is saved. Occurrences share the item that they are of:
  // what is set or deleted through one of them concerns the whole appointment.
  virtual void SetSubject(std::string_view subject) = 0;
  virtual void SetCategories(std::string_view categories) = 0;
  virtual void SetLocation(std::string_view location) = 0;
  virtual void SetBody(std::string_view body) = 0;
  virtual void SetStart(Date start) = 0;
  virtual void SetEnd(Date end) = 0;
  /// Start and end of an all-day appointment are midnights.
  virtual void SetAllDayEvent(bool allDay) = 0;
  virtual void SetReminderSet(bool set) = 0;
  /// Writes the item into its folder; the folder's item events follow.
  virtual void Save() = 0;
  virtual void Delete() = 0;
  /// Shows the item in the calendar program's own inspector; `modal` waits until it is closed.
  virtual void Display(bool modal) = 0;

  /// The appointment behind a meeting item; null for every other item or when there is none.
  virtual std::unique_ptr<OutlookItem> GetAssociatedAppointment(bool addToCalendar) = 0;
};

/// What a folder's items raise, on the user-interface thread.
class OutlookItemEvents {
 public:
  virtual ~OutlookItemEvents() = default;
  virtual void ItemAdd(OutlookItem& item) = 0;
  virtual void ItemChange(OutlookItem& item) = 0;
  /// Which item was removed is not told.
  virtual void ItemRemove() = 0;
};

/// The items of a folder, or those of them that a filter leaves; a cursor of its own.
class OutlookItems {
 public:
  virtual ~OutlookItems() = default;
  /// The items that a filter text selects. With IncludeRecurrences set on the result and a filter
  /// that bounds [Start] above and [End] below, each occurrence is an item. Throws Error
  /// (CalendarFailed) on a text that is no filter.
  virtual std::unique_ptr<OutlookItems> Restrict(std::string_view filter) = 0;
  /// Orders the items by a property, "[Start]", ascending.
  virtual void Sort(std::string_view property) = 0;
  virtual void IncludeRecurrences(bool include) = 0;
  /// The first item and the one after the last given; null at the end.
  virtual std::unique_ptr<OutlookItem> GetFirst() = 0;
  virtual std::unique_ptr<OutlookItem> GetNext() = 0;
  /// The first item that a filter text selects, and the next; null when there is none.
  virtual std::unique_ptr<OutlookItem> Find(std::string_view filter) = 0;
  virtual std::unique_ptr<OutlookItem> FindNext() = 0;
  /// A new item, not saved yet. An empty message class makes an appointment (IPM.Appointment).
  virtual std::unique_ptr<OutlookItem> Add(std::string_view messageClass) = 0;
  /// Raises the folder's item events on `events` for as long as this object lives; null ends it.
  virtual void Connect(OutlookItemEvents* events) = 0;
  /// Whether such events still come: not from a program that has ended.
  /// @param ask  by a call to the program; else only by what is known without one
  virtual bool IsConnected(bool ask) = 0;
};

class OutlookFolder {
 public:
  virtual ~OutlookFolder() = default;
  virtual std::string Name() = 0;
  virtual std::string EntryID() = 0;
  virtual std::string StoreID() = 0;
  /// OlItemType.
  virtual int DefaultItemType() = 0;
  /// A sub-folder by its name; null when there is none.
  virtual std::unique_ptr<OutlookFolder> Folder(std::string_view name) = 0;
  virtual std::unique_ptr<OutlookItems> Items() = 0;

  /// Puts one category in place of another in all items that carry it, changed occurrences too, in
  /// one step.
  /// @return false where the calendar program has no such step; nothing was changed then
  virtual bool ReplaceCategory(std::string_view from, std::string_view to) = 0;
  /// Keeps other programs from saving into the folder for as long as the answer is kept, and brings
  /// it up to date with what they saved before; null where the calendar program cannot.
  [[nodiscard]] virtual std::shared_ptr<const void> Hold() = 0;
};

class OutlookNamespace {
 public:
  virtual ~OutlookNamespace() = default;
  /// A top-level folder by its name; null when there is none.
  virtual std::unique_ptr<OutlookFolder> Folder(std::string_view name) = 0;
  virtual std::unique_ptr<OutlookFolder> GetDefaultFolder(int kind) = 0;
  virtual std::unique_ptr<OutlookFolder> GetFolderFromID(std::string_view entryId,
                                                         std::string_view storeId) = 0;
  /// The item itself, not one of its occurrences. Throws Error when there is none.
  virtual std::unique_ptr<OutlookItem> GetItemFromID(std::string_view entryId,
                                                     std::string_view storeId) = 0;
};

class OutlookApplication {
 public:
  virtual ~OutlookApplication() = default;
  /// Version text, for example "11.0.5608".
  virtual std::string Version() = 0;
  /// The current user's name, cleaned up for showing.
  virtual std::string CurrentUserName() = 0;
  /// Whether there is a program to ask for the session; never starts one, and calls none.
  virtual bool IsRunning() = 0;
  /// The session; `type` is "MAPI". Starts the program where none is running.
  virtual std::unique_ptr<OutlookNamespace> GetNamespace(std::string_view type) = 0;
};

}  // namespace velkor
