// tests/platform/windows/AutomationOutlookTest.cpp: the calendar program by automation.
#include "platform/windows/outlook/AutomationOutlook.h"

#include <gmock/gmock.h>

#include "platform/windows/system/WindowsShell.h"
#include "tests/platform/windows/FakeOutlook.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using namespace std::chrono_literals;

constexpr DISPID AddEvent = 0xF001;
constexpr DISPID ChangeEvent = 0xF002;
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

  template <typename Work>
  static std::string ErrorOf(const Work& work) {
    try {
      work();
    } catch (const Error& error) {
      return error.Description();
    }
    return "no error";
  }

  Apartment apartment_;
  DialogOwner owner_;
  FakeOutlook fake_;
  AutomationOutlook outlook_{owner_, {.patience = 200ms, .open = fake_.Opener()}};
  std::vector<std::string> events_;
  std::function<void()> onEvent_;
};

TEST_F(AutomationOutlookTest, FiltersJudgeOccurrencesSinceItemsAreWidenedBeforeTheyAreRestricted) {
  const auto items = Folder()->Items()->Restrict("[Start] < '2006'");
  items->Sort("[Start]");
  fake_.program.log.clear();
  items->IncludeRecurrences(true);
  EXPECT_THAT(fake_.program.log,
              ElementsAre("MAPIFolder.Items", "Items.Sort", "Items.IncludeRecurrences",
                          "Items.Restrict", "Items.Sort"));
}

TEST_F(AutomationOutlookTest, AnUnknownFolderIsNoneButAnotherFailureIsTold) {
  const auto session = outlook_.GetNamespace("MAPI");
  EXPECT_EQ(session->Folder("Teem"), nullptr);
  ASSERT_NE(session->Folder("Team"), nullptr);
  EXPECT_EQ(session->Folder("Team")->DefaultItemType(), outlook::ItemTypeAppointment);
  EXPECT_EQ(session->Folder("Team")->Folder("below"), nullptr);
  fake_.folders->members["Item"] = [](const FakeCall&) -> Variant {
    throw FakeFailure(E_ACCESSDENIED, "Logged off.");
  };
  EXPECT_EQ(ErrorOf([&] { session->Folder("Team"); }), "Outlook: Folders.Item: Logged off.");
  fake_.session->HasObject("GetItemFromID", nullptr);
  EXPECT_THAT(ErrorOf([&] { session->GetItemFromID("gone", "store"); }),
              HasSubstr("NameSpace.GetItemFromID: "));
}

TEST_F(AutomationOutlookTest, AProgramThatWasClosedIsStartedAgainForTheNextSession) {
  const auto session = outlook_.GetNamespace("MAPI");
  int refusals = 1;
  fake_.program.refuse = [&] { return refusals-- > 0 ? RPC_E_DISCONNECTED : S_OK; };
  EXPECT_THAT(ErrorOf([&] { session->GetDefaultFolder(9); }),
              HasSubstr("NameSpace.GetDefaultFolder: Outlook was closed"));
  EXPECT_EQ(outlook_.Version(), "11.0.5608");
  // Of another version.
  std::swap(fake_.program.ids["Application.Version"],
            fake_.program.ids["Application.GetNamespace"]);
  refusals = 1;
  EXPECT_EQ(outlook_.Version(), "11.0.5608");
  EXPECT_THAT(fake_.opened, ElementsAre("Outlook.Application", "Outlook.Application"));
  refusals = 2;
  EXPECT_THAT(ErrorOf([&] { outlook_.GetNamespace("MAPI"); }), HasSubstr("Outlook was closed"));
}

TEST_F(AutomationOutlookTest, WithoutTheProgramEverythingSaysSo) {
  AutomationOutlook absent(owner_, {.programId = "No.Such.Program"});
  EXPECT_THAT(ErrorOf([&] { absent.GetNamespace("MAPI"); }),
              HasSubstr("Outlook is not installed on this computer"));
  EXPECT_THAT(ErrorOf([&] { absent.CurrentUserName(); }), HasSubstr("Outlook is not installed"));
}

