// tests/platform/headless/HeadlessSeamsTest.cpp: unexpected and missing messages fail a test.
#include "platform/headless/HeadlessSeams.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace velkor {
namespace {

using testing::ElementsAre;

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
