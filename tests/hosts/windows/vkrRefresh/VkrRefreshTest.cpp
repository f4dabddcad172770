// tests/hosts/windows/vkrRefresh/VkrRefreshTest.cpp: the real cache utility over a calendar
// program.
#include "VelkorCacheUtility.h"
#include "model/CacheRecord.h"
#include "platform/Outlook.h"
#include "platform/windows/com/Registration.h"
#include "platform/windows/system/WindowsFiles.h"
#include "platform/windows/system/WindowsLocale.h"
#include "tests/platform/windows/StandIn.h"
#include "tests/platform/windows/UtilityCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;

constexpr int Appointments = 40;

/// A calendar of 2026 in a process of its own.
class VkrRefresh : public UtilityCase {
 protected:
  VkrRefresh() {
    AutomationProgram program("Outlook", owner_);
    AutomationClass spaces("NameSpace");
    AutomationClass folders("MAPIFolder");
    const Variant session = standIn_.Application().Call("GetNamespace", {Variant("MAPI")});
    const AutomationObject space(program, spaces, session.ToObject());
    const Variant found = space.Call("GetDefaultFolder", {Variant(outlook::FolderCalendar)});
    const AutomationObject folder(program, folders, found.ToObject());
    inputs_.folderId = folder.GetText("EntryID");
    inputs_.storeId = folder.GetText("StoreID");
    Testing().Call("AddMany", {Variant(2026), Variant(Appointments)});
  }
  ~VkrRefresh() override { utility_.reset(); }

  const AutomationObject& Testing() { return standIn_.Testing(); }

  /// -1 for no cache file.
  int RecordsInCache() const {
    const auto bytes = WindowsFiles().Read(inputs_.cacheFile);
    if (!bytes) return -1;
    WindowsLocale locale;
    CacheRecordReader reader(*bytes, locale);
    int count = 0;
    for (CalEvent event; reader.Next(event);) ++count;
    EXPECT_EQ(reader.Remaining(), 0U);
    return count;
  }
  bool WorkFileExists() const { return WindowsFiles().Exists(inputs_.workFile); }
  /// Lets a slow refresh come as far as its items.
  bool AwaitWorkFile() {
    return PumpUntil([&] { return WorkFileExists(); });
  }

  StandIn standIn_;
};

TEST_F(VkrRefresh, WritesTheYearFromOneProcessIntoAnotherOnesCacheFile) {
  EXPECT_THAT(Refresh(), Pair(1, 0));
  EXPECT_EQ(RecordsInCache(), Appointments);
  Testing().Call("AddMany", {Variant(2026), Variant(2)});
  EXPECT_THAT(Refresh(), Pair(1, 0));
  EXPECT_EQ(RecordsInCache(), Appointments + 2);
  EXPECT_FALSE(WorkFileExists());
  EXPECT_EQ(Utilities().size(), 1U);
  EXPECT_THAT(errors_, IsEmpty());
}

TEST_F(VkrRefresh, FivePlannersOfOneCalendarTakeTheirTurns) {
  constexpr std::size_t Rounds = 8;
  std::vector<short> results;
  std::vector<std::unique_ptr<CacheUtility>> planners;
  for (int i = 0; i < 5; ++i) {
    planners.push_back(utilities_.Create([&](short result, long) { results.push_back(result); }));
  }
  for (std::size_t round = 1; round <= Rounds; ++round) {
    for (const auto& planner : planners) planner->Start(inputs_);
    ASSERT_TRUE(PumpUntil([&] { return results.size() == round * planners.size(); }));
  }
  EXPECT_THAT(results, testing::Each(1));
  EXPECT_EQ(RecordsInCache(), Appointments);
  EXPECT_FALSE(WorkFileExists());
}

