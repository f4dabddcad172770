// model/CalendarAccess.h: the calendar folder on show, and what its item events do to the view.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "platform/Outlook.h"
#include "platform/Platform.h"

namespace velkor {

class EventView;
class Planner;

/// One planner's session with the calendar program. Members throw what the calendar program
/// throws; item events end in a message instead.
class CalendarAccess : private OutlookItemEvents {
 public:
  /// All of them outlive this. `appointmentForm` is the control's property: the message class that
  /// an item must have, letter for letter, for its events to reach the view.
  CalendarAccess(EventView& view, Planner& planner, const Platform& platform,
                 const std::string& appointmentForm);
  ~CalendarAccess() override;
  CalendarAccess(const CalendarAccess&) = delete;
  CalendarAccess& operator=(const CalendarAccess&) = delete;

  /// Opens the session.
  void Open();

  /// Finds a folder and connects to the events of its items; the session is open.
  /// @param folder  names joined by backslashes from a top-level folder on; empty or "Calendar" is
  ///                the default calendar, which also stands in for a folder that holds other
  ///                items than appointments
  /// @return false when there is no such folder or the calendar program does not give it; what was
  ///         resolved before is let go in any case
  bool ResolveFolder(std::string_view folder);

  /// The folder that ResolveFolder found; there is one.
  OutlookFolder& Folder() { return *folder_; }
  /// Identifiers of that folder; empty when there is none.
  const std::string& EntryID() const { return entryId_; }
  const std::string& StoreID() const { return storeId_; }
  /// That folder by its identifiers, in a session of its own.
  std::unique_ptr<OutlookFolder> ReopenFolder();

  /// The item itself, not one of its occurrences.
  std::unique_ptr<OutlookItem> Item(std::string_view entryId);
  /// A new item of the folder, not saved yet.
  std::unique_ptr<OutlookItem> NewItem(std::string_view messageClass);
  /// The current user's name, asked for once; where that is refused, the name of the login.
  const std::string& CurrentUserName();

  /// Lets go of the folder and the session; errors while doing so are ignored.
  void Release() noexcept;

 private:
  void ItemAdd(OutlookItem& item) override;
  void ItemChange(OutlookItem& item) override;
  void ItemRemove() override;

  std::unique_ptr<OutlookFolder> FindFolder(std::string_view folder);
  void CheckFolder() const;
  void ReleaseFolder() noexcept;
  /// Brings an item's occurrences within the span into the view, in place of those that are there
  /// when `replace` is set.
  void TakeItem(OutlookItem& item, bool replace);
  struct Gathered;
  void Gather(Gathered& gathered);
  void Show(Gathered& gathered, bool replace);

  EventView& view_;
  Planner& planner_;
  const Platform platform_;
  const std::string& appointmentForm_;
  std::unique_ptr<OutlookNamespace> session_;
  std::unique_ptr<OutlookFolder> folder_;
  std::string entryId_;
  std::string storeId_;
  std::optional<std::string> userName_;
  /// Connected for events.
  std::unique_ptr<OutlookItems> m_olItems;
};

}  // namespace velkor
