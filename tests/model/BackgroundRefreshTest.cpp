// tests/model/BackgroundRefreshTest.cpp: refreshes started, counted, cancelled, reset, completed.
#include "model/BackgroundRefresh.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <utility>

#include "model/Status.h"
#include "platform/Elements.h"
#include "tests/model/RefreshDoubles.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;

class BackgroundRefreshTest : public testing::Test {
 protected:
  BackgroundRefreshTest() { refresh_->CreateCacheUtility(); }

  void Messages(std::function<void(int)> onMessages) {
    seams_.shell.rounds = 0;
    seams_.shell.onMessages = std::move(onMessages);
  }
  /// The number that a completion raised; 0 for none.
  long Complete(short synchResult, long synchError = 0) {
    return ErrorOf([&] { utilities_.Complete(synchResult, synchError); }).Number();
  }
  std::vector<Colour> Statuses() { return std::exchange(statuses_, {}); }

  RefreshSeams around_;
  HeadlessSeams& seams_ = around_.seams;
  ScriptedCacheUtilities& utilities_ = seams_.cacheUtilities;
  OpenMessageBoxes& boxes_ = around_.boxes;
  Platform platform_ = around_.With(utilities_, seams_.shell);
  std::vector<Colour> statuses_;
  int reloads_ = 0;
  Timer tmrBackground_{"tmrBackground", 50000};
  RefreshInputs inputs_{2005, 7, "/temp/c.tmp", "/temp/~c.tmp", "folder", "store"};
  const std::function<RefreshInputs()> giveInputs_ = [this] { return inputs_; };
  const std::function<void(Colour)> report_ = [this](Colour colour) {
    statuses_.push_back(colour);
  };
  const std::function<void()> reload_ = [this] { ++reloads_; };
  std::optional<BackgroundRefresh> refresh_{std::in_place, platform_, tmrBackground_,
                                            giveInputs_,   report_,   reload_};
};

TEST_F(BackgroundRefreshTest, ARefreshIsCountedHandedOverAndCompleted) {
  Messages([&](int) { EXPECT_TRUE(utilities_.started.empty()); });
  refresh_->StartRefresh(false);
  EXPECT_EQ(refresh_->OutstandingCount(), 1);
  EXPECT_EQ(seams_.shell.rounds, 1);
  EXPECT_TRUE(tmrBackground_.Enabled());
  EXPECT_THAT(Statuses(), ElementsAre(status::Starting, status::Downloading, status::Downloading));
  ASSERT_EQ(utilities_.started.size(), 1U);
  EXPECT_EQ(utilities_.started[0].viewYear, 2005);
  EXPECT_EQ(utilities_.started[0].firstMonth, 7);
  EXPECT_EQ(utilities_.started[0].cacheFile, "/temp/c.tmp");
  EXPECT_EQ(utilities_.started[0].workFile, "/temp/~c.tmp");
  EXPECT_EQ(utilities_.started[0].folderId, "folder");
  EXPECT_EQ(utilities_.started[0].storeId, "store");

  EXPECT_EQ(Complete(1), 0);
  EXPECT_FALSE(refresh_->Outstanding());
  EXPECT_EQ(reloads_, 1);
  EXPECT_THAT(Statuses(), ElementsAre(status::Idle));
  EXPECT_TRUE(tmrBackground_.Enabled());
}

TEST_F(BackgroundRefreshTest, EachResultHasItsReactionAndItsErrorNumberIsRaised) {
  const struct {
    short result;
    const char* text;
    long error;
  } results[] = {
      {1, nullptr, 0},
      {2, "Unable to open temp file, /temp/~c.tmp for updating", 0},
      {3, "Unable to clear old cache file, /temp/c.tmp before updating", 0},
      {4, "An error starting the background timer, check that the kestimer dll exists.", 0},
      {5, "Could not log on to MAPI, probably due to a network problem.  Error code: 1234", 1234},
      {6, nullptr, 0},
      {6, nullptr, 77},
      {7, "Error occured while fetching events.", 0},
      {8, "An error occured while updating the cache file", 0},
      {0, "An error occured while updating the cache file", 0},
      {-32768, "An error occured while updating the cache file", 0},
  };
  for (const auto& [result, text, error] : results) {
    boxes_.texts.clear();
    refresh_->StartRefresh(false);
    EXPECT_TRUE(tmrBackground_.Enabled()) << "a start runs the timer again";
    // The message names the files that the refresh had, whatever year is on show by now.
    inputs_.cacheFile = inputs_.workFile = "other";
    boxes_.whileOpen = [&] { EXPECT_FALSE(tmrBackground_.Enabled()); };
    EXPECT_EQ(Complete(result, error), error);
    inputs_.cacheFile = "/temp/c.tmp";
    inputs_.workFile = "/temp/~c.tmp";
    EXPECT_FALSE(refresh_->Outstanding());
    EXPECT_EQ(tmrBackground_.Enabled(), text == nullptr) << result;
    if (text) {
      EXPECT_THAT(boxes_.texts, ElementsAre(text));
    } else {
      EXPECT_THAT(boxes_.texts, IsEmpty());
    }
  }
  EXPECT_EQ(reloads_, 1);
}

