// tests/standin/main.cpp: a calendar program that answers as Outlook does by automation, so
// that the Windows tests have one to call; never shipped.
#include <cstdio>
#include <list>
#include <string_view>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/EmbeddedOutlook.h"
#include "platform/windows/system/Wide.h"
#include "platform/windows/system/WindowsLocale.h"
#include "platform/windows/system/WindowsSystem.h"
#include "tests/standin/ClassOffer.h"
#include "tests/standin/Inspector.h"
#include "tests/standin/ServedClasses.h"
#include "tests/standin/ServedOutlook.h"
#include "tests/standin/ServerLoop.h"
#include "tests/standin/TestingObject.h"

namespace velkor {
namespace {

/// "Personal Folders", in it an empty "Calendar", the default one, and an "Inbox".
CalendarFolder& AddFolders(CalendarStore& store) {
  CalendarFolder& top = store.AddFolder("Personal Folders", "F-TOP", outlook::ItemTypeMail);
  top.AddFolder("Inbox", "F-INBOX", outlook::ItemTypeMail);
  CalendarFolder& calendar = top.AddFolder("Calendar", "F-CALENDAR", outlook::ItemTypeAppointment);
  store.SetDefaultCalendar(&calendar);
  return calendar;
}

std::string ListSeparator() {
  wchar_t text[8] = L"";
  ::GetLocaleInfoW(LOCALE_USER_DEFAULT, LOCALE_SLIST, text, static_cast<int>(std::size(text)));
  // Not as an automation text, which has its length in front.
  return *text == L'\0' ? "," : ToUtf8(std::wstring_view(text));
}

struct Apartment {
  Apartment() { Check(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED), "COM"); }
  ~Apartment() { ::CoUninitialize(); }
  Apartment(const Apartment&) = delete;
  Apartment& operator=(const Apartment&) = delete;
};

/// The program between its first and its last client.
void Serve() {
  ServerLoop loop;
  WindowsLocale locale;
  CalendarStore store("S-STANDIN");
  CalendarFolder& calendar = AddFolders(store);
  EmbeddedOutlook outlook(store, locale,
                          {.userName = "Test User",
                           .listSeparator = ListSeparator(),
                           .version = "16.0.0.1",
                           .inspector = ShowInspector,
                           .post = [&](auto task) { loop.Post(std::move(task)); },
                           .clock = [] { return WindowsClock().Now(); }});
  CallFaults faults;
  std::list<ClassOffer> offers;
  ServedProgram program;
  program.refuse = [&] {
    loop.NoteCall();
    return faults.PutOff();
  };
  // What is offered the system would take back by itself, but Wine hands out a class for ever that
  // a process which is no more has registered.
  program.onCall = [&](const std::string& kind, const std::string& member) {
    faults.Meet(kind, member, [&] { offers.clear(); });
  };
  ServedProgram uncounted;
  ServedOutlook served(program, outlook);
  served.onGive = [&](ServedObject& object) { object.held.push_back(loop.Hold()); };
  // What clients still hold goes with the apartment, before all that it uses.
  const Apartment apartment;
  const ComPtr<CallFilter> filter(new CallFilter(faults));
  ::CoRegisterMessageFilter(filter.Get(), nullptr);
  const auto makeApplication = [&] {
    ComPtr<ServedObject> made = served.Application();
    made->members["Testing"] = [&](const ServedCall&) {
      return ObjectAnswer(MakeTesting(uncounted, program, faults, calendar));
    };
    made->members["Quit"] = [&](const ServedCall&) {
      loop.End();
      return Variant();
    };
    return made;
  };
  const auto offer = [&](const ServedClass& kind, ClassOffer::Make make) {
    offers.emplace_back(kind.id, CLSCTX_LOCAL_SERVER, std::move(make));
  };
  const auto give = [&](const ComPtr<ServedObject>& made) {
    served.onGive(*made.Get());
    return ComPtr<IDispatch>(made.Get());
  };
  offer(CurrentUserClass, [&] { return give(served.CurrentUser()); });
  offer(AppointmentItemClass, [&] { return give(served.AppointmentItem()); });
  offer(ApplicationClass, [&] { return give(makeApplication()); });
  // For those who join a running program.
  const ComPtr<ServedObject> running = makeApplication();
  DWORD active = 0;
  ::RegisterActiveObject(static_cast<IDispatch*>(running.Get()), ApplicationClass.id,
                         ACTIVEOBJECT_WEAK, &active);
  ServerLoop::Run();
  ::RevokeActiveObject(active, nullptr);
  offers.clear();
  ::CoRegisterMessageFilter(nullptr, nullptr);
  ::CoDisconnectObject(static_cast<IDispatch*>(running.Get()), 0);
}

int Run(const std::vector<std::string_view>& arguments) {
  const std::string_view command = arguments.empty() ? "-Embedding" : arguments[0];
  if (command == "-Embedding" || command == "/Embedding") return Serve(), 0;
  if (command == "/register") {
    Register(ApplicationClass);
    if (arguments.size() == 1) return 0;
    for (const auto& helper : {CurrentUserClass, AppointmentItemClass}) Register(helper);
    return 0;
  }
  if (command == "/unregister") {
    for (const auto& served : {ApplicationClass, CurrentUserClass, AppointmentItemClass}) {
      Unregister(served);
    }
    return 0;
  }
  std::fputs("StandInCalendar [/register [zqcdo] | /unregister]\n", stderr);
  return 2;
}

}  // namespace
}  // namespace velkor

int main(int argc, char** argv) {
  try {
    return velkor::Run({argv + 1, argv + argc});
  } catch (const velkor::Error& error) {
    std::fprintf(stderr, "StandInCalendar: %s\n", error.Description().c_str());
    return 1;
  }
}
