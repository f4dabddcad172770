// tests/platform/windows/AutomationOutlookTest.cpp: the calendar program by automation.
#include "platform/windows/outlook/AutomationOutlook.h"

#include <gmock/gmock.h>

#include "platform/windows/system/WindowsShell.h"
#include "tests/platform/windows/Apartment.h"
#include "tests/platform/windows/FakeOutlook.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr GUID ItemsEvents = {0x00063077, 0, 0, {0xC0, 0, 0, 0, 0, 0, 0, 0x46}};
constexpr DISPID RemoveEvent = 0xF003;

class AutomationOutlookTest : public testing::Test, protected OutlookItemEvents {
 protected:
  std::unique_ptr<OutlookFolder> Folder() {
    return outlook_.GetNamespace("MAPI")->GetDefaultFolder(9);
  }
  /// The first item of the folder.
  std::unique_ptr<OutlookItem> Item() { return Folder()->Items()->GetFirst(); }
  void ProcessMessages() {
    for (int round = 0; round < 3; ++round) WindowsShell(owner_, "").ProcessMessages();
  }

  void ItemAdd(OutlookItem& item) override { Take("add " + item.Subject()); }
  void ItemChange(OutlookItem& item) override { Take("change " + item.Subject()); }
  void ItemRemove() override { Take("remove"); }
  void Take(const std::string& event) {
    events_.push_back(event);
    if (onEvent_) onEvent_();
  }

  static std::string Failure(const std::function<void()>& work) {
    return ErrorOf(work).Description();
  }

  Apartment apartment_;
  DialogOwner owner_;
  FakeOutlook fake_;
  AutomationOutlook outlook_{owner_, {.patience = 200ms, .open = fake_.Opener()}};
  std::vector<std::string> events_;
  std::function<void()> onEvent_;
};

TEST_F(AutomationOutlookTest, FiltersJudgeOccurrencesSinceItemsAreWidenedBeforeTheyAreRestricted) {
  const auto items = Folder()->Items()->Restrict("[Start] < '1/1/2006'");
  items->Sort("[Start]");
  fake_.program.log.clear();
  items->IncludeRecurrences(true);
  EXPECT_THAT(fake_.program.log,
              ElementsAre("MAPIFolder.Items", "Items.Sort", "Items.IncludeRecurrences",
                          "Items.Restrict", "Items.Sort"));
}

TEST_F(AutomationOutlookTest, AnUnknownFolderIsNoneButAnotherFailureIsTold) {
  fake_.changes["NameSpace"] = [](ServedObject& space) {
    space.HasObject("GetItemFromID", nullptr);
  };
  const auto session = outlook_.GetNamespace("MAPI");
  EXPECT_EQ(session->Folder("Teem"), nullptr);
  ASSERT_NE(session->Folder("Team"), nullptr);
  EXPECT_EQ(session->Folder("Team")->DefaultItemType(), outlook::ItemTypeAppointment);
  EXPECT_EQ(session->Folder("Team")->Folder("below"), nullptr);
  fake_.program.onCall = [](const std::string& kind, const std::string&) {
    if (kind == "Folders") throw Error(E_ACCESSDENIED, "Logged off.");
  };
  EXPECT_EQ(Failure([&] { session->Folder("Team"); }), "Outlook: Folders.Item: Logged off.");
  EXPECT_THAT(Failure([&] { session->GetItemFromID("gone", "store"); }),
              HasSubstr("NameSpace.GetItemFromID: "));
}

TEST_F(AutomationOutlookTest, AProgramThatWasClosedIsStartedAgainForTheNextSession) {
  const auto session = outlook_.GetNamespace("MAPI");
  int refusals = 1;
  fake_.program.refuse = [&] { return refusals-- > 0 ? RPC_E_DISCONNECTED : S_OK; };
  EXPECT_THAT(Failure([&] { session->GetDefaultFolder(9); }),
              HasSubstr("NameSpace.GetDefaultFolder: Outlook was closed"));
  EXPECT_EQ(outlook_.Version(), "11.0.5608");
  // Of another version.
  std::swap(fake_.program.ids["Application.Version"],
            fake_.program.ids["Application.GetNamespace"]);
  refusals = 1;
  EXPECT_EQ(outlook_.Version(), "11.0.5608");
  EXPECT_THAT(fake_.opened, ElementsAre("Outlook.Application", "Outlook.Application"));
  refusals = 2;
  EXPECT_THAT(Failure([&] { outlook_.GetNamespace("MAPI"); }), HasSubstr("Outlook was closed"));
}

