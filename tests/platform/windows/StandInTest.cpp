// tests/platform/windows/StandInTest.cpp: the tests' own calendar program answers, raises events,
// fails as it is told and ends.
#include "tests/platform/windows/StandIn.h"

#include <gmock/gmock.h>

#include <thread>

#include "platform/Outlook.h"
#include "platform/windows/DispatchSink.h"
#include "platform/windows/WindowsLocale.h"

namespace velkor {
namespace {

using ::testing::ElementsAre;
using ::testing::HasSubstr;

const Date Noon = Date::FromFields({2026, 3, 4, 12, 0, 0});
const Date OneOClock = Date::FromFields({2026, 3, 4, 13, 0, 0});

constexpr IID ItemsEvents = {0x00063077, 0, 0, {0xc0, 0, 0, 0, 0, 0, 0, 0x46}};

/// Writes down the item events: "F001 subject".
class Sink : public DispatchSink {
 public:
  explicit Sink(StandIn& program) : DispatchSink(ItemsEvents), program_(program) {}
  STDMETHODIMP Invoke(DISPID id, REFIID, LCID, WORD, DISPPARAMS* arguments, VARIANT*, EXCEPINFO*,
                      UINT*) override {
    std::string line = id == 0xF001 ? "ItemAdd" : id == 0xF002 ? "ItemChange" : "ItemRemove";
    if (arguments->cArgs == 1) {
      const auto item = program_.As("AppointmentItem", arguments->rgvarg[0].pdispVal);
      line += " " + item.Get("Subject").ToText();
    }
    events.push_back(line);
    return S_OK;
  }

  std::vector<std::string> events;

