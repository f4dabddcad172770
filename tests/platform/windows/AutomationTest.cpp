// tests/platform/windows/AutomationTest.cpp: late-bound calls, and programs that refuse them.
#include "platform/windows/com/Automation.h"

#include <gmock/gmock.h>

#include "platform/windows/system/MessageWindow.h"
#include "tests/platform/windows/Apartment.h"
#include "tests/standin/ServedObject.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using namespace std::chrono_literals;

class Automation : public testing::Test {
 protected:
  AutomationObject Object() { return {program_, kind_, fake_.Get()}; }

  Apartment apartment_;
  DialogOwner owner_;
  AutomationProgram program_{"Outlook", owner_, 300ms};
  AutomationClass kind_{"Items"};
  ServedProgram server_;
  ComPtr<ServedObject> fake_ = MakeServed(server_, "Items");
};

TEST(Variant, AListOfTextsIsAnArrayFromOne) {
  const Variant list(std::vector<std::string>{"Leave", "日"});
  ASSERT_EQ(list.Get().vt, VT_ARRAY | VT_VARIANT);
  LONG first = 0;
  LONG last = 0;
  ::SafeArrayGetLBound(list.Get().parray, 1, &first);
  ::SafeArrayGetUBound(list.Get().parray, 1, &last);
  EXPECT_EQ(first, 1);
  EXPECT_EQ(last, 2);
  Variant text;
  ::SafeArrayGetElement(list.Get().parray, &last, text.Out());
  EXPECT_EQ(text.ToText(), "日");
}

TEST_F(Automation, ArgumentsArriveInOrderAndMembersAreLookedUpOnceForAllObjectsOfAClass) {
  std::string got;
  fake_->members["Between"] = [&](const ServedCall& call) {
    got += call[0].ToText() + "-" + call[1].ToText() + " ";
    return Variant(7);
  };
  for (int i = 0; i < 3; ++i) {
    EXPECT_EQ(Object().Call("Between", {Variant("é"), Variant(i)}).ToInt(), 7);
  }
  EXPECT_EQ(got, "é-0 é-1 é-2 ");
  EXPECT_EQ(server_.lookups, 1);
  EXPECT_EQ(server_.log.size(), 3U);
}

TEST_F(Automation, AnObjectThatKnowsAMemberByAnotherIdentifierIsAskedForIt) {
  ServedProgram newer;
  newer.ids["Items.Other"] = 1;
  const auto other = MakeServed(newer, "Items");
  fake_->Has("Count", 3);
  other->Has("Count", 4);
  EXPECT_EQ(Object().GetInt("Count"), 3);
  EXPECT_EQ(AutomationObject(program_, kind_, other.Get()).GetInt("Count"), 4);
  EXPECT_EQ(newer.lookups, 1);
}

TEST_F(Automation, AnAnswerOfAnotherKindNamesItsMember) {
  fake_->Has("Count", "many");
  EXPECT_THAT(ErrorOf([&] { Object().GetInt("Count"); }).Description(),
              HasSubstr("Items.Count: Type mismatch"));
}

TEST_F(Automation, AnObjectThatTakesNoReferenceGetsTheValue) {
  std::vector<WORD> flags;
  fake_->members["item"] = [&](const ServedCall& call) {
    flags.push_back(call.flags);
    if (call.flags == DISPATCH_PROPERTYPUTREF) throw DISP_E_MEMBERNOTFOUND;
    EXPECT_EQ(call[0].ToObject().Get(), fake_.Get());
    return Variant();
  };
  Object().PutReference("item", fake_.Get());
  EXPECT_THAT(flags, testing::ElementsAre(DISPATCH_PROPERTYPUTREF, DISPATCH_PROPERTYPUT));
}

