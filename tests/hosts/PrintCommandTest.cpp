// tests/hosts/PrintCommandTest.cpp: `yearplan print` as its users start it.
#include <gmock/gmock.h>

#include <QDir>
#include <QStandardPaths>

#include "tests/hosts/YearplanCase.h"
#include "tests/platform/desktop/CalendarText.h"

namespace velkor {
namespace {

using testing::AllOf;
using testing::HasSubstr;
using testing::Not;

class PrintCommand : public Yearplan {
 protected:
  void SetUp() override { Write("team.ics", Calendar(40)); }

  Outcome Print(const QStringList& options) const {
    return Run(QStringList{"print", "team.ics", "--year", "2026"} + options);
  }
  std::string Output(const char* program, const QStringList& arguments) const {
    QProcess process;
    process.setWorkingDirectory(File(""));
    process.start(program, arguments);
    EXPECT_TRUE(process.waitForFinished() && process.exitCode() == 0) << program;
    return process.readAllStandardOutput().toStdString();
  }
};

TEST_F(PrintCommand, WritesPagesWithTitleMonthsLegendAndSubjects) {
  if (QStandardPaths::findExecutable("pdftotext").isEmpty()) GTEST_SKIP() << "no PDF tools";
  const Outcome outcome = Print({"-o", "a.PDF", "--header", "Räume", "--subjects"});
  EXPECT_EQ(outcome.code, 0) << outcome.messages;
  EXPECT_EQ(outcome.out, "Year 2026, 1 page: " + Path("a.PDF") + "\n");
  EXPECT_THAT(Output("pdfinfo", {"a.PDF"}), HasSubstr("842 x 595 pts (A4)"));
  const std::string plain = Output("pdftotext", {"a.PDF", "-"});
  EXPECT_THAT(plain, AllOf(HasSubstr("Year 2026"), HasSubstr("Räume"), HasSubstr("Page 1 of 1")));
  Print({"-o", "b.pdf", "--paper", "letter", "--portrait", "--months", "Mar-Oct",
         "--min-band-height", "12"});
  EXPECT_THAT(Output("pdfinfo", {"b.pdf"}), HasSubstr("612 x 792 pts (letter)"));
  const std::string pages = Output("pdftotext", {"b.pdf", "-"});
  EXPECT_THAT(pages, AllOf(HasSubstr("Apr"), Not(HasSubstr("Nov")), HasSubstr("\f")));
}

TEST_F(PrintCommand, FailuresAreToldAndLeaveTheOlderFile) {
  Write("a.pdf", "older");
  ASSERT_TRUE(QFile::link(File("team.ics"), File("link.pdf")));
  const struct {
    QStringList options;
    int code;
    const char* words;
  } failures[] = {
      {{"-o", "a.pdf", "--min-band-height", "150"}, 1, "will not all fit onto the page\n"},
      {{"-o", "a.pdf", "--margins", "9999"}, 1, "will not"},
      {{"-o", "a.pdf", "--margins", "20,150,20,150"}, 1, "will not"},
      {{"-o", "a.pdf", "--legend-width", "500"}, 1, "no room for the days"},
      {{"-o", "absent/a.pdf"}, 1, "absent/a.pdf"},
      {{"-o", "link.pdf"}, 1, "the calendar itself"},
      {{"-o", "a.png"}, 2, ".pdf"},
      {{"-o", "a.pdf", "--paper", "A99"}, 2, "Letter"},
  };
  for (const auto& [options, code, words] : failures) {
    const Outcome outcome = Print(options);
    EXPECT_EQ(outcome.code, code) << words;
    EXPECT_EQ(outcome.out, "") << words;
    EXPECT_THAT(outcome.messages, HasSubstr(words));
  }
  EXPECT_EQ(Bytes(File("a.pdf")), "older");
  EXPECT_TRUE(Bytes(File("team.ics")).startsWith("BEGIN:VCALENDAR"));
}

}  // namespace
}  // namespace velkor
