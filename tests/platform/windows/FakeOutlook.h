// tests/platform/windows/FakeOutlook.h: the stand-in's objects in this process, as a test has them.
#pragma once

#include <functional>
#include <map>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "platform/headless/FixedLocale.h"
#include "platform/windows/outlook/AutomationOutlook.h"
#include "tests/standin/ServedOutlook.h"

namespace velkor {

/// One calendar, the default one and a top folder, empty at first.
class FakeOutlook {
 public:
  FakeOutlook() {
    store.SetDefaultCalendar(&calendar);
    served.onGive = [this](ServedObject& object) {
      given[object.ClassName()] = &object;
      const auto change = changes.find(object.ClassName());
      if (change != changes.end()) change->second(object);
    };
  }

  /// Gives its objects by their program identifiers; an Error for what is not there.
  OpenObject Opener() {
    return [this](AutomationProgram&, std::string_view programId) {
      opened.emplace_back(programId);
      const auto found = classes.find(programId);
      if (found == classes.end()) throw Error(REGDB_E_CLASSNOTREG, "not installed");
      return ComPtr<IDispatch>(found->second.Get());
    };
  }
  /// Saves an appointment of two days in 2005; answers its identifier.
  std::string Save(const std::string& subject) {
    CalendarItem item;
    item.fields.subject = subject;
    item.fields.body = "own body";
    item.start = Date::FromYmd(2005, 4, 8);
    item.end = Date::FromYmd(2005, 4, 10);
    return calendar.SaveNew(std::move(item), true, now)->entryId;
  }
  void Change(const std::string& id) {
    ItemChange change;
    change.location = "Room";
    calendar.SaveChange(id, change, now);
  }

  const Date now = Date::FromYmd(2005, 1, 1);

  FixedLocale locale;
  CalendarStore store{"store"};
  CalendarFolder& calendar = store.AddFolder("Team", "team", outlook::ItemTypeAppointment);
  EmbeddedOutlook outlook{store, locale, {.userName = "Session User", .version = "11.0.5608"}};
  ServedProgram program;
  ServedOutlook served{program, outlook};
  /// What a test does to each object of a class before a client gets it, and the last one given.
  std::map<std::string, std::function<void(ServedObject&)>> changes;
  std::map<std::string, ComPtr<ServedObject>> given;
  std::map<std::string, ComPtr<ServedObject>, std::less<>> classes = {
      {"Outlook.Application", served.Application()}};
  std::vector<std::string> opened;
};

}  // namespace velkor