TEST_F(BackgroundRefreshTest, WhyTheCacheFileCouldNotBeWrittenIsToldAndMayBeTriedAgain) {
  const std::string failure = "An error occured while updating the cache file";
  const std::string unavailable = "That device appears to be unavailable.";
  const struct {
    long error;
    MessageAnswer answer;
    std::vector<std::string> texts;
    std::size_t retries;
  } faults[] = {{57, MessageAnswer::Ok, {failure, "The disk is full."}, 0},
                {5, MessageAnswer::Ok, {failure}, 0},
                {68, MessageAnswer::Cancel, {failure, unavailable}, 0},
                {68, MessageAnswer::Retry, {failure, unavailable}, 1}};
  for (const auto& [error, answer, texts, retries] : faults) {
    refresh_->StartRefresh(false);
    const std::size_t started = utilities_.started.size();
    boxes_.texts.clear();
    boxes_.answer = answer;
    EXPECT_EQ(Complete(8, error), error);
    EXPECT_EQ(boxes_.texts, texts);
    EXPECT_EQ(utilities_.started.size(), started + retries);
  }
  boxes_.texts.clear();
  boxes_.whileOpen = [&] { refresh_.reset(); };
  Complete(8, 57);
  EXPECT_THAT(boxes_.texts, ElementsAre(failure));
}

TEST_F(BackgroundRefreshTest, EveryEleventhTickStartsARefresh) {
  std::vector<int> starting;
  for (int tick = 1; tick <= 33; ++tick) {
    refresh_->OnTimer();
    if (refresh_->Outstanding()) starting.push_back(tick);
    Complete(6);
  }
  EXPECT_THAT(starting, ElementsAre(11, 22, 33));
  EXPECT_EQ(refresh_->TickCount(), 1);
}

TEST_F(BackgroundRefreshTest, RefreshSoonMakesOneTickRefreshAtOnce) {
  refresh_->RefreshSoon();
  EXPECT_THAT(utilities_.started, IsEmpty());
  refresh_->OnTimer();
  Complete(1);
  refresh_->OnTimer();
  EXPECT_EQ(utilities_.started.size(), 1U);
  EXPECT_EQ(refresh_->TickCount(), 2);
}

TEST_F(BackgroundRefreshTest, TheFourthAttemptThatFindsARefreshOutstandingResetsTheUtility) {
  refresh_->StartRefresh(false);
  Statuses();
  for (int wait = 1; wait <= 3; ++wait) {
    refresh_->StartRefresh(false);
    EXPECT_EQ(refresh_->WaitCount(), wait);
    EXPECT_EQ(utilities_.created, 1);
    EXPECT_THAT(Statuses(), ElementsAre(status::Starting));
  }
  refresh_->StartRefresh(false);
  EXPECT_EQ(utilities_.created, 2);
  EXPECT_EQ(utilities_.started.size(), 2U);
  EXPECT_EQ(refresh_->WaitCount(), 0);
  EXPECT_EQ(refresh_->OutstandingCount(), 1);
  // The count begins anew once a refresh has completed.
  refresh_->StartRefresh(false);
  Complete(6);
  refresh_->StartRefresh(false);
  EXPECT_EQ(refresh_->WaitCount(), 0);
}

