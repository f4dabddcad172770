// platform/windows/outlook/AutomationFolders.h: the session and the folders of the calendar
// program.
#pragma once

#include "platform/Outlook.h"
#include "platform/windows/outlook/OutlookLink.h"

namespace velkor {

class AutomationFolder : public OutlookFolder {
 public:
  AutomationFolder(OutlookLink& link, AutomationObject folder)
      : link_(link), folder_(std::move(folder)) {}

  std::string Name() override { return folder_.GetText("Name"); }
  std::string EntryID() override { return folder_.GetText("EntryID"); }
  std::string StoreID() override { return folder_.GetText("StoreID"); }
  int DefaultItemType() override { return folder_.GetInt("DefaultItemType"); }
  std::unique_ptr<OutlookFolder> Folder(std::string_view name) override;
  std::unique_ptr<OutlookItems> Items() override;
  /// The object model has neither.
  bool ReplaceCategory(std::string_view, std::string_view) override { return false; }
  std::shared_ptr<const void> Hold() override { return nullptr; }

 private:
  OutlookLink& link_;
  AutomationObject folder_;
};

class AutomationNamespace : public OutlookNamespace {
 public:
  AutomationNamespace(OutlookLink& link, AutomationObject session)
      : link_(link), session_(std::move(session)) {}

  std::unique_ptr<OutlookFolder> Folder(std::string_view name) override;
  std::unique_ptr<OutlookFolder> GetDefaultFolder(int kind) override;
  std::unique_ptr<OutlookFolder> GetFolderFromID(std::string_view entryId,
                                                 std::string_view storeId) override;
  std::unique_ptr<OutlookItem> GetItemFromID(std::string_view entryId,
                                             std::string_view storeId) override;

 private:
  Variant FromID(std::string_view member, std::string_view entryId, std::string_view storeId);

  OutlookLink& link_;
  AutomationObject session_;
};

}  // namespace velkor
