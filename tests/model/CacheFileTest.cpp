// tests/model/CacheFileTest.cpp: loading whole and damaged files, and rewriting safely.
#include "model/CacheFile.h"

#include <gmock/gmock.h>

#include <functional>
#include <optional>
#include <tuple>

#include "model/CacheRecord.h"
#include "platform/headless/HeadlessSeams.h"
#include "tests/model/SampleEvents.h"

namespace velkor {
namespace {

using testing::ElementsAre;

class CacheFileTest : public testing::Test {
 protected:
  std::string Record(const std::string& id, const std::string& categories = {}) {
    std::string bytes;
    AppendCacheRecord(bytes, id, "s", categories, At(2005, 3, 10), At(2005, 3, 11), seams_.locale);
    return bytes;
  }
  LoadOutcome Load(EventCollection& events) {
    return cache_.Load(paths_.cacheFile, fields_, events);
  }
  static std::vector<std::string> Ids(const EventCollection& events) {
    std::vector<std::string> ids;
    for (const CalEvent& event : events) ids.push_back(event.EventID);
    return ids;
  }

  HeadlessSeams seams_;
  CacheFile cache_{seams_.files, seams_.locale};
  CategoryTable categories_ = SampleCategories();
  DisplaySpan span_{2005, 1};
  EventFields fields_{span_, MonthColumns(span_), categories_, ", ", true};
  CachePaths paths_{"/temp/c.tmp", "/temp/~c.tmp"};
  std::string& file_ = seams_.files.contents["/temp/c.tmp"];
  EventCollection events_{{SampleEvent("old", At(2005, 1, 1), At(2005, 1, 2))}};
};

TEST_F(CacheFileTest, LoadsEveryRecordWithItsFields) {
  file_ = Record("a", "Leave") + Record("") + Record("b") + Record("a", "Key Customer");
  EXPECT_EQ(Load(events_), LoadOutcome::Loaded);
  ASSERT_THAT(Ids(events_), ElementsAre("a", "b"));
  EXPECT_EQ(events_[0].CatIndex, 1);
  EXPECT_EQ(events_[0].StartDay, 12);
  EXPECT_EQ(events_[1].CatIndex, -1);
}

TEST_F(CacheFileTest, AMissingOrEmptyFileIsAnEmptyYear) {
  EXPECT_EQ(Load(events_), LoadOutcome::Loaded);
  EXPECT_EQ(events_.Count(), 0U);
  events_.Insert({SampleEvent("old", At(2005, 1, 1), At(2005, 1, 2))});
  EXPECT_EQ(cache_.Load("/temp/absent.tmp", fields_, events_), LoadOutcome::NoFile);
  EXPECT_EQ(events_.Count(), 0U);
}

TEST_F(CacheFileTest, KeepsWhatStandsBeforeDamage) {
  file_ = Record("a") + Record("b").substr(0, 9);
  EXPECT_EQ(Load(events_), LoadOutcome::LoadedInPart);
  EXPECT_THAT(Ids(events_), ElementsAre("a"));
  file_ = Record("a") + Record("b") + Record("c");
  seams_.files.fail.readAfter[paths_.cacheFile] = 2 * Record("a").size() + 3;
  EXPECT_EQ(Load(events_), LoadOutcome::LoadedInPart);
  EXPECT_THAT(Ids(events_), ElementsAre("a", "b"));
  // A disk that fails where a record ends.
  seams_.files.fail.readAfter[paths_.cacheFile] = Record("a").size();
  EXPECT_EQ(Load(events_), LoadOutcome::LoadedInPart);
  EXPECT_THAT(Ids(events_), ElementsAre("a"));
}

TEST_F(CacheFileTest, ARewriteReplacesTheFileByTheEvents) {
  file_ = "old";
  EventCollection events({SampleEvent("b", At(2005, 3, 10), At(2005, 3, 11), "Leave"),
                          SampleEvent("a", At(2005, 2, 1), At(2005, 2, 2))});
  EXPECT_TRUE(cache_.Rewrite(paths_, events));
  EXPECT_FALSE(seams_.files.Exists(paths_.workFile));
  EXPECT_TRUE(seams_.files.Held().empty());
  EXPECT_EQ(Load(events_), LoadOutcome::Loaded);
  ASSERT_THAT(Ids(events_), ElementsAre("b", "a"));
  EXPECT_EQ(events_[0].Categories, "Leave");
  EXPECT_EQ(events_[0].Subject, "Subject of b");
}

TEST_F(CacheFileTest, ARewriteGivesWayToWhatAnotherPlannerWrote) {
  using Contents = std::optional<std::string>;
  const std::string mine = Record("a") + Record("b");
  const std::string others = Record("a") + Record("c");
  // What was loaded, what is there by now, whether the rewrite is content.
  const std::tuple<Contents, Contents, bool> cases[] = {
      {Record("a"), Record("a"), true}, {Record("a"), others, false},
      {Record("a"), mine, true},        {{}, others, false},
      {Record("a"), {}, false},         {{}, {}, true},
  };
  const auto put = [&](const Contents& bytes) {
    seams_.files.contents.erase(paths_.cacheFile);
    if (bytes) seams_.files.contents[paths_.cacheFile] = *bytes;
  };
  for (const auto& [loaded, now, content] : cases) {
    put(loaded);
    Load(events_);
    put(now);
    EventCollection events({SampleEvent("a", At(2005, 3, 10), At(2005, 3, 11)),
                            SampleEvent("b", At(2005, 3, 10), At(2005, 3, 11))});
    for (CalEvent& event : events) event.Subject = "s";
    EXPECT_EQ(cache_.Rewrite(paths_, events), content);
    EXPECT_EQ(seams_.files.Read(paths_.cacheFile), content ? Contents(mine) : now);
    // What it wrote itself is known.
    if (content) {
      EXPECT_TRUE(cache_.Rewrite(paths_, events_));
    }
  }
}

TEST_F(CacheFileTest, RewriteMakesAFileWhereThereWasNone) {
  const CachePaths paths{"/temp/new.tmp", "/temp/~new.tmp"};
  EXPECT_TRUE(cache_.Rewrite(paths, {}));
  EXPECT_EQ(seams_.files.Read(paths.cacheFile), "");
}

TEST_F(CacheFileTest, ARewriteThatFailsKeepsTheOldFile) {
  // More than one block, so that writing can fail at the first and at the last.
  std::vector<CalEvent> many;
  for (int i = 0; i < 3000; ++i) {
    many.push_back(SampleEvent(std::to_string(i), At(2005, 3, 10), At(2005, 3, 11)));
  }
  const EventCollection events(many);
  using Failures = MemoryFiles::Failures;
  const std::function<void(Failures&)> failures[] = {
      [&](Failures& fail) { fail.open.insert(paths_.workFile); },
      [&](Failures& fail) { fail.writeAfter = 0; },
      [&](Failures& fail) { fail.writeAfter = 100'000; },
      [&](Failures& fail) { fail.replace.insert(paths_.cacheFile); },
  };
  for (const auto& failAt : failures) {
    seams_.files.fail = {};
    seams_.files.contents = {{paths_.cacheFile, "old"}};
    failAt(seams_.files.fail);
    EXPECT_FALSE(cache_.Rewrite(paths_, events));
    EXPECT_EQ(seams_.files.Read(paths_.cacheFile), "old");
    EXPECT_TRUE(seams_.files.Held().empty());
  }
}

}  // namespace
}  // namespace velkor
