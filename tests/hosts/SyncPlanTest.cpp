// tests/hosts/SyncPlanTest.cpp: calendars come up to date in time, and failing ones wait.
#include "hosts/SyncPlan.h"

#include <gmock/gmock.h>

namespace velkor {
namespace {

using std::chrono::seconds;
using testing::ElementsAre;
using testing::IsEmpty;

constexpr std::int64_t Now = 1'800'000'000;

TEST(SyncPlan, FourAtMostRunAtOnceAndTheRestFollows) {
  SyncPlan plan;
  plan.Follow({"a", "b", "c", "d", "e"});
  EXPECT_THAT(plan.Start(Now), ElementsAre("a", "b", "c", "d"));
  EXPECT_THAT(plan.Start(Now), IsEmpty());
  EXPECT_EQ(plan.NextDue(), std::nullopt);
  plan.Succeeded("b", Now, {});
  EXPECT_THAT(plan.Start(Now), ElementsAre("e"));
  plan.Follow({"b"});
  EXPECT_FALSE(plan.IsRunning());
  EXPECT_EQ(plan.NextDue(), Now + 300);
}

TEST(SyncPlan, ACalendarIsDueAfterItsIntervalAndAtOnceWhenWantedOrWhenEditsWait) {
  SyncPlan plan;
  plan.Follow({"a"});
  EXPECT_THAT(plan.Start(Now), ElementsAre("a"));
  plan.EditsWait("a");
  plan.Succeeded("a", Now, seconds(7200));
  EXPECT_THAT(plan.Start(Now), ElementsAre("a"));
  plan.Succeeded("a", Now, seconds(7200));
  EXPECT_EQ(plan.NextDue(), Now + 7200);
  EXPECT_THAT(plan.Start(Now + 7199), IsEmpty());
  plan.Want("a");
  EXPECT_THAT(plan.Start(Now), ElementsAre("a"));
}

TEST(SyncPlan, AFailingCalendarWaitsLongerEachTimeAndAtLeastAsLongAsTheServerWants) {
  SyncPlan plan;
  plan.Follow({"a"});
  std::vector<std::int64_t> waits;
  for (int i = 0; i < 10; ++i) {
    plan.Want("a");
    plan.Start(Now);
    plan.Failed("a", Now, i == 1 ? std::optional(seconds(90)) : std::nullopt);
    waits.push_back(*plan.NextDue() - Now);
  }
  EXPECT_THAT(waits, ElementsAre(30, 90, 120, 240, 480, 960, 1920, 3600, 3600, 3600));
  plan.EditsWait("a");
  EXPECT_EQ(plan.NextDue(), Now + 3600);
  plan.Start(Now + 3600);
  plan.Succeeded("a", Now, {});
  plan.Start(Now + 300);
  plan.Failed("a", Now, {});
  EXPECT_EQ(plan.NextDue(), Now + 30);
}

TEST(SyncPlan, WhatWaitsForTheUserIsNotTriedBeforeItIsWanted) {
  SyncPlan plan;
  plan.Follow({"a"});
  plan.Start(Now);
  plan.Blocked("a");
  plan.EditsWait("a");
  EXPECT_EQ(plan.NextDue(), std::nullopt);
  plan.Want("a");
  EXPECT_THAT(plan.Start(Now), ElementsAre("a"));
}

}  // namespace
}  // namespace velkor