TEST_F(BackgroundRefreshTest, AForcedStartCancelsFirst) {
  refresh_->StartRefresh(true);
  EXPECT_EQ(utilities_.stops, 0);
  Messages([&](int round) {
    if (round != 5) return;
    EXPECT_TRUE(refresh_->Cancelling());
    refresh_->StartRefresh(true);
    refresh_->StartRefresh(false);
    EXPECT_EQ(utilities_.started.size(), 1U) << "nothing starts while one is cancelled";
    Complete(6);
  });
  Statuses();
  refresh_->StartRefresh(true);
  EXPECT_EQ(utilities_.stops, 1);
  EXPECT_EQ(seams_.shell.rounds, 6) << "five for the cancellation, one for the start";
  EXPECT_EQ(utilities_.started.size(), 2U);
  EXPECT_EQ(utilities_.created, 1);
  EXPECT_EQ(refresh_->OutstandingCount(), 1);
  EXPECT_THAT(Statuses(), ElementsAre(status::Failed, status::Idle, status::Idle, status::Starting,
                                      status::Downloading, status::Downloading));
}

TEST_F(BackgroundRefreshTest, ACancellationWithinACancellationAnswersThree) {
  EXPECT_EQ(refresh_->CancelRefresh(), 1) << "nothing outstanding";
  EXPECT_EQ(utilities_.stops + seams_.shell.rounds, 0);
  refresh_->StartRefresh(false);
  short nested = 0;
  Messages([&](int round) {
    if (round == 1) {
      Statuses();
      nested = refresh_->CancelRefresh();
      EXPECT_THAT(Statuses(), ElementsAre(status::Failed, status::Neutral));
    } else {
      Complete(6);
    }
  });
  tmrBackground_.SetEnabled(false);
  EXPECT_EQ(refresh_->CancelRefresh(), 1);
  EXPECT_EQ(nested, 3);
  EXPECT_EQ(seams_.shell.rounds, 2);
  EXPECT_FALSE(refresh_->Cancelling());
  EXPECT_TRUE(tmrBackground_.Enabled());
  EXPECT_EQ(statuses_.back(), status::Idle);
}

TEST_F(BackgroundRefreshTest, AUtilityThatDoesNotStopIsResetAfterTwoThousandRounds) {
  refresh_->StartRefresh(false);
  Messages({});
  EXPECT_EQ(refresh_->CancelRefresh(), 1);
  EXPECT_EQ(seams_.shell.rounds, 2000);
  EXPECT_EQ(utilities_.created, 2);
  EXPECT_EQ(refresh_->OutstandingCount(), 0);
  EXPECT_EQ(refresh_->WaitCount(), 0);
}

TEST_F(BackgroundRefreshTest, ACompletionThatNobodyWaitsForNeverMakesTheCountNegative) {
  Complete(1);
  Complete(6);
  EXPECT_EQ(refresh_->OutstandingCount(), 0);
  EXPECT_EQ(reloads_, 1);
  // One that comes while the next start lets messages be processed belongs to no request of now.
  Messages([&](int) { Complete(6); });
  refresh_->StartRefresh(false);
  EXPECT_EQ(refresh_->OutstandingCount(), 1);
  EXPECT_EQ(utilities_.started.size(), 1U);
  EXPECT_EQ(statuses_.back(), status::Downloading);
  Complete(1);
  EXPECT_EQ(refresh_->OutstandingCount(), 0);
}

TEST_F(BackgroundRefreshTest, StartsWithinAStartAreServedByIt) {
  Messages([&](int) {
    inputs_.viewYear = 2006;
    refresh_->StartRefresh(true);
    refresh_->StartRefresh(false);
    EXPECT_TRUE(refresh_->Busy());
  });
  refresh_->StartRefresh(false);
  ASSERT_EQ(utilities_.started.size(), 1U);
  EXPECT_EQ(utilities_.started[0].viewYear, 2006);
  EXPECT_EQ(utilities_.stops, 0) << "what the utility does not have needs no stop";
  EXPECT_EQ(seams_.shell.rounds, 1);
  EXPECT_EQ(refresh_->OutstandingCount(), 1);
  EXPECT_FALSE(refresh_->Busy());
}

TEST_F(BackgroundRefreshTest, ACancellationWithinAStartWithdrawsIt) {
  bool startsAgain = false;
  Messages([&](int round) {
    if (round > 1) return;
    EXPECT_EQ(refresh_->CancelRefresh(), 1);
    if (startsAgain) refresh_->StartRefresh(true);
  });
  refresh_->StartRefresh(false);
  EXPECT_THAT(utilities_.started, IsEmpty());
  EXPECT_FALSE(refresh_->Outstanding());
  EXPECT_EQ(statuses_.back(), status::Idle);
  startsAgain = true;
  seams_.shell.rounds = 0;
  refresh_->StartRefresh(false);
  EXPECT_EQ(utilities_.started.size(), 1U);
  EXPECT_EQ(seams_.shell.rounds, 2);
}

