// tests/standin/ApplicationObject.cpp: the members of the application, and its clients.
#include "tests/standin/ApplicationObject.h"

#include "tests/standin/ItemObject.h"
#include "tests/standin/NamespaceObject.h"
#include "tests/standin/TestingObject.h"
#include "values/Error.h"

namespace velkor {

const WatchedClass& ApplicationObject::Kind() {
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
  static constexpr WatchedClass Application = {{"Application", 100, Members}, true, false};
  return Application;
}

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
  // Refuses all but "MAPI".
  Shared().outlook.GetNamespace(call[0].ToText());
  return NamespaceAnswer(Shared());
}

Variant ApplicationObject::Session(const Call&) {
  return NamespaceAnswer(Shared());
}

Variant ApplicationObject::CreateItem(const Call& call) {
  if (call[0].ToInt() != outlook::ItemTypeAppointment) {
    throw Error(errors::InvalidProcedureCall, "Only appointments can be created here.");
  }
  const auto folder = Shared().space->GetDefaultFolder(outlook::FolderCalendar);
  return ToObject(Shared(), folder->Items()->Add({}));
}

Variant ApplicationObject::Testing(const Call&) {
  return TestingAnswer(Shared());
}

Variant ApplicationObject::Quit(const Call&) {
  Shared().loop.End();
  return {};
}

}  // namespace velkor
