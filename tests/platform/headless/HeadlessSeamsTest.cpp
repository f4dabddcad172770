// tests/platform/headless/HeadlessSeamsTest.cpp: the fakes fail and remember as scripted.
#include "platform/headless/HeadlessSeams.h"

#include <gmock/gmock.h>

#include <stdexcept>

namespace velkor {
namespace {

using testing::ElementsAre;

std::vector<std::string> Names(LocaleApi& locale, std::uint32_t type) {
  std::vector<std::string> names;
  locale.EnumCalendarInfo(0x0409, type, [&](std::string_view name) {
    names.emplace_back(name);
    return true;
  });
  return names;
}

TEST(FixedLocale, EnumeratesTheNamesOfEachCalendarInTurn) {
  FixedLocale locale;
  EXPECT_THAT(Names(locale, 7), ElementsAre("Monday"));
  EXPECT_THAT(Names(locale, 20), ElementsAre("Sun"));
  EXPECT_THAT(Names(locale, 32), ElementsAre("December"));
  EXPECT_THAT(Names(locale, 34), ElementsAre("Jan"));
  EXPECT_TRUE(Names(locale, 33).empty());
  FixedNames other = FixedNames::English();
  other.days[0] = "Feria secunda";
  locale.calendars.push_back(other);
  EXPECT_THAT(Names(locale, 7), ElementsAre("Monday", "Feria secunda"));
}

TEST(MemoryFiles, AFailedWriteLeavesWhatWasWrittenUnderItsOwnName) {
  MemoryFiles files;
  files.fail.writeAfter = 4;
  files.fail.writeError = 61;
  {
    const auto file = files.OpenForWriting("a");
    file->Write("abc");
    try {
      file->Write("def");
      ADD_FAILURE() << "no error";
    } catch (const Error& error) {
      EXPECT_EQ(error.Number(), 61);
    }
  }
  EXPECT_EQ(files.Read("a"), "abcd");
  EXPECT_TRUE(files.Held().empty());
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
