// hosts/windows/StandIn/ApplicationObject.h: the application, its session and its user by their
// names; part of the calendar program for tests, never shipped.
#pragma once

#include "hosts/windows/StandIn/NamedMembers.h"

namespace velkor {

/// One for the process, which holds it itself; it is told when others begin and cease to hold it.
class ApplicationObject : public ServedObject<IExternalConnection> {
 public:
  explicit ApplicationObject(StandInSession& session);

  STDMETHODIMP_(DWORD) AddConnection(DWORD kind, DWORD) override;
  STDMETHODIMP_(DWORD) ReleaseConnection(DWORD kind, DWORD, BOOL) override;

 private:
  struct Tables;

  Variant Name(const Call&) { return Variant("Outlook"); }
  Variant Version(const Call&) { return Variant(Shared().outlook.Version()); }
  Variant GetNamespace(const Call& call);
  Variant Session(const Call& call);
  Variant CreateItem(const Call& call);
  Variant Testing(const Call& call);
  Variant Quit(const Call& call);

  DWORD connections_ = 0;
};

class NamespaceObject : public ServedObject<> {
 public:
  explicit NamespaceObject(StandInSession& session);

 private:
  struct Tables;

  Variant Folders(const Call& call);
  Variant GetDefaultFolder(const Call& call);
  Variant GetFolderFromID(const Call& call);
  Variant GetItemFromID(const Call& call);
  Variant CurrentUser(const Call& call);
  /// Everybody is logged on.
  Variant Logon(const Call&) { return {}; }
  Variant Logoff(const Call&) { return {}; }

  /// Argument `index`, when given, is the identifier of the store.
  bool IsOurStore(const Call& call, std::size_t index) const;
};

class RecipientObject : public ServedObject<> {
 public:
  explicit RecipientObject(StandInSession& session);

 private:
  struct Tables;

  Variant Name(const Call&) { return Variant(Shared().outlook.CurrentUserName()); }
};

}  // namespace velkor
