// tests/support/modFileIOTest.cpp: deleting, and file errors in words.
#include "support/modFileIO.h"

#include <gtest/gtest.h>

#include "platform/headless/MemoryFiles.h"
#include "platform/headless/ScriptedMessageBoxes.h"

namespace velkor {
namespace {

TEST(modFileIO, DeletesOnlyWhatIsThere) {
  MemoryFiles files;
  files.contents = {{"there", "x"}, {"held", "x"}};
  files.fail.remove = {"held"};
  EXPECT_TRUE(modFileIO::DeleteIfPresent(files, "there"));
  EXPECT_TRUE(modFileIO::DeleteIfPresent(files, "there"));
  EXPECT_FALSE(modFileIO::DeleteIfPresent(files, "held"));
  EXPECT_EQ(files.contents.size(), 1U);
}

TEST(modFileIO, FileErrorsAreToldByNumber) {
  const std::pair<long, std::string> texts[] = {
      {52, "That filename is illegal."},
      {54, "Can't open your file for that type of access."},
      {55, "That file is already open."},
      {57, "The disk is full."},
      {62,
       "This file has a nonstandard end-of-file marker,or an attempt was made to read beyond the "
       "end-of-file marker."},
      {64, "That filename is illegal."},
      {68, "That device appears to be unavailable."},
      {71, "The disk is not ready."},
      {76, "That path doesn't exist."}};
  ScriptedMessageBoxes messages([](const std::string& failure) { FAIL() << failure; });
  for (const auto& [number, text] : texts) {
    messages.Expect(text, MessageAnswer::Cancel);
    EXPECT_EQ(modFileIO::ReportFileError(messages, number), modFileIO::FileErrorAnswer::Other);
    const Message& shown = messages.Shown().back();
    EXPECT_EQ(shown.text, text);
    EXPECT_EQ(shown.title, "File Error");
    EXPECT_EQ(shown.icon, MessageIcon::Exclamation);
    EXPECT_EQ(shown.buttons, number == 68 ? MessageButtons::RetryCancel : MessageButtons::Ok);
  }
  messages.Expect("unavailable", MessageAnswer::Retry);
  EXPECT_EQ(modFileIO::ReportFileError(messages, 68), modFileIO::FileErrorAnswer::Retry);
  for (const long number : {0L, 53L, 61L, 70L, -1L}) {
    EXPECT_EQ(modFileIO::ReportFileError(messages, number),
              modFileIO::FileErrorAnswer::NotAFileError);
  }
}

}  // namespace
}  // namespace velkor