TEST_F(BackgroundRefreshTest, WhatIsAskedForTogetherOrDuringACancellationStartsOnceAfterIt) {
  refresh_->StartRefresh(false);
  const auto askDuringCancellation = [&](int) {
    refresh_->StartRefresh(true);
    Complete(6);
  };
  Messages(askDuringCancellation);
  refresh_->Together([&] {
    refresh_->StartRefresh(false);
    EXPECT_EQ(refresh_->CancelRefresh(), 1);
    EXPECT_FALSE(refresh_->Outstanding());
    refresh_->StartRefresh(true);
    EXPECT_EQ(utilities_.started.size(), 1U);
  });
  EXPECT_EQ(utilities_.started.size(), 2U);
  Messages(askDuringCancellation);
  EXPECT_EQ(refresh_->CancelRefresh(), 1);
  EXPECT_EQ(utilities_.started.size(), 3U);
  EXPECT_EQ(refresh_->OutstandingCount(), 1);
}

TEST_F(BackgroundRefreshTest, WhatFailsOfOthersChangesIsToldOnceUntilARefreshSucceeds) {
  const auto followChange = [&] {
    refresh_->FollowChanges([&] {
      refresh_->StartRefresh(true);
      return false;
    });
  };
  const auto changeFails = [&] {
    followChange();
    Complete(7);
    return std::exchange(boxes_.texts, {}).size();
  };
  EXPECT_EQ(changeFails(), 1U);
  EXPECT_FALSE(tmrBackground_.Enabled());
  EXPECT_EQ(changeFails(), 0U);
  EXPECT_TRUE(tmrBackground_.Enabled()) << "it goes on trying";
  refresh_->StartRefresh(true);
  Complete(7);
  EXPECT_EQ(boxes_.texts.size(), 1U) << "what a person asked for is told";
  followChange();
  Complete(1);
  boxes_.texts.clear();
  // While its message is open no other comes on top.
  boxes_.whileOpen = [&] {
    followChange();
    EXPECT_FALSE(refresh_->Outstanding());
  };
  EXPECT_EQ(changeFails(), 1U);
  EXPECT_TRUE(refresh_->Outstanding());
}

TEST_F(BackgroundRefreshTest, OnceDisconnectedNothingStartsBeforeAnotherUtilityIsCreated) {
  refresh_->StartRefresh(false);
  refresh_->Disconnect();
  EXPECT_FALSE(refresh_->Outstanding() || tmrBackground_.Enabled());
  EXPECT_EQ(statuses_.back(), status::Idle);
  refresh_->StartRefresh(true);
  EXPECT_EQ(utilities_.started.size(), 1U);
  refresh_->CreateCacheUtility();
  refresh_->StartRefresh(false);
  EXPECT_EQ(utilities_.started.size(), 2U);
}

TEST_F(BackgroundRefreshTest, AStartThatFailsTellsAndTheNextOneTriesWithANewUtility) {
  utilities_.failsToStart = true;
  refresh_->StartRefresh(false);
  EXPECT_THAT(boxes_.texts, ElementsAre("Error starting background refresh 5 The cache utility "
                                        "cannot be started."));
  EXPECT_FALSE(refresh_->Outstanding());
  EXPECT_FALSE(tmrBackground_.Enabled());
  EXPECT_EQ(statuses_.back(), status::Idle);
  utilities_.failsToStart = false;
  refresh_->StartRefresh(false);
  EXPECT_EQ(utilities_.created, 2);
  EXPECT_TRUE(refresh_->Outstanding());
  EXPECT_TRUE(tmrBackground_.Enabled());
  EXPECT_EQ(Complete(1), 0);
  EXPECT_EQ(reloads_, 1);
}

TEST_F(BackgroundRefreshTest, InputsThatFailLeaveNothingOutstanding) {
  refresh_.emplace(
      platform_, tmrBackground_, []() -> RefreshInputs { throw Error(440, "The folder is gone."); },
      report_, reload_);
  refresh_->CreateCacheUtility();
  refresh_->StartRefresh(false);
  EXPECT_THAT(boxes_.texts,
              ElementsAre("Error starting background refresh 440 The folder is gone."));
  EXPECT_FALSE(refresh_->Outstanding());
}

