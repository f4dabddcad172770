// hosts/windows/StandIn/ApplicationObject.cpp: the members of application, session and user.
#include "hosts/windows/StandIn/ApplicationObject.h"

#include "hosts/windows/StandIn/FolderObject.h"
#include "hosts/windows/StandIn/ItemObject.h"
#include "hosts/windows/StandIn/TestingObject.h"
#include "support/values/Error.h"

namespace velkor {

struct ApplicationObject::Tables {
  using Self = ApplicationObject;
  static constexpr Member Members[] = {
      {"Name", Bound<&Self::Name>},
      {"Version", Bound<&Self::Version>},
      {"GetNamespace", Bound<&Self::GetNamespace>},
      {"Session", Bound<&Self::Session>},
      {"CreateItem", Bound<&Self::CreateItem>},
      {"Testing", Bound<&Self::Testing>},
      {"Quit", Bound<&Self::Quit>},
  };
  static constexpr ObjectClass Application = {"Application", 100, Members, true, false};
};

ApplicationObject::ApplicationObject(StandInSession& session)
    : ServedObject(session, Tables::Application) {}

STDMETHODIMP_(DWORD) ApplicationObject::AddConnection(DWORD kind, DWORD) {
  if ((kind & EXTCONN_STRONG) == 0) return 0;
  if (connections_ == 0) Shared().loop.Enter();
  return ++connections_;
}

STDMETHODIMP_(DWORD) ApplicationObject::ReleaseConnection(DWORD kind, DWORD, BOOL) {
  if ((kind & EXTCONN_STRONG) == 0 || connections_ == 0) return connections_;
  if (--connections_ == 0) Shared().loop.Leave();
  return connections_;
}

Variant ApplicationObject::GetNamespace(const Call& call) {
  Shared().outlook.GetNamespace(call[0].ToText());
  return Variant(new NamespaceObject(Shared()));
}

Variant ApplicationObject::Session(const Call&) {
  return Variant(new NamespaceObject(Shared()));
}

Variant ApplicationObject::CreateItem(const Call& call) {
  if (call[0].ToInt() != outlook::ItemTypeAppointment) {
    throw Error(errors::InvalidProcedureCall, "Only appointments can be created here.");
  }
  const auto folder = Shared().space->GetDefaultFolder(outlook::FolderCalendar);
  return ToObject(Shared(), folder->Items()->Add({}));
}

Variant ApplicationObject::Testing(const Call&) {
  return Variant(new TestingObject(Shared()));
}

Variant ApplicationObject::Quit(const Call&) {
  Shared().loop.End();
  return {};
}

struct NamespaceObject::Tables {
  using Self = NamespaceObject;
  static constexpr Member Members[] = {
      {"Folders", Bound<&Self::Folders>},
      {"GetDefaultFolder", Bound<&Self::GetDefaultFolder>},
      {"GetFolderFromID", Bound<&Self::GetFolderFromID>},
      {"GetItemFromID", Bound<&Self::GetItemFromID>},
      {"CurrentUser", Bound<&Self::CurrentUser>},
      {"Logon", Bound<&Self::Logon>},
      {"Logoff", Bound<&Self::Logoff>},
  };
  static constexpr ObjectClass Namespace = {"NameSpace", 200, Members};
};

NamespaceObject::NamespaceObject(StandInSession& session)
    : ServedObject(session, Tables::Namespace) {}

bool NamespaceObject::IsOurStore(const Call& call, std::size_t index) const {
  return !call.Has(index) || call[index].ToText() == Shared().store.StoreID();
}

Variant NamespaceObject::Folders(const Call& call) {
  const ComPtr<FoldersObject> folders(new FoldersObject(Shared(), nullptr));
  // Folders("name") is its Item.
  return call.Has(0) ? folders->Item(call) : Variant(folders.Get());
}

Variant NamespaceObject::GetDefaultFolder(const Call& call) {
  if (call[0].ToInt() != outlook::FolderCalendar) FailNotFound();
  return Variant(new FolderObject(Shared(), Shared().calendar));
}

Variant NamespaceObject::GetFolderFromID(const Call& call) {
  CalendarFolder* folder =
      IsOurStore(call, 1) ? Shared().store.FolderById(call[0].ToText()) : nullptr;
  if (folder == nullptr) FailNotFound();
  return Variant(new FolderObject(Shared(), *folder));
}

Variant NamespaceObject::GetItemFromID(const Call& call) {
  const std::string id = call[0].ToText();
  if (!IsOurStore(call, 1) || Shared().store.FolderOfItem(id) == nullptr) FailNotFound();
  return ToObject(Shared(), Shared().space->GetItemFromID(id, Shared().store.StoreID()));
}

Variant NamespaceObject::CurrentUser(const Call&) {
  return Variant(new RecipientObject(Shared()));
}

struct RecipientObject::Tables {
  static constexpr Member Members[] = {{"Name", Bound<&RecipientObject::Name>}};
  static constexpr ObjectClass Recipient = {"Recipient", 800, Members};
};

RecipientObject::RecipientObject(StandInSession& session)
    : ServedObject(session, Tables::Recipient) {}

}  // namespace velkor
