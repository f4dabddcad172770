// tests/standin/NamespaceObject.cpp: the members of the session and of its user.
#include "tests/standin/NamespaceObject.h"

#include "tests/standin/FolderObject.h"
#include "tests/standin/ItemObject.h"

namespace velkor {
namespace {

class RecipientObject : public ServedObject<> {
 public:
  explicit RecipientObject(StandInSession& session) : ServedObject(session, Kind()) {}

 private:
  static const WatchedClass& Kind();

  Variant Name(const Call&) { return Variant(Shared().outlook.CurrentUserName()); }
};

const WatchedClass& RecipientObject::Kind() {
  static constexpr Member Members[] = {{"Name", Bound<&RecipientObject::Name>}};
  static constexpr WatchedClass Recipient = {{"Recipient", 800, Members}};
  return Recipient;
}

class NamespaceObject : public ServedObject<> {
 public:
  explicit NamespaceObject(StandInSession& session) : ServedObject(session, Kind()) {}

 private:
  static const WatchedClass& Kind();

  Variant Folders(const Call& call) { return FoldersAnswer(Shared(), nullptr, call); }
  Variant GetDefaultFolder(const Call& call) {
    if (call[0].ToInt() != outlook::FolderCalendar) FailNotFound();
    return FolderAnswer(Shared(), Shared().calendar);
  }
  Variant GetFolderFromID(const Call& call) {
    CalendarFolder* folder =
        IsOurStore(call) ? Shared().store.FolderById(call[0].ToText()) : nullptr;
    if (folder == nullptr) FailNotFound();
    return FolderAnswer(Shared(), *folder);
  }
  Variant GetItemFromID(const Call& call) {
    const std::string id = call[0].ToText();
    if (!IsOurStore(call) || Shared().store.FolderOfItem(id) == nullptr) FailNotFound();
    return ToObject(Shared(), Shared().space->GetItemFromID(id, Shared().store.StoreID()));
  }
  Variant CurrentUser(const Call&) { return Variant(new RecipientObject(Shared())); }
  /// Everybody is logged on.
  Variant LogonOrOff(const Call&) { return {}; }

  /// Argument 1, when given, is the identifier of the store.
  bool IsOurStore(const Call& call) const {
    return !call.Has(1) || call[1].ToText() == Shared().store.StoreID();
  }
};

const WatchedClass& NamespaceObject::Kind() {
  using Self = NamespaceObject;
  static constexpr Member Members[] = {
      {"Folders", Bound<&Self::Folders>},
      {"GetDefaultFolder", Bound<&Self::GetDefaultFolder>},
      {"GetFolderFromID", Bound<&Self::GetFolderFromID>},
      {"GetItemFromID", Bound<&Self::GetItemFromID>},
      {"CurrentUser", Bound<&Self::CurrentUser>},
      {"Logon", Bound<&Self::LogonOrOff>},
      {"Logoff", Bound<&Self::LogonOrOff>},
  };
  static constexpr WatchedClass Namespace = {{"NameSpace", 200, Members}};
  return Namespace;
}

}  // namespace

Variant NamespaceAnswer(StandInSession& session) {
  return Variant(new NamespaceObject(session));
}

}  // namespace velkor