TEST_F(AutomationOutlookTest, APropertyIsReadOnceUntilTheItemIsChangedOrShown) {
  fake_.Save("first");
  bool busy = false;
  bool modal = false;
  owner_.onModal = [&](bool open) { modal = open; };
  fake_.changes["AppointmentItem"] = [&](ServedObject& item) {
    item.members["Display"] = [&](const ServedCall& call) {
      busy = owner_.IsBusy() && modal && call[0].ToBool();
      return Variant();
    };
  };
  const auto item = Item();
  const std::function<void()> changes[] = {[] {}, [&] { item->SetSubject("zweiter 日"); },
                                           [&] { item->SetAllDayEvent(true); },
                                           [&] { item->Save(); }, [&] { item->Display(true); }};
  std::string subject = "first";
  for (const auto& change : changes) {
    change();
    EXPECT_EQ(item->Subject(), subject);
    EXPECT_EQ(item->Subject(), subject);
    subject = "zweiter 日";
  }
  EXPECT_EQ(
      std::count(fake_.program.log.begin(), fake_.program.log.end(), "AppointmentItem.Subject"), 6);
  EXPECT_EQ(fake_.calendar.AllItems()[0]->fields.subject, subject);
  EXPECT_TRUE(fake_.calendar.AllItems()[0]->fields.allDay);
  EXPECT_TRUE(busy);
  EXPECT_FALSE(modal);
  EXPECT_FALSE(owner_.IsBusy());
}

TEST_F(AutomationOutlookTest, ANewItemIsOfTheFoldersOwnTypeOrOfTheFormThatIsNamed) {
  bool named = true;
  fake_.changes["Items"] = [&](ServedObject& items) {
    items.members["Add"] = [&, add = items.members["Add"]](const ServedCall& call) {
      named = call.Has(0);
      return add(call);
    };
  };
  EXPECT_EQ(Folder()->Items()->Add("")->MessageClass(), "IPM.Appointment");
  EXPECT_FALSE(named);
  EXPECT_EQ(Folder()->Items()->Add("IPM.Appointment.Own")->MessageClass(), "IPM.Appointment.Own");
}

TEST_F(AutomationOutlookTest, TheAppointmentOfAMeetingItemMayBeMissing) {
  CalendarItem meeting;
  meeting.entryId = "meeting";
  meeting.itemClass = outlook::ClassMeetingRequest;
  fake_.calendar.Add(std::move(meeting));
  auto failure = static_cast<HRESULT>(0x8004010F);
  fake_.changes["MeetingItem"] = [&](ServedObject& item) {
    item.members["GetAssociatedAppointment"] = [&](const ServedCall& call) {
      EXPECT_FALSE(call[0].ToBool());
      if (failure != S_OK) throw Error(failure, "No.");
      return Nothing();
    };
  };
  EXPECT_EQ(Item()->GetAssociatedAppointment(false), nullptr);
  failure = S_OK;
  EXPECT_EQ(Item()->GetAssociatedAppointment(false), nullptr);
  failure = E_OUTOFMEMORY;
  EXPECT_EQ(Failure([&] { Item()->GetAssociatedAppointment(false); }),
            "Outlook: MeetingItem.GetAssociatedAppointment: No.");
}

TEST_F(AutomationOutlookTest, TheBodyComesThroughTheHelperLibraryWhereItIsInstalled) {
  fake_.Save("first");
  EXPECT_EQ(Item()->Body(), "own body");
  EXPECT_EQ(Item()->Body(), "own body");
  EXPECT_EQ(std::count(fake_.opened.begin(), fake_.opened.end(), "ZQCDO.zqAppointmentItem"), 1);

  auto helper = MakeServed(fake_.program, "zqAppointmentItem");
  ComPtr<IDispatch> given;
  helper->members["item"] = [&](const ServedCall& call) {
    given = call[0].ToObject();
    return Variant();
  };
  helper->Has("Body", "through the helper");
  fake_.classes["ZQCDO.zqAppointmentItem"] = helper;
  AutomationOutlook outlook(owner_, {.open = fake_.Opener()});
  const auto item = outlook.GetNamespace("MAPI")->GetDefaultFolder(9)->Items()->GetFirst();
  EXPECT_EQ(item->Body(), "through the helper");
  EXPECT_EQ(given.Get(), fake_.given["AppointmentItem"].Get());
  helper->members.erase("Body");
  EXPECT_EQ(item->Body(), "through the helper");
}

TEST_F(AutomationOutlookTest, TheUsersNameIsCleanedUpAfterAndElseTheSessionsIsTaken) {
  EXPECT_EQ(outlook_.CurrentUserName(), "Session User");

  auto helper = MakeServed(fake_.program, "zqCurrentUser");
  helper->Has("Name", "Clean User");
  helper->members["Cleanup"] = [](const ServedCall&) { return Variant(); };
  fake_.classes["ZQCDO.zqCurrentUser"] = helper;
  AutomationOutlook outlook(owner_, {.open = fake_.Opener()});
  fake_.program.log.clear();
  EXPECT_EQ(outlook.CurrentUserName(), "Clean User");
  EXPECT_THAT(fake_.program.log, ElementsAre("zqCurrentUser.Name", "zqCurrentUser.Cleanup"));
  helper->members["Name"] = [](const ServedCall&) -> Variant { throw E_FAIL; };
  EXPECT_EQ(outlook.CurrentUserName(), "Session User");
}

