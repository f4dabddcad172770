// tests/platform/headless/HeadlessSeamsTest.cpp: the fakes fail and remember as scripted.
#include "platform/headless/HeadlessSeams.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace velkor {
namespace {

using testing::ElementsAre;

TEST(MemoryFiles, AFailedWriteLeavesWhatWasWrittenBefore) {
  MemoryFiles files;
  files.fail.writeAfter = 4;
  const auto file = files.OpenForWriting("a");
  file->Write("abc");
  EXPECT_THROW(file->Write("def"), Error);
  EXPECT_EQ(files.Read("a"), "abcd");
}

TEST(MemoryFiles, MovingOverReplacesUnlessItFailsOrAnotherWriterHoldsTheTarget) {
  MemoryFiles files;
  files.contents["b"] = "old";
  {
    const auto file = files.OpenForWriting("a");
    file->Write("new");
    EXPECT_EQ(files.OpenForWriting("a"), nullptr);
    files.fail.replace = {"b"};
    EXPECT_FALSE(file->MoveOver("b"));
    EXPECT_EQ(files.Read("b"), "old");
    EXPECT_EQ(files.Read("a"), "new");
    files.fail.replace.clear();
    EXPECT_TRUE(file->MoveOver("b"));
    EXPECT_FALSE(files.Delete("b"));
  }
  EXPECT_EQ(files.Read("b"), "new");
  EXPECT_FALSE(files.Exists("a"));
  EXPECT_TRUE(files.Delete("b"));
}

TEST(ScriptedMessageBoxes, ReportUnexpectedAndMissingMessagesAtOnce) {
  std::vector<std::string> failures;
  {
    ScriptedMessageBoxes boxes([&](const std::string& failure) { failures.push_back(failure); });
    boxes.Expect("full", MessageAnswer::Retry);
    EXPECT_EQ(boxes.Show({"The disk is full.", {}}), MessageAnswer::Retry);
    EXPECT_TRUE(failures.empty());
    EXPECT_THROW(boxes.Show({"Again?", {}}), std::logic_error);
    boxes.Expect("later");
  }
  EXPECT_THAT(failures, ElementsAre("Unexpected message: Again?", "Message never shown: later"));
}

}  // namespace
}  // namespace velkor