 private:
  StandIn& program_;
};

void Connect(const AutomationObject& items, Sink& sink) {
  ComPtr<IConnectionPointContainer> container;
  ComPtr<IConnectionPoint> point;
  ASSERT_EQ(items.Get()->QueryInterface(IID_PPV_ARGS(&container)), S_OK);
  ASSERT_EQ(container->FindConnectionPoint(ItemsEvents, &point), S_OK);
  DWORD cookie = 0;
  ASSERT_EQ(point->Advise(static_cast<IDispatch*>(&sink), &cookie), S_OK);
}

std::string WithinMarch() {
  WindowsLocale locale;
  return "[Start] <= '" + locale.ShortDate(Date::FromYmd(2026, 3, 31)) +
         " 11:59 PM' AND [End] > '" + locale.ShortDate(Date::FromYmd(2026, 3, 1)) + " 12:00 AM'";
}

/// The number of an Error that `work` throws; 0 for none.
template <typename Work>
HRESULT NumberOf(const Work& work) {
  try {
    work();
    return S_OK;
  } catch (const Error& error) {
    return static_cast<HRESULT>(error.Number());
  }
}

TEST(StandInTest, OccurrencesOfAMonthComeInOrder) {
  StandIn program;
  program.Add("Zürich", Noon, OneOClock).Put("Location", Variant("Hall"));
  program.Testing().Call("AddRecurring", {Variant("Weekly"), Variant(Date::FromYmd(2026, 2, 20)),
                                          Variant(Date::FromYmd(2026, 2, 21)), Variant(4)});
  const auto march =
      program.As("Items", program.Items().Call("Restrict", {Variant(WithinMarch())}));
  march.Call("Sort", {Variant("[Start]")});
  march.Put("IncludeRecurrences", Variant(true));

  std::vector<std::string> found;
  for (auto item = program.As("AppointmentItem", march.Call("GetFirst")); item;
       item = program.As("AppointmentItem", march.Call("GetNext"))) {
    found.push_back(item.Get("Subject").ToText() + " " +
                    std::to_string(item.Get("Start").ToDate().Fields().day));
  }
  EXPECT_THAT(found, ElementsAre("Zürich 4", "Weekly 6", "Weekly 13"));
  EXPECT_EQ(march.Get("Count").ToInt(), 3);
}

TEST(StandInTest, ItemEventsReachAnotherProcess) {
  StandIn program;
  const auto items = program.Items();
  const ComPtr<Sink> sink(new Sink(program));
  Connect(items, *sink.Get());
  const auto item = program.Add("First", Noon, OneOClock);
  item.Put("Subject", Variant("Second"));
  item.Call("Save");
  // It shows the item as it is when the event arrives.
  ASSERT_TRUE(PumpUntil([&] { return sink->events.size() == 2; }));
  EXPECT_THAT(sink->events[0], HasSubstr("ItemAdd "));
  EXPECT_EQ(sink->events[1], "ItemChange Second");
  item.Call("Delete");
  ASSERT_TRUE(PumpUntil([&] { return sink->events.size() == 3; }));
  EXPECT_EQ(sink->events[2], "ItemRemove");
}

TEST(StandInTest, ModalInspectorSavesWhatIsTyped) {
  StandIn program;
  const auto items = program.Items();
  const ComPtr<Sink> sink(new Sink(program));
  const auto item = program.Add("Old", Noon, OneOClock);
  Connect(items, *sink.Get());
  HWND seen = nullptr;
  std::thread user([&] {
    for (int i = 0; seen == nullptr && i < 500; ++i, ::Sleep(20)) {
      seen = ::FindWindowW(L"#32770", L"Old - Appointment");
    }
    ::SendMessageW(::GetDlgItem(seen, 100), WM_SETTEXT, 0, reinterpret_cast<LPARAM>(L"New"));
    ::PostMessageW(seen, WM_COMMAND, IDOK, 0);
  });
  item.Call("Display", {Variant(true)});
  user.join();
  EXPECT_NE(seen, nullptr);
  EXPECT_FALSE(::IsWindow(seen));
  EXPECT_THAT(program.Testing().Call("ListItems").ToText(),
              "New|2026-03-04 12:00|2026-03-04 13:00||0\r\n");
  EXPECT_TRUE(PumpUntil([&] { return !sink->events.empty(); }));
}

TEST(StandInTest, FailuresCarryNumbersAsACalendarProgramGivesThem) {
  StandIn program(std::chrono::milliseconds(0));
  const auto session = program.Session();
  const auto top = program.As("Folders", session.Get("Folders"));
  const auto personal = program.As("MAPIFolder", top.Call("Item", {Variant("personal folders")}));
  const auto inner = program.As("Folders", personal.Get("Folders"));
  EXPECT_EQ(program.As("MAPIFolder", inner.Call("Item", {Variant("Inbox")}))
                .Get("DefaultItemType")
                .ToInt(),
            0);
  constexpr auto NotFound = static_cast<HRESULT>(0x8004010F);
  EXPECT_EQ(NumberOf([&] { inner.Call("Item", {Variant("Nowhere")}); }), NotFound);
  EXPECT_EQ(NumberOf([&] { session.Call("GetItemFromID", {Variant("x")}); }), NotFound);
  EXPECT_EQ(NumberOf([&] { session.Get("Nonsense"); }), DISP_E_UNKNOWNNAME);

  program.Testing().Call("RefuseLogon", {Variant(true)});
  EXPECT_EQ(NumberOf([&] { program.Session(); }), static_cast<HRESULT>(0x8004011D));
  program.Testing().Call("RefuseLogon", {Variant(false)});
  program.Testing().Call("FailMember",
                         {Variant("MAPIFolder.Items"), Variant(std::int32_t{E_FAIL})});
  EXPECT_EQ(NumberOf([&] { program.Items(); }), E_FAIL);
  program.Testing().Call("FailMember", {Variant("MAPIFolder.Items"), Variant(0)});
  EXPECT_EQ(NumberOf([&] { program.Items(); }), S_OK);
}

TEST(StandInTest, CallsAreRejectedAsOftenAsAsked) {
  StandIn program(std::chrono::milliseconds(0));
  const auto version = [&] { program.Application().Get("Version"); };
  version();
  const std::pair<const char*, HRESULT> faults[] = {{"Busy", RPC_E_SERVERCALL_RETRYLATER},
                                                    {"Refuse", RPC_E_CALL_REJECTED}};
  for (const auto& [fault, code] : faults) {
    program.Testing().Call(fault, {Variant(2)});
    EXPECT_EQ(NumberOf(version), code) << fault;
    EXPECT_EQ(NumberOf(version), code) << fault;
    EXPECT_EQ(NumberOf(version), S_OK) << fault;
  }
}

TEST(StandInTest, CallsAreCountedByMember) {
  StandIn program;
  program.Testing().Call("AddMany", {Variant(2026), Variant(300)});
  const auto items = program.Items();
  EXPECT_EQ(items.Get("Count").ToInt(), 300);
  program.Testing().Call("Reset");
  const auto item = program.As("AppointmentItem", items.Call("GetFirst"));
  item.Get("Subject");
  item.Get("Subject");
  EXPECT_EQ(program.Testing().Get("Invokes").ToInt(), 3);
  EXPECT_EQ(program.Testing().Get("Lookups").ToInt(), 2);
  EXPECT_EQ(program.Testing().Get("MemberCounts").ToText(),
            "AppointmentItem.Subject 2\r\nItems.GetFirst 1\r\n");
}

TEST(StandInTest, HelperClassesReadItems) {
  StandIn program;
  const auto item = program.Add("Texts", Noon, OneOClock);
  item.Put("Body", Variant("a < b"));
  const auto reader = program.Create("zqAppointmentItem", "ZQCDO.zqAppointmentItem");
  reader.PutReference("item", item.Get());
  EXPECT_EQ(reader.Get("Body").ToText(), "a < b");
  EXPECT_THAT(reader.Get("HTMLBody").ToText(), HasSubstr("a &lt; b"));
  const auto user = program.Create("zqCurrentUser", "ZQCDO.zqCurrentUser");
  EXPECT_EQ(user.Get("Name").ToText(), "Test User");
}

TEST(StandInTest, MeetingsLeadToTheirAppointments) {
  StandIn program;
  const Variant id =
      program.Testing().Call("AddMeeting", {Variant("Board"), Variant(Noon), Variant(OneOClock)});
  const auto meeting =
      program.As("MeetingItem", program.Session().Call("GetItemFromID", {Variant(id.ToText())}));
  EXPECT_EQ(meeting.Get("Class").ToInt(), outlook::ClassMeetingRequest);
  const auto appointment =
      program.As("AppointmentItem", meeting.Call("GetAssociatedAppointment", {Variant(false)}));
  EXPECT_EQ(appointment.Get("Start").ToDate(), Noon);
}

TEST(StandInTest, ProcessEndsInTheMiddleOfACall) {
  StandIn program;
  program.Testing().Call("ExitIn", {Variant("Version")});
  EXPECT_TRUE(IsDisconnected(NumberOf([&] { program.Application().Get("Version"); })));
  EXPECT_EQ(::WaitForSingleObject(program.Process(), 5000), WAIT_OBJECT_0);
}

TEST(StandInTest, ProcessEndsWithItsLastClientAlsoOneThatJoinedIt) {
  StandIn program;
  AutomationObject joined = program.As("Application", program.Join());
  ASSERT_TRUE(joined);
  program.Testing() = program.As("Testing", ComPtr<IDispatch>());
  program.Application() = program.As("Application", ComPtr<IDispatch>());
  EXPECT_EQ(::WaitForSingleObject(program.Process(), 2500), WAIT_TIMEOUT);
  EXPECT_EQ(joined.Get("Version").ToText(), "16.0.0.1");
  joined = program.Application();
  EXPECT_EQ(::WaitForSingleObject(program.Process(), 5000), WAIT_OBJECT_0);
}

TEST(StandInTest, ProcessEndsWhenNobodyCalls) {
  StandIn program;
  program.Testing().Call("EndWhenIdleFor", {Variant(500)});
  EXPECT_EQ(::WaitForSingleObject(program.Process(), 5000), WAIT_OBJECT_0);
}

TEST(StandInTest, RegistrationLeavesAnotherProgramsNameAlone) {
  const std::string name = "Outlook.Application\\CLSID";
  const ClassesValue other[] = {{name, "", "{00000000-0000-0000-0000-000000000001}"}};
  WriteClasses(Registration::Machine, other);
  EXPECT_EQ(RunStandIn("/register"), 1U);
  EXPECT_EQ(RunStandIn("/unregister"), 0U);
  CLSID id = {};
  EXPECT_EQ(::CLSIDFromProgID(L"Outlook.Application", &id), S_OK);
  EXPECT_EQ(ToText(id), other[0].text);
  RemoveClasses(Registration::Machine, "Outlook.Application");
}

}  // namespace
}  // namespace velkor
