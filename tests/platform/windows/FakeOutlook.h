// tests/platform/windows/FakeOutlook.h: a calendar program in this process, over objects by name.
#pragma once

#include <algorithm>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include "platform/Outlook.h"
#include "platform/windows/com/ConnectionPoint.h"
#include "platform/windows/outlook/AutomationOutlook.h"
#include "tests/platform/windows/FakeAutomation.h"

namespace velkor {

/// One folder below the session, with the items that a test gives it. A restriction keeps them all.
class FakeOutlook : private IConnectionPointContainer {
 public:
  static constexpr GUID ItemsEvents = {
      0x00063077, 0x0000, 0x0000, {0xC0, 0x00, 0x00, 0x00, 0x00, 0x00, 0x00, 0x46}};
  static constexpr HRESULT NotFound = static_cast<HRESULT>(0x8004010F);

  FakeOutlook() : point(new ConnectionPoint(*this, ItemsEvents)) {
    application->Has("Version", "11.0.5608");
    application->HasObject("GetNamespace", session);
    session->HasObject("GetDefaultFolder", folder);
    session->HasObject("GetFolderFromID", folder);
    session->HasObject("Folders", folders);
    folder->HasObject("Folders", folders);
    folder->Has("DefaultItemType", 1);
    folders->members["Item"] = [this](const FakeCall& call) {
      if (call.Argument(0).ToText() != "Team") throw FakeFailure(NotFound, "Not found.");
      return Variant(static_cast<IDispatch*>(folder.Get()));
    };
    folder->members["Items"] = [this](const FakeCall&) { return Items(); };
  }
  virtual ~FakeOutlook() { point->Detach(); }
  FakeOutlook(const FakeOutlook&) = delete;
  FakeOutlook& operator=(const FakeOutlook&) = delete;

  /// Gives its objects by their program identifiers; an Error for what is not there.
  OpenObject Opener() {
    return [this](AutomationProgram&, std::string_view programId) {
      opened.emplace_back(programId);
      const auto found = classes.find(programId);
      if (found == classes.end()) throw Error(REGDB_E_CLASSNOTREG, "not installed");
      return ComPtr<IDispatch>(found->second.Get());
    };
  }

  ComPtr<FakeObject> MakeAppointment(const std::string& subject) {
    auto item = MakeFake(program, "AppointmentItem");
    item->Has("Class", outlook::ClassAppointment);
    item->Has("EntryID", "id " + subject);
    item->Has("MessageClass", "IPM.Appointment");
    item->Has("Subject", subject);
    item->Has("Categories", "Work");
    item->Has("Body", "own body");
    item->Has("Start", Date::FromYmd(2005, 4, 8));
    item->Has("End", Date::FromYmd(2005, 4, 9));
    return item;
  }

  /// An item event at every receiver.
  void Raise(DISPID event, const ComPtr<FakeObject>& item = nullptr) {
    if (item == nullptr) return point->Fire(event, {});
    point->Fire(event, {Variant(static_cast<IDispatch*>(item.Get())).Get()});
  }

  FakeProgram program;
  ComPtr<FakeObject> application = MakeFake(program, "Application");
  ComPtr<FakeObject> session = MakeFake(program, "NameSpace");
  ComPtr<FakeObject> folders = MakeFake(program, "Folders");
  ComPtr<FakeObject> folder = MakeFake(program, "MAPIFolder");
  std::vector<ComPtr<FakeObject>> contents;
  ComPtr<ConnectionPoint> point;
  std::map<std::string, ComPtr<FakeObject>, std::less<>> classes = {
      {"Outlook.Application", application}};
  std::vector<std::string> opened;

 private:
  Variant Items() {
    const auto items = MakeFake(program, "Items");
    const auto next = std::make_shared<std::size_t>(0);
    const auto give = [this, next] {
      if (*next >= contents.size()) return Variant(static_cast<IDispatch*>(nullptr));
      return Variant(static_cast<IDispatch*>(contents[(*next)++].Get()));
    };
    items->members["GetFirst"] = [next, give](const FakeCall&) { return *next = 0, give(); };
    items->members["GetNext"] = [give](const FakeCall&) { return give(); };
    items->members["Restrict"] = [this](const FakeCall&) { return Items(); };
    items->members["Sort"] = [](const FakeCall&) { return Variant(); };
    items->members["IncludeRecurrences"] = [](const FakeCall&) { return Variant(); };
    items->members["Add"] = [this](const FakeCall& call) {
      auto item = MakeAppointment("new");
      item->Has("MessageClass",
                call.arguments.empty() ? std::string("no type") : call.Argument(0).ToText());
      return Variant(static_cast<IDispatch*>(item.Get()));
    };
    items->events = this;
    return Variant(static_cast<IDispatch*>(items.Get()));
  }

  // The calendar program outlives its collections, so these events are not counted.
  STDMETHODIMP QueryInterface(REFIID, void** object) override {
    *object = nullptr;
    return E_NOINTERFACE;
  }
  STDMETHODIMP_(ULONG) AddRef() override { return 1; }
  STDMETHODIMP_(ULONG) Release() override { return 1; }
  STDMETHODIMP EnumConnectionPoints(IEnumConnectionPoints**) override { return E_NOTIMPL; }
  STDMETHODIMP FindConnectionPoint(REFIID id, IConnectionPoint** found) override {
    return velkor::FindConnectionPoint({point.Get()}, id, found);
  }
};

}  // namespace velkor
