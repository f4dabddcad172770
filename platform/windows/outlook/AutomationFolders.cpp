// platform/windows/outlook/AutomationFolders.cpp: folders by name, kind and identifier.
#include "platform/windows/outlook/AutomationFolders.h"

#include "platform/windows/outlook/AutomationItem.h"
#include "platform/windows/outlook/AutomationItems.h"
#include "values/Error.h"

namespace velkor {
namespace {

std::unique_ptr<OutlookFolder> FolderOf(OutlookLink& link, const Variant& value) {
  AutomationObject folder = link.Object(link.folder, value);
  return folder ? std::make_unique<AutomationFolder>(link, std::move(folder)) : nullptr;
}

/// One of the folders below a folder or the session.
std::unique_ptr<OutlookFolder> SubFolder(OutlookLink& link, const AutomationObject& parent,
                                         const AutomationClass& kind, std::string_view name) {
  const AutomationObject folders =
      link.NeedObject(link.folders, parent.Get("Folders"), kind, "Folders");
  try {
    return FolderOf(link, folders.Get("Item", {Variant(name)}));
  } catch (const Error& error) {
    if (IsNotFound(error.Number())) return nullptr;
    throw;
  }
}

}  // namespace

std::unique_ptr<OutlookFolder> AutomationFolder::Folder(std::string_view name) {
  return SubFolder(link_, folder_, link_.folder, name);
}

std::unique_ptr<OutlookItems> AutomationFolder::Items() {
  // A copy, as the call may let this go.
  return ItemsOf(link_, AutomationObject(folder_));
}

std::unique_ptr<OutlookFolder> AutomationNamespace::Folder(std::string_view name) {
  return SubFolder(link_, session_, link_.session, name);
}

std::unique_ptr<OutlookFolder> AutomationNamespace::GetDefaultFolder(int kind) {
  OutlookLink& link = link_;
  return FolderOf(link, session_.Call("GetDefaultFolder", {Variant(kind)}));
}

/// A store's identifier may be left out, but not empty.
Variant AutomationNamespace::FromID(std::string_view member, std::string_view entryId,
                                    std::string_view storeId) {
  if (storeId.empty()) return session_.Call(member, {Variant(entryId)});
  return session_.Call(member, {Variant(entryId), Variant(storeId)});
}

std::unique_ptr<OutlookFolder> AutomationNamespace::GetFolderFromID(std::string_view entryId,
                                                                    std::string_view storeId) {
  OutlookLink& link = link_;
  return FolderOf(link, FromID("GetFolderFromID", entryId, storeId));
}

std::unique_ptr<OutlookItem> AutomationNamespace::GetItemFromID(std::string_view entryId,
                                                                std::string_view storeId) {
  OutlookLink& link = link_;
  const Variant answer = FromID("GetItemFromID", entryId, storeId);
  return ItemOf(link,
                Variant(link.NeedObject(link.item, answer, link.session, "GetItemFromID").Get()));
}

}  // namespace velkor
