// tests/standin/ApplicationObject.h: the application by its names; part of the calendar
// program for tests, never shipped.
#pragma once

#include "tests/standin/ServedObject.h"

namespace velkor {

/// One for the process, which holds it itself; it is told when others begin and cease to hold it.
class ApplicationObject : public ServedObject<IExternalConnection> {
 public:
  explicit ApplicationObject(StandInSession& session) : ServedObject(session, Kind()) {}

  STDMETHODIMP_(DWORD) AddConnection(DWORD kind, DWORD) override;
  STDMETHODIMP_(DWORD) ReleaseConnection(DWORD kind, DWORD, BOOL) override;

 private:
  static const WatchedClass& Kind();

  Variant Name(const Call&) { return Variant("Outlook"); }
  Variant Version(const Call&) { return Variant(Shared().outlook.Version()); }
  Variant GetNamespace(const Call& call);
  Variant Session(const Call& call);
  Variant CreateItem(const Call& call);
  Variant Testing(const Call& call);
  Variant Quit(const Call& call);

  DWORD connections_ = 0;
};

}  // namespace velkor
