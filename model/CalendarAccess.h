// model/CalendarAccess.h: the session with the calendar program and the folder on show.
#pragma once

#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>

#include "model/ItemArrivals.h"
#include "platform/Outlook.h"
#include "platform/Platform.h"

namespace velkor {

class BackgroundRefresh;
class Timer;
struct EventView;

/// One planner's session with the calendar program. Members throw what the calendar program
/// throws.
class CalendarAccess {
 public:
  /// All of them outlive this; see ItemArrivals for what the folder's item events need.
  CalendarAccess(const EventView& view, BackgroundRefresh& refresh, const Platform& platform,
                 Timer& tmrItems, const std::string& appointmentForm);
  ~CalendarAccess();
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
  /// What it was asked for by; empty when there is none.
  const std::string& FolderPath() const { return folderPath_; }
  /// Identifiers of that folder; empty when there is none.
  const std::string& EntryID() const { return entryId_; }
  const std::string& StoreID() const { return storeId_; }
  /// That folder by its identifiers, in a session of its own.
  std::unique_ptr<OutlookFolder> ReopenFolder();

  /// Looks whether the folder's events still come. Where the calendar program has ended, the folder
  /// is opened and connected anew as soon as the program runs again, which this never starts; what
  /// changed meanwhile comes in as item events do. Throws nothing. May let messages be processed.
  void KeepConnected();
  /// Has the next KeepConnected ask the program, where the end of one that is listed again could
  /// be missed.
  void AskSoon() { asks_ = true; }

  /// The item itself, not one of its occurrences.
  std::unique_ptr<OutlookItem> Item(std::string_view entryId);
  /// A new item of the folder, not saved yet.
  std::unique_ptr<OutlookItem> NewItem(std::string_view messageClass);
  /// The current user's name, asked for once; where that is refused, the name of the login.
  const std::string& CurrentUserName();

  /// Lets go of the folder and the session; errors while doing so are ignored.
  void Release() noexcept;

  /// What the folder's items raise.
  ItemArrivals& Arrivals() { return arrivals_; }

 private:
  struct Opened {
    std::unique_ptr<OutlookNamespace> session;
    std::unique_ptr<OutlookFolder> folder;
  };

  std::unique_ptr<OutlookFolder> FindFolder(std::string_view folder);
  Opened OpenAgain();
  void Reconnect();
  /// Makes a call, again after the program was found to have ended.
  std::unique_ptr<OutlookItem> Ask(const std::function<std::unique_ptr<OutlookItem>()>& call);
  void CheckFolder() const;
  void ReleaseFolder() noexcept;

  const Platform platform_;
  std::unique_ptr<OutlookNamespace> session_;
  std::unique_ptr<OutlookFolder> folder_;
  std::string folderPath_;
  std::string entryId_;
  std::string storeId_;
  std::optional<std::string> userName_;
  /// Its objects are another program's that has ended.
  bool lost_ = false;
  bool asks_ = false;
  /// A call to the program is under way, within which nothing is connected anew.
  bool calls_ = false;
  /// Another one with every folder that is let go.
  int letGo_ = 0;
  ItemArrivals arrivals_;
  /// Connected for events.
  std::unique_ptr<OutlookItems> m_olItems;
};

}  // namespace velkor
