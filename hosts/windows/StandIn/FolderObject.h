// hosts/windows/StandIn/FolderObject.h: folders and their collections by their names; part of the
// calendar program for tests, never shipped.
#pragma once

#include <memory>
#include <vector>

#include "hosts/windows/StandIn/NamedMembers.h"

namespace velkor {

class FolderObject : public ServedObject<> {
 public:
  /// @param folder  in the session's store
  FolderObject(StandInSession& session, CalendarFolder& folder);

 private:
  struct Tables;

  Variant Name(const Call&) { return Variant(folder_.Name()); }
  Variant EntryID(const Call&) { return Variant(folder_.EntryID()); }
  Variant StoreID(const Call&) { return Variant(Shared().store.StoreID()); }
  Variant DefaultItemType(const Call&) { return Variant(std::int32_t{folder_.ItemType()}); }
  Variant Folders(const Call& call);
  Variant Items(const Call& call);

  CalendarFolder& folder_;
};

class FoldersObject : public ServedObject<> {
 public:
  /// @param parent  of these folders; null for the store
  FoldersObject(StandInSession& session, CalendarFolder* parent);

  /// By name or by number from 1.
  Variant Item(const Call& call);

 private:
  struct Tables;

  Variant Count(const Call& call);
  Variant NewEnum(const Call& call);
  /// Name, and a kind of default folder (OlDefaultFolders) that says what the folder holds.
  Variant Add(const Call& call);

  const std::vector<std::unique_ptr<CalendarFolder>>& Folders() const;

  CalendarFolder* parent_;
};

}  // namespace velkor