TEST_F(AutomationOutlookTest, APropertyIsReadOnceUntilTheItemIsChangedOrShown) {
  fake_.contents.push_back(fake_.MakeAppointment("first"));
  bool busy = false;
  bool modal = false;
  std::vector<std::string> put;
  owner_.onModal = [&](bool open) { modal = open; };
  for (const char* member : {"Subject", "Start", "AllDayEvent"}) {
    fake_.contents[0]->members[member] = [&put, member](const FakeCall& call) {
      if (!call.Puts()) return Variant(member);
      put.push_back(member + ("=" + call.Argument(0).ToText()));
      return Variant();
    };
  }
  fake_.contents[0]->members["Display"] = [&](const FakeCall& call) {
    busy = owner_.IsBusy() && modal && call.Argument(0).ToBool();
    return Variant();
  };
  fake_.contents[0]->members["Save"] = [](const FakeCall&) { return Variant(); };

  const auto item = Item();
  const std::function<void()> changes[] = {[] {}, [&] { item->SetSubject("zweiter 日"); },
                                           [&] { item->SetAllDayEvent(true); },
                                           [&] { item->Save(); }, [&] { item->Display(true); }};
  for (const auto& change : changes) {
    change();
    EXPECT_EQ(item->Subject(), "Subject");
    EXPECT_EQ(item->Subject(), "Subject");
  }
  EXPECT_EQ(
      std::count(fake_.program.log.begin(), fake_.program.log.end(), "AppointmentItem.Subject"), 6);
  EXPECT_THAT(put, ElementsAre("Subject=zweiter 日", "AllDayEvent=-1"));
  EXPECT_TRUE(busy);
  EXPECT_FALSE(modal);
  EXPECT_FALSE(owner_.IsBusy());
}

TEST_F(AutomationOutlookTest, ANewItemIsOfTheFoldersOwnTypeOrOfTheFormThatIsNamed) {
  EXPECT_EQ(Folder()->Items()->Add("")->MessageClass(), "no type");
  EXPECT_EQ(Folder()->Items()->Add("IPM.Appointment.Own")->MessageClass(), "IPM.Appointment.Own");
}

TEST_F(AutomationOutlookTest, TheAppointmentOfAMeetingItemMayBeMissing) {
  auto meeting = MakeFake(fake_.program, "MeetingItem");
  meeting->Has("Class", outlook::ClassMeetingRequest);
  fake_.contents = {meeting};
  HRESULT failure = FakeOutlook::NotFound;
  meeting->members["GetAssociatedAppointment"] = [&](const FakeCall& call) -> Variant {
    EXPECT_FALSE(call.Argument(0).ToBool());
    if (failure != S_OK) throw FakeFailure(failure, "No.");
    return Variant(static_cast<IDispatch*>(nullptr));
  };
  EXPECT_EQ(Item()->GetAssociatedAppointment(false), nullptr);
  failure = S_OK;
  EXPECT_EQ(Item()->GetAssociatedAppointment(false), nullptr);
  failure = E_OUTOFMEMORY;
  EXPECT_EQ(ErrorOf([&] { Item()->GetAssociatedAppointment(false); }),
            "Outlook: MeetingItem.GetAssociatedAppointment: No.");
}

TEST_F(AutomationOutlookTest, TheBodyComesThroughTheHelperLibraryWhereItIsInstalled) {
  fake_.contents.push_back(fake_.MakeAppointment("first"));
  EXPECT_EQ(Item()->Body(), "own body");
  EXPECT_EQ(Item()->Body(), "own body");
  EXPECT_EQ(std::count(fake_.opened.begin(), fake_.opened.end(), "ZQCDO.zqAppointmentItem"), 1);

  auto helper = MakeFake(fake_.program, "zqAppointmentItem");
  ComPtr<IDispatch> given;
  helper->members["item"] = [&](const FakeCall& call) {
    given = call.Argument(0).ToObject();
    return Variant();
  };
  helper->Has("Body", "through the helper");
  fake_.classes["ZQCDO.zqAppointmentItem"] = helper;
  AutomationOutlook outlook(owner_, {.open = fake_.Opener()});
  const auto item = outlook.GetNamespace("MAPI")->GetDefaultFolder(9)->Items()->GetFirst();
  EXPECT_EQ(item->Body(), "through the helper");
  EXPECT_EQ(given.Get(), fake_.contents[0].Get());
  helper->members.erase("Body");
  EXPECT_EQ(item->Body(), "through the helper");
}