TEST_F(VkrRefresh, AYearTakesAtMostEightCallsForEachItemAndLooksEachNameUpOnce) {
  constexpr int Many = 300;
  Testing().Call("AddMany", {Variant(2026), Variant(Many)});
  // This client has looked these names up before they are counted.
  const AutomationObject& testing = Testing();
  testing.Get("Invokes");
  testing.Get("Lookups");
  testing.Get("MemberCounts");
  testing.Call("Reset");
  EXPECT_THAT(Refresh(), Pair(1, 0));
  const int lookups = testing.Get("Lookups").ToInt();
  const int calls = testing.Get("Invokes").ToInt();
  const std::string members = testing.Get("MemberCounts").ToText();
  EXPECT_EQ(RecordsInCache(), Appointments + Many);
  EXPECT_LE(calls, 8 * (Appointments + Many)) << members;
  EXPECT_GT(calls, Appointments + Many) << members;
  EXPECT_LE(lookups, std::count(members.begin(), members.end(), '\n')) << members;
}

TEST_F(VkrRefresh, AStopIsHeardInTheMiddleAndTheNextRefreshGoesThrough) {
  Testing().Call("Slow", {Variant(100)});
  utility_->Start(inputs_);
  ASSERT_TRUE(AwaitWorkFile());
  utility_->Stop();
  EXPECT_THAT(AwaitCompletion(), Pair(6, 0));
  const std::string calls = Testing().Get("MemberCounts").ToText();
  constexpr std::string_view Reading = "Items.GetNext ";
  const std::size_t read = calls.find(Reading);
  EXPECT_LT(read == calls.npos ? 0 : std::stoi(calls.substr(read + Reading.size())),
            Appointments / 2);
  EXPECT_EQ(RecordsInCache(), -1);
  EXPECT_FALSE(WorkFileExists());
  Testing().Call("ClearFaults");
  EXPECT_THAT(Refresh(), Pair(1, 0));
}

TEST_F(VkrRefresh, WhatTheCalendarProgramRefusesHasItsCodeAndNumber) {
  ASSERT_THAT(Refresh(), Pair(1, 0));
  Testing().Call("RefuseLogon", {Variant(true)});
  EXPECT_THAT(Refresh(), Pair(5, static_cast<long>(0x8004011D)));
  Testing().Call("ClearFaults");
  Testing().Call("FailMember",
                 {Variant("Subject"), Variant(static_cast<std::int32_t>(0x8004010F))});
  EXPECT_THAT(Refresh(), Pair(7, static_cast<long>(0x8004010F)));
  Testing().Call("ClearFaults");
  Testing().Call("Busy", {Variant(3)});
  EXPECT_THAT(Refresh(), Pair(1, 0)) << "it waits for one that is busy for a moment";
  EXPECT_EQ(RecordsInCache(), Appointments);
}

TEST_F(VkrRefresh, ACalendarProgramThatEndsInTheMiddleFailsThisRefreshOnly) {
  ASSERT_THAT(Refresh(), Pair(1, 0));
  Testing().Call("ExitIn", {Variant("GetNext")});
  utility_->Start(inputs_);
  const Completion completion = AwaitCompletion();
  EXPECT_EQ(completion.first, 7);
  EXPECT_TRUE(IsDisconnected(completion.second)) << completion.second;
  EXPECT_EQ(RecordsInCache(), Appointments);
  EXPECT_FALSE(WorkFileExists());
  standIn_.Begin();
  Testing().Call("AddMany", {Variant(2026), Variant(3)});
  EXPECT_THAT(Refresh(), Pair(1, 0));
  EXPECT_EQ(RecordsInCache(), 3);
}

TEST_F(VkrRefresh, AUtilityKilledInTheMiddleFailsThisRefreshOnly) {
  Testing().Call("Slow", {Variant(100)});
  utility_->Start(inputs_);
  ASSERT_TRUE(AwaitWorkFile());
  KillUtility();
  EXPECT_THAT(AwaitCompletion(), Pair(7, 0));
  Testing().Call("ClearFaults");
  EXPECT_THAT(Refresh(), Pair(1, 0));
  EXPECT_FALSE(WorkFileExists());
  // What the killed one held of it is given back by nobody.
  Testing().Call("ExitIn", {Variant("Version")});
  EXPECT_THROW(standIn_.Application().Get("Version"), Error);
}

