// model/CalendarAccess.cpp: the session with the calendar program and the folder on show.
#include "model/CalendarAccess.h"

#include <utility>

#include "platform/System.h"
#include "values/Error.h"
#include "values/FlagScope.h"
#include "values/Text.h"

namespace velkor {

CalendarAccess::CalendarAccess(const EventView& view, BackgroundRefresh& refresh,
                               const Platform& platform, Timer& tmrItems,
                               const std::string& appointmentForm)
    : platform_(platform),
      arrivals_(view, refresh, platform_, tmrItems, appointmentForm,
                [this]() -> OutlookFolder& { return Folder(); }) {}

CalendarAccess::~CalendarAccess() {
  Release();
}

void CalendarAccess::Open() {
  session_ = platform_.outlook.GetNamespace("MAPI");
  if (!session_) throw Error(errors::CalendarFailed, "There is no session");
}

std::unique_ptr<OutlookFolder> CalendarAccess::FindFolder(std::string_view folder) {
  if (folder.empty() || folder == "Calendar") {
    return session_->GetDefaultFolder(outlook::FolderCalendar);
  }
  std::unique_ptr<OutlookFolder> found;
  const bool whole = ForEachPiece(folder, "\\", [&](std::string_view name) {
    found = found ? found->Folder(name) : session_->Folder(name);
    return found != nullptr;
  });
  if (!whole) return nullptr;
  if (found->DefaultItemType() != outlook::ItemTypeAppointment) {
    return session_->GetDefaultFolder(outlook::FolderCalendar);
  }
  return found;
}

bool CalendarAccess::ResolveFolder(std::string_view folder) {
  ReleaseFolder();
  try {
    const auto found = FindFolder(folder);
    if (!found) return false;
    entryId_ = found->EntryID();
    storeId_ = found->StoreID();
    folder_ = session_->GetFolderFromID(entryId_, storeId_);
  } catch (const Error&) {
    // To the caller a folder that is refused is as little a folder as one that is not there.
    folder_.reset();
  }
  if (!folder_) {
    ReleaseFolder();
    return false;
  }
  m_olItems = folder_->Items();
  m_olItems->Connect(&arrivals_);
  folderPath_ = folder;
  return true;
}

/// A session of its own, and the folder on show in it.
CalendarAccess::Opened CalendarAccess::OpenAgain() {
  Opened opened{platform_.outlook.GetNamespace("MAPI"), nullptr};
  if (opened.session) opened.folder = opened.session->GetFolderFromID(entryId_, storeId_);
  if (!opened.folder) {
    throw Error(errors::CalendarFailed, "The calendar folder is not there any more");
  }
  return opened;
}

std::unique_ptr<OutlookFolder> CalendarAccess::ReopenFolder() {
  return OpenAgain().folder;
}

void CalendarAccess::Reconnect() {
  const int letGo = letGo_;
  Opened opened = OpenAgain();
  auto items = opened.folder->Items();
  items->Connect(&arrivals_);
  // Messages that came in meanwhile may have let go of the folder, or shown another.
  if (letGo != letGo_) return;
  session_ = std::move(opened.session);
  folder_ = std::move(opened.folder);
  std::swap(m_olItems, items);
  lost_ = false;
  arrivals_.Missed();
}

void CalendarAccess::KeepConnected() {
  if (!folder_ || calls_ || arrivals_.IsTaking()) return;
  const FlagScope calls(calls_);
  try {
    const int letGo = letGo_;
    const bool runs = platform_.outlook.IsRunning();
    const bool asks = std::exchange(asks_, false) || !runs;
    if (!lost_ && !m_olItems->IsConnected(asks) && letGo == letGo_) lost_ = true;
    if (lost_ && runs) Reconnect();
  } catch (const Error&) {
    // It is tried again.
  }
}

void CalendarAccess::CheckFolder() const {
  if (!folder_) throw Error(errors::CalendarFailed, "There is no calendar folder");
}

std::unique_ptr<OutlookItem> CalendarAccess::Ask(
    const std::function<std::unique_ptr<OutlookItem>()>& call) {
  CheckFolder();
  if (calls_) return call();
  const FlagScope calls(calls_);
  try {
    return call();
  } catch (const Error&) {
    if (!folder_ || m_olItems->IsConnected(false)) throw;
  }
  lost_ = true;
  Reconnect();
  CheckFolder();
  return call();
}

std::unique_ptr<OutlookItem> CalendarAccess::Item(std::string_view entryId) {
  auto item = Ask([&] { return session_->GetItemFromID(entryId, storeId_); });
  if (!item) throw Error(errors::CalendarFailed, "The appointment is not there any more");
  return item;
}

std::unique_ptr<OutlookItem> CalendarAccess::NewItem(std::string_view messageClass) {
  return Ask([&] { return folder_->Items()->Add(messageClass); });
}

const std::string& CalendarAccess::CurrentUserName() {
  if (!userName_) {
    try {
      userName_ = platform_.outlook.CurrentUserName();
    } catch (const Error&) {
      // Who was refused once would be asked for every year, and refuse again.
      userName_ = platform_.environment.Variable("USERNAME");
    }
  }
  return *userName_;
}

void CalendarAccess::ReleaseFolder() noexcept {
  ++letGo_;
  lost_ = false;
  try {
    if (m_olItems) m_olItems->Connect(nullptr);
  } catch (const Error&) {
    // What is let go need not agree.
  }
  arrivals_.Forget();
  m_olItems.reset();
  folder_.reset();
  folderPath_.clear();
  entryId_.clear();
  storeId_.clear();
}

void CalendarAccess::Release() noexcept {
  ReleaseFolder();
  session_.reset();
}

}  // namespace velkor
