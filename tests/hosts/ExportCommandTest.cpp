// tests/hosts/ExportCommandTest.cpp: `yearplan export` to where it cannot write.
#include <gmock/gmock.h>

#include <QDir>

#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

namespace velkor {
namespace {

using testing::HasSubstr;

class ExportCommand : public Yearplan {};

TEST_F(ExportCommand, FailsWithoutLeavingAFile) {
  const QByteArray calendar = Calendar(3);
  Write("team.ics", calendar);
  Write("file", "kept");
  ASSERT_TRUE(QDir(File("")).mkpath("folder/inside"));
  ASSERT_TRUE(QFile::link(File("team.ics"), File("link.xml")));
  const std::pair<const char*, const char*> failures[] = {
      {"file/below.xml", "Failed to save file. "},
      {"absent/a.xml", "Failed to save file. "},
      {"folder", "Failed to save file. "},
      {"link.xml", "the calendar itself"},
  };
  for (const auto& [target, words] : failures) {
    const Outcome outcome = Run({"export", "team.ics", "--from", "2026", "-o", target});
    EXPECT_EQ(outcome.code, 1) << target;
    EXPECT_EQ(outcome.out, "") << target;
    EXPECT_THAT(outcome.messages, HasSubstr(words)) << target;
  }
  EXPECT_EQ(Bytes("team.ics"), calendar);
  EXPECT_EQ(Bytes("file"), "kept");
  EXPECT_TRUE(QFile::exists(File("folder/inside")));
  EXPECT_EQ(Run({"export", "absent.ics", "-o", "a.xml"}).code, 1);
  EXPECT_FALSE(QFile::exists(File("a.xml")));
}

}  // namespace
}  // namespace velkor