TEST_F(VkrRefresh, AClientThatIsDestroyedOrKilledEndsItInTheMiddle) {
  Testing().Call("Slow", {Variant(100)});
  utility_->Start(inputs_);
  ASSERT_TRUE(AwaitWorkFile());
  utility_.reset();
  EXPECT_TRUE(PumpUntil([] { return Utilities().empty(); }, 3000));
  EXPECT_FALSE(WorkFileExists());

  const KernelHandle client = StartProgram(
      "refresh_tests.exe", "--client \"" + inputs_.cacheFile + "\" \"" + inputs_.workFile +
                               "\" \"" + inputs_.folderId + "\" \"" + inputs_.storeId + "\"");
  ASSERT_TRUE(AwaitWorkFile());
  ::TerminateProcess(client.get(), 9);
  // Well before it would be ended by force.
  EXPECT_TRUE(PumpUntil([] { return Utilities().empty(); }, 5000));
  EXPECT_FALSE(WorkFileExists());
  EXPECT_EQ(RecordsInCache(), -1);
  EXPECT_THAT(completions_, IsEmpty());
}

using VkrRefreshInterface = UtilityCase;

TEST_F(VkrRefreshInterface, AnswersThoseWhoKnowItsInterfaceAndTellsThemWhatIsWrong) {
  ComPtr<IVelkorCacheUtility> utility;
  ASSERT_EQ(
      ::CoCreateInstance(CLSID_VelkorCacheUtility, nullptr, CLSCTX_LOCAL_SERVER,
                         IID_IVelkorCacheUtility, reinterpret_cast<void**>(utility.GetAddressOf())),
      S_OK);
  short version = 0;
  EXPECT_EQ(utility->get_InterfaceVersion(&version), S_OK);
  EXPECT_EQ(version, CacheUtilityInterface);
  EXPECT_EQ(utility->put_CacheFile(Bstr(inputs_.cacheFile).Get()), S_OK);

  ComPtr<IProvideClassInfo2> classInfo;
  ASSERT_EQ(utility.As(&classInfo), S_OK);
  GUID events{};
  EXPECT_EQ(classInfo->GetGUID(GUIDKIND_DEFAULT_SOURCE_DISP_IID, &events), S_OK);
  EXPECT_EQ(ToText(events), ToText(DIID__IVelkorCacheUtilityEvents));
  ComPtr<IConnectionPointContainer> container;
  ASSERT_EQ(utility.As(&container), S_OK);
  ComPtr<IConnectionPoint> point;
  EXPECT_EQ(container->FindConnectionPoint(events, &point), S_OK);

  const auto self = static_cast<std::int32_t>(::GetCurrentProcessId());
  EXPECT_EQ(utility->put_ClientProcess(self), S_OK);
  AutomationProgram program("Utility", owner_);
  AutomationClass kind("VelkorCacheUtility");
  const AutomationObject late(program, kind, Variant(utility.Get()).ToObject());
  try {
    late.Put("ClientProcess", Variant(self));
    ADD_FAILURE() << "it was put twice";
  } catch (const Error& error) {
    EXPECT_THAT(error.Description(), HasSubstr("The client's process is known already"));
    EXPECT_EQ(error.Number(), static_cast<long>(0x800A0005));
  }
}

TEST(VkrRefreshCommandLine, SaysWhatItDidAndWhatItTakes) {
  const auto run = [](const std::string& arguments) {
    const ProgramRun ended = Capture("vkrRefresh.exe", arguments);
    return std::pair(ended.code, ended.output);
  };
  for (const char* wrong : {"", "/bogus", "regserver", "/RegServer now"}) {
    EXPECT_THAT(run(wrong), Pair(2, HasSubstr("vkrRefresh /RegServerPerUser"))) << wrong;
  }
  EXPECT_THAT(run("-?"), Pair(0, HasSubstr("/UnregServerPerUser")));
  EXPECT_THAT(run("-regSERVERperuser"), Pair(0, HasSubstr("for the current user")));
  const std::string name = "Software\\Classes\\vkrRefresh.VelkorCacheUtility\\CLSID";
  const auto isRegistered = [&] {
    return ::RegGetValueW(HKEY_CURRENT_USER, ToWide(name).c_str(), nullptr, RRF_RT_REG_SZ, nullptr,
                          nullptr, nullptr) == ERROR_SUCCESS;
  };
  EXPECT_TRUE(isRegistered());
  EXPECT_THAT(run("/UnregServerPerUser"), Pair(0, HasSubstr("not registered")));
  EXPECT_FALSE(isRegistered());
}

}  // namespace
}  // namespace velkor