TEST_F(Automation, AFailureNamesTheProgramTheMemberAndWhatWasSaid) {
  struct Case {
    std::function<Variant(const ServedCall&)> member;
    long number;
    std::string text;
  };
  const HRESULT notFound = static_cast<HRESULT>(0x8004010F);
  const HRESULT unavailable = static_cast<HRESULT>(0x800706BA);
  const Case cases[] = {
      {[=](auto&) -> Variant { throw Error(notFound, "Not fönd."); }, notFound, "Not fönd."},
      {[](auto&) -> Variant { throw Error(0, ""); }, DISP_E_EXCEPTION, "did not say why"},
      {[](auto&) -> Variant { throw DISP_E_TYPEMISMATCH; }, DISP_E_TYPEMISMATCH, "Type mismatch"},
      {[](auto&) -> Variant { throw RPC_E_DISCONNECTED; }, RPC_E_DISCONNECTED, "was closed"},
      {[=](auto&) -> Variant { throw unavailable; }, unavailable, "was closed"},
      {nullptr, DISP_E_UNKNOWNNAME, "does not know"},
  };
  for (const Case& each : cases) {
    fake_->members.clear();
    kind_.Forget();
    if (each.member) fake_->members["Restrict"] = each.member;
    const Error error = ErrorOf([&] { Object().Call("Restrict", {Variant("[Start] >")}); });
    EXPECT_EQ(error.Number(), each.number);
    EXPECT_THAT(error.Description(),
                AllOf(HasSubstr("Outlook: Items.Restrict: "), HasSubstr(each.text)));
    EXPECT_EQ(error.Source(), "Items");
    EXPECT_FALSE(owner_.IsBusy());
  }
  EXPECT_TRUE(IsDisconnected(unavailable));
  EXPECT_FALSE(IsDisconnected(notFound));
}

TEST_F(Automation, ARejectedCallIsMadeAgainWhileMessagesFlow) {
  int refusals = 0;
  bool busyInMessage = false;
  MessageWindow window([&](UINT, WPARAM) { busyInMessage = owner_.IsBusy(); });
  ::PostMessageW(window.Get(), WM_APP, 0, 0);
  const HRESULT answers[] = {RPC_E_CALL_REJECTED, RPC_E_SERVERCALL_RETRYLATER,
                             RPC_E_SERVERCALL_REJECTED, S_OK};
  server_.refuse = [&] { return answers[refusals++]; };
  bool idle = false;
  program_.onIdle = [&] { idle = !program_.IsInCall(); };
  fake_->Has("Count", 3);
  EXPECT_EQ(Object().Get("Count").ToInt(), 3);
  EXPECT_EQ(refusals, 4);
  EXPECT_TRUE(busyInMessage);
  EXPECT_TRUE(idle);
  EXPECT_FALSE(owner_.IsBusy());
}

TEST_F(Automation, AProgramThatStaysBusyIsGivenUpAfterAWhile) {
  int attempts = 0;
  server_.refuse = [&] { return ++attempts, RPC_E_CALL_REJECTED; };
  fake_->Has("Count", 3);
  const Error error = ErrorOf([&] { Object().Get("Count"); });
  // 300 milliseconds, with a pause of 50 before each other attempt.
  EXPECT_TRUE(attempts > 1 && attempts <= 8) << attempts;
  EXPECT_EQ(error.Number(), RPC_E_CALL_REJECTED);
  EXPECT_THAT(error.Description(), HasSubstr("Outlook is busy"));
}

TEST_F(Automation, TheEndOfTheThreadEndsTheWaitAndIsPassedOn) {
  AutomationProgram patient("Outlook", owner_, 60s);
  server_.refuse = [] { return RPC_E_CALL_REJECTED; };
  fake_->Has("Count", 3);
  ::PostQuitMessage(42);
  EXPECT_THROW(AutomationObject(patient, kind_, fake_.Get()).Get("Count"), Error);
  MSG message;
  ASSERT_TRUE(::PeekMessageW(&message, nullptr, WM_QUIT, WM_QUIT, PM_REMOVE));
  EXPECT_EQ(message.wParam, 42U);
}

TEST_F(Automation, AHolderMayLetGoInTheMiddleOfACall) {
  auto held = std::make_unique<AutomationObject>(Object());
  auto life = std::make_shared<char>();
  const std::weak_ptr<char> alive = life;
  fake_->members["Life"] = [life = std::move(life)](const ServedCall&) { return Variant(); };
  fake_->members["Close"] = [&](const ServedCall&) {
    held.reset();
    fake_.Reset();
    return Variant(!alive.expired());
  };
  EXPECT_TRUE(held->Call("Close").ToBool());
  EXPECT_TRUE(alive.expired());
}

TEST_F(Automation, AProgramThatIsNotInstalledIsNamed) {
  EXPECT_EQ(program_.Join("No.Such.Program"), nullptr);
  const Error error = ErrorOf([&] { JoinOrCreate(program_, "No.Such.Program"); });
  EXPECT_THAT(error.Description(), HasSubstr("Outlook is not installed"));
  EXPECT_LT(error.Number(), 0);
}

}  // namespace
}  // namespace velkor
