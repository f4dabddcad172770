// calendar/EmbeddedOutlook.cpp: application, namespace and folders of the embedded calendar.
#include "calendar/EmbeddedOutlook.h"

#include "calendar/EmbeddedItems.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Session = std::shared_ptr<const EmbeddedSession>;

[[noreturn]] void Fail(const std::string& what) {
  throw Error(errors::CalendarFailed, what, "Calendar");
}

DateOrder OrderOf(LocaleApi& locale) {
  const std::string order = locale.LocaleInfo(locale.ThreadLocale(), locale_info::ShortDateOrder);
  if (order.starts_with('1')) return DateOrder::DayMonthYear;
  if (order.starts_with('2')) return DateOrder::YearMonthDay;
  return DateOrder::MonthDayYear;
}

std::unique_ptr<OutlookFolder> MakeFolder(CalendarFolder* folder, const Session& session);

std::unique_ptr<OutlookFolder> FolderByName(
    const std::vector<std::unique_ptr<CalendarFolder>>& folders, std::string_view name,
    const Session& session) {
  for (const auto& folder : folders) {
    if (CompareText(folder->Name(), name) == 0) return MakeFolder(folder.get(), session);
  }
  return nullptr;
}

class EmbeddedFolder : public OutlookFolder {
 public:
  EmbeddedFolder(CalendarFolder& folder, Session session)
      : folder_(folder), session_(std::move(session)) {}

  std::string Name() override { return folder_.Name(); }
  std::string EntryID() override { return folder_.EntryID(); }
  std::string StoreID() override { return session_->store.StoreID(); }
  int DefaultItemType() override { return folder_.ItemType(); }
  std::unique_ptr<OutlookFolder> Folder(std::string_view name) override {
    return FolderByName(folder_.Folders(), name, session_);
  }
  std::unique_ptr<OutlookItems> Items() override {
    return std::make_unique<EmbeddedItems>(folder_, session_);
  }
  bool ReplaceCategory(std::string_view from, std::string_view to) override {
    return folder_.ReplaceCategory(StorableLine(from), StorableLine(to),
                                   session_->clock ? session_->clock() : Date());
  }
  std::shared_ptr<const void> Hold() override { return folder_.Hold(); }

 private:
  CalendarFolder& folder_;
  Session session_;
};

std::unique_ptr<OutlookFolder> MakeFolder(CalendarFolder* folder, const Session& session) {
  return folder ? std::make_unique<EmbeddedFolder>(*folder, session) : nullptr;
}

class EmbeddedNamespace : public OutlookNamespace {
 public:
  explicit EmbeddedNamespace(Session session) : session_(std::move(session)) {}

  std::unique_ptr<OutlookFolder> Folder(std::string_view name) override {
    return FolderByName(session_->store.Folders(), name, session_);
  }
  std::unique_ptr<OutlookFolder> GetDefaultFolder(int kind) override {
    if (kind != outlook::FolderCalendar) {
      Fail("There is no default folder of kind " + std::to_string(kind) + ".");
    }
    return MakeFolder(session_->store.DefaultCalendar(), session_);
  }
  std::unique_ptr<OutlookFolder> GetFolderFromID(std::string_view entryId,
                                                 std::string_view storeId) override {
    CalendarFolder* folder =
        storeId == session_->store.StoreID() ? session_->store.FolderById(entryId) : nullptr;
    if (!folder) {
      Fail("There is no folder with the identifier \"" + std::string(entryId) + "\".");
    }
    return MakeFolder(folder, session_);
  }
  std::unique_ptr<OutlookItem> GetItemFromID(std::string_view entryId,
                                             std::string_view storeId) override {
    const std::string id(entryId);
    CalendarFolder* folder =
        storeId == session_->store.StoreID() ? session_->store.FolderOfItem(id) : nullptr;
    if (!folder) Fail("There is no appointment with the identifier \"" + id + "\".");
    return MakeEmbeddedItem(folder, {folder->Find(id), -1}, session_);
  }

 private:
  Session session_;
};

}  // namespace

std::unique_ptr<OutlookNamespace> EmbeddedOutlook::GetNamespace(std::string_view type) {
  if (type != "MAPI") Fail("There is no namespace \"" + std::string(type) + "\".");
  auto session = std::make_shared<const EmbeddedSession>(
      EmbeddedSession{store_, options_.listSeparator + " ", OrderOf(locale_), options_.inspector,
                      options_.post, options_.clock});
  return std::make_unique<EmbeddedNamespace>(std::move(session));
}

}  // namespace velkor