TEST_F(AutomationOutlookTest, TheUsersNameIsCleanedUpAfterAndElseTheSessionsIsTaken) {
  auto user = MakeFake(fake_.program, "Recipient");
  user->Has("Name", "Session User");
  fake_.session->HasObject("CurrentUser", user);
  EXPECT_EQ(outlook_.CurrentUserName(), "Session User");

  auto helper = MakeFake(fake_.program, "zqCurrentUser");
  helper->Has("Name", "Clean User");
  helper->members["Cleanup"] = [](const FakeCall&) { return Variant(); };
  fake_.classes["ZQCDO.zqCurrentUser"] = helper;
  AutomationOutlook outlook(owner_, {.open = fake_.Opener()});
  fake_.program.log.clear();
  EXPECT_EQ(outlook.CurrentUserName(), "Clean User");
  EXPECT_THAT(fake_.program.log, ElementsAre("zqCurrentUser.Name", "zqCurrentUser.Cleanup"));
  helper->members["Name"] = [](const FakeCall&) -> Variant { throw E_FAIL; };
  EXPECT_EQ(outlook.CurrentUserName(), "Session User");
}

TEST_F(AutomationOutlookTest, ItemEventsAreRaisedInOrderWhenMessagesAreProcessed) {
  const auto items = Folder()->Items();
  items->Connect(this);
  const auto item = fake_.MakeAppointment("new");
  onEvent_ = [] { throw Error(errors::CalendarFailed, "the receiver fails"); };
  fake_.Raise(AddEvent, item);
  fake_.Raise(ChangeEvent, item);
  fake_.Raise(RemoveEvent);
  EXPECT_THAT(events_, IsEmpty());
  ProcessMessages();
  EXPECT_THAT(events_, ElementsAre("add new", "change new", "remove"));

  fake_.Raise(RemoveEvent);
  items->Connect(nullptr);
  EXPECT_TRUE(fake_.point->Listeners().empty());
  ProcessMessages();
  EXPECT_EQ(events_.size(), 3U);
}

TEST_F(AutomationOutlookTest, AnEventInTheMiddleOfACallWaitsForItsEndAndComesOnce) {
  const auto items = Folder()->Items();
  items->Connect(this);
  bool nested = false;
  fake_.contents.push_back(fake_.MakeAppointment("first"));
  fake_.contents[0]->members["Display"] = [&](const FakeCall&) {
    fake_.Raise(ChangeEvent, fake_.contents[0]);
    ProcessMessages();
    nested = !events_.empty();
    return Variant();
  };
  fake_.Raise(RemoveEvent);
  Item()->Display(true);
  EXPECT_FALSE(nested);
  ProcessMessages();
  EXPECT_THAT(events_, ElementsAre("remove", "change first"));
}

TEST_F(AutomationOutlookTest, AReceiverIsLeftAloneAfterItsConnectionEnded) {
  auto items = Folder()->Items();
  items->Connect(this);
  const auto sinks = fake_.point->Listeners();
  ASSERT_EQ(sinks.size(), 1U);
  ComPtr<IDispatch> byEvents;
  EXPECT_EQ(sinks[0]->QueryInterface(FakeOutlook::ItemsEvents, &byEvents), S_OK);
  fake_.program.refuse = [] { return RPC_E_DISCONNECTED; };
  items.reset();
  DISPPARAMS none{};
  EXPECT_EQ(
      byEvents->Invoke(RemoveEvent, IID_NULL, 0, DISPATCH_METHOD, &none, nullptr, nullptr, nullptr),
      S_OK);
  ProcessMessages();
  EXPECT_THAT(events_, IsEmpty());
}

TEST_F(AutomationOutlookTest, ItemsWithoutEventsSaySoAndNothingWaits) {
  auto dull = MakeFake(fake_.program, "Items");
  fake_.folder->HasObject("Items", dull);
  EXPECT_THAT(ErrorOf([&] { Folder()->Items()->Connect(this); }),
              HasSubstr("Outlook: Items.ItemAdd: "));
}

}  // namespace
}  // namespace velkor