TEST_F(AutomationOutlookTest, ItemEventsAreRaisedInOrderWhenMessagesAreProcessed) {
  const auto items = Folder()->Items();
  items->Connect(this);
  onEvent_ = [] { throw Error(errors::CalendarFailed, "the receiver fails"); };
  const std::string id = fake_.Save("new");
  fake_.Change(id);
  fake_.calendar.Delete(id);
  EXPECT_THAT(events_, IsEmpty());
  ProcessMessages();
  EXPECT_THAT(events_, ElementsAre("add new", "change new", "remove"));

  fake_.Save("another");
  items->Connect(nullptr);
  EXPECT_TRUE(fake_.given["Items"]->events->Listeners().empty());
  ProcessMessages();
  EXPECT_EQ(events_.size(), 3U);
}

TEST_F(AutomationOutlookTest, AnEventInTheMiddleOfACallWaitsForItsEndAndComesOnce) {
  const std::string first = fake_.Save("first");
  const std::string second = fake_.Save("second");
  const auto items = Folder()->Items();
  items->Connect(this);
  bool nested = false;
  fake_.changes["AppointmentItem"] = [&](ServedObject& item) {
    item.members["Display"] = [&](const ServedCall&) {
      fake_.Change(first);
      ProcessMessages();
      nested = !events_.empty();
      return Variant();
    };
  };
  fake_.calendar.Delete(second);
  Item()->Display(true);
  EXPECT_FALSE(nested);
  ProcessMessages();
  EXPECT_THAT(events_, ElementsAre("remove", "change first"));
}

TEST_F(AutomationOutlookTest, AReceiverIsLeftAloneAfterItsConnectionEnded) {
  auto items = Folder()->Items();
  items->Connect(this);
  const auto sinks = fake_.given["Items"]->events->Listeners();
  ASSERT_EQ(sinks.size(), 1U);
  ComPtr<IDispatch> byEvents;
  EXPECT_EQ(sinks[0]->QueryInterface(ItemsEvents, &byEvents), S_OK);
  fake_.program.refuse = [] { return RPC_E_DISCONNECTED; };
  items.reset();
  DISPPARAMS none{};
  EXPECT_EQ(
      byEvents->Invoke(RemoveEvent, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
      S_OK);
  ProcessMessages();
  EXPECT_THAT(events_, IsEmpty());
}

/// Events of a program that answers a question as it is told to.
class AskedPoint : public ConnectionPoint {
 public:
  AskedPoint(IConnectionPointContainer& container, const HRESULT& answer)
      : ConnectionPoint(container, ItemsEvents), answer_(answer) {}
  STDMETHODIMP GetConnectionInterface(IID* events) override {
    const HRESULT known = ConnectionPoint::GetConnectionInterface(events);
    return answer_ == S_OK ? known : answer_;
  }

 private:
  const HRESULT& answer_;
};

TEST_F(AutomationOutlookTest, AConnectionIsLostOnceTheProgramIsFoundGoneAndAskedForIt) {
  HRESULT answer = S_OK;
  fake_.changes["Items"] = [&](ServedObject& items) {
    items.events = ComPtr<ConnectionPoint>(new AskedPoint(items, answer));
  };
  const auto folder = Folder();
  const auto items = folder->Items();
  EXPECT_FALSE(items->IsConnected(true));
  items->Connect(this);
  for (const HRESULT there : {HRESULT{S_OK}, RPC_E_CALL_REJECTED}) {
    answer = there;
    EXPECT_TRUE(items->IsConnected(true));
    fake_.program.refuse = [] { return RPC_E_DISCONNECTED; };
    EXPECT_ANY_THROW(folder->Items());
    EXPECT_TRUE(items->IsConnected(false)) << "what is gone was another program's";
  }
  answer = RPC_E_SERVER_DIED;
  EXPECT_TRUE(items->IsConnected(false)) << "nothing has shown it yet";
  EXPECT_ANY_THROW(folder->Items());
  EXPECT_FALSE(items->IsConnected(false));
}

TEST_F(AutomationOutlookTest, ItemsWithoutEventsSaySoAndNothingWaits) {
  const auto items = Folder()->Items();
  fake_.given["Items"]->events.Reset();
  EXPECT_THAT(Failure([&] { items->Connect(this); }), HasSubstr("Outlook: Items.ItemAdd: "));
}

}  // namespace
}  // namespace velkor