TEST_F(BackgroundRefreshTest, AUtilityMayBeResetWithinItsOwnCompletion) {
  refresh_->StartRefresh(false);
  boxes_.whileOpen = [&] {
    refresh_->ResetCacheUtility();
    refresh_->StartRefresh(true);
  };
  EXPECT_EQ(Complete(7, 440), 440);
  EXPECT_EQ(utilities_.created, 2);
  EXPECT_EQ(refresh_->OutstandingCount(), 1);
  EXPECT_TRUE(tmrBackground_.Enabled()) << "the start within runs it, and nobody stops it after";
}

/// Utilities that report even when they are gone.
class LateUtilities : public CacheUtilities {
 public:
  std::vector<WriteComplete> all;

  std::unique_ptr<CacheUtility> Create(WriteComplete writeComplete) override {
    class Deaf : public CacheUtility {
      void Start(const RefreshInputs&) override {}
      void Stop() override { throw Error(5, "gone"); }
    };
    if (all.size() == failAt) throw Error(5, "no more");
    all.push_back(std::move(writeComplete));
    return std::make_unique<Deaf>();
  }
  std::size_t failAt = 100;
};

class LateCompletion : public BackgroundRefreshTest {
 protected:
  LateUtilities late_;
  Platform latePlatform_ = around_.With(late_, seams_.shell);
  BackgroundRefresh lateRefresh_{latePlatform_, tmrBackground_, giveInputs_, report_, reload_};
};

TEST_F(LateCompletion, OfAUtilityThatWasResetDoesNotCount) {
  lateRefresh_.CreateCacheUtility();
  lateRefresh_.StartRefresh(false);
  lateRefresh_.ResetCacheUtility();
  EXPECT_FALSE(lateRefresh_.Outstanding());
  lateRefresh_.StartRefresh(false);
  late_.all[0](1, 0);
  late_.all[0](7, 440);
  EXPECT_EQ(lateRefresh_.OutstandingCount(), 1);
  EXPECT_EQ(reloads_, 0);
  EXPECT_THAT(boxes_.texts, IsEmpty());
  late_.all[1](1, 0);
  EXPECT_EQ(lateRefresh_.OutstandingCount(), 0);
}

TEST_F(LateCompletion, AUtilityThatCannotBeStoppedIsResetAtOnce) {
  lateRefresh_.CreateCacheUtility();
  lateRefresh_.StartRefresh(false);
  Messages({});
  late_.failAt = 1;
  EXPECT_EQ(lateRefresh_.CancelRefresh(), 1);
  EXPECT_EQ(seams_.shell.rounds, 0);
  EXPECT_FALSE(lateRefresh_.Outstanding());
  // There is no utility now; the next start makes one, and tells when it cannot.
  lateRefresh_.StartRefresh(false);
  EXPECT_THAT(boxes_.texts, ElementsAre("Error starting background refresh 5 no more"));
  late_.failAt = 100;
  lateRefresh_.StartRefresh(false);
  EXPECT_TRUE(lateRefresh_.Outstanding());
}

TEST_F(LateCompletion, NothingHappensBeforeTheUtilityIsCreatedOrAfterRelease) {
  lateRefresh_.StartRefresh(true);
  EXPECT_FALSE(lateRefresh_.Outstanding());
  lateRefresh_.CreateCacheUtility();
  lateRefresh_.StartRefresh(false);
  lateRefresh_.Release();
  Statuses();
  late_.all[0](7, 440);
  lateRefresh_.StartRefresh(true);
  lateRefresh_.CancelRefresh();
  lateRefresh_.CreateCacheUtility();
  lateRefresh_.StartRefresh(true);
  EXPECT_EQ(late_.all.size(), 1U);
  EXPECT_THAT(Statuses(), IsEmpty());
}

TEST_F(BackgroundRefreshTest, MayBeDestroyedWhileAMessageIsOpen) {
  refresh_->StartRefresh(false);
  boxes_.whileOpen = [&] { refresh_.reset(); };
  EXPECT_EQ(Complete(7, 440), 0);
}

TEST_F(BackgroundRefreshTest, MayBeDestroyedWhileItStartsOrCancels) {
  Messages([&](int) { refresh_.reset(); });
  refresh_->StartRefresh(false);
  EXPECT_THAT(utilities_.started, IsEmpty());

  refresh_.emplace(platform_, tmrBackground_, giveInputs_, report_, reload_);
  refresh_->CreateCacheUtility();
  Messages({});
  refresh_->StartRefresh(false);
  Messages([&](int) { refresh_.reset(); });
  refresh_->StartRefresh(true);
  EXPECT_EQ(utilities_.started.size(), 1U);
  EXPECT_EQ(seams_.shell.rounds, 1);
}

}  // namespace
}  // namespace velkor
