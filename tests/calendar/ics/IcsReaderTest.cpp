// tests/calendar/ics/IcsReaderTest.cpp: the reading process, its answers and its ways to fail.
#include "calendar/ics/read/IcsReader.h"

#include <gmock/gmock.h>
#include <sys/stat.h>

#include "calendar/ics/read/IcsAnswer.h"
#include "tests/calendar/ics/CalendarFileCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using Texts = std::vector<std::string>;

class IcsReaderTest : public CalendarFileCase {
 protected:
  /// A reader that is this shell script.
  WorkerOptions Script(const std::string& lines) const {
    WorkerOptions options;
    options.program = WriteTo("reader", "#!/bin/sh\n" + lines + "\n");
    chmod(options.program.c_str(), 0700);
    return options;
  }
  static std::string FaultOf(const std::string& path, const WorkerOptions& options = {}) {
    const Error error = ErrorOf([&] { ReadIcsFile(path, Year(2026), options); });
    EXPECT_EQ(error.Number(), errors::CalendarFailed);
    EXPECT_THAT(error.Description(), HasSubstr(path));
    return error.Description();
  }
};

const std::string WeeklyEvent =
    "UID:w\nSUMMARY:Größe\nDTSTART:20260101T120000Z\nDTEND:20260101T130000Z\n"
    "RRULE:FREQ=WEEKLY\nCATEGORIES:a,b\nDESCRIPTION:x\\ny\nLOCATION:Ghent\n";

TEST_F(IcsReaderTest, TheProcessGivesWhatTheParserGives) {
  const std::string text = Calendar(
      "X-WR-CALNAME:Team\n" + Event(WeeklyEvent) +
      Event("UID:w\nSUMMARY:moved\nRECURRENCE-ID:20260108T120000Z\nDTSTART:20260109T120000Z\n") +
      Event("SUMMARY:broken\n"));
  const std::string path = WriteTo("Team – year.ics", text);
  const ParsedCalendar there = ReadIcsFile(path, Year(2026));
  EXPECT_EQ(EncodeAnswer(there), EncodeAnswer(ParseIcs(text, path, Year(2026))));
  ASSERT_EQ(there.items.size(), 1U);
  EXPECT_EQ(there.items[0].fields.body, "x\r\ny");
  EXPECT_EQ(there.items[0].occurrences.size(), 52U + 1U);
}

TEST_F(IcsReaderTest, FilesThatAreNoCalendarAreNamed) {
  EXPECT_THAT(FaultOf(folder_ + "/none.ics"), HasSubstr("does not exist"));
  EXPECT_THAT(FaultOf(folder_), HasSubstr("is a folder"));
  EXPECT_THAT(FaultOf(WriteTo("text.ics", "hello")), HasSubstr("holds no calendar"));
  const std::string pipe = folder_ + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  EXPECT_THAT(FaultOf(pipe), HasSubstr("is no ordinary file"));
  const std::string huge = WriteTo("huge.ics", Calendar(""));
  std::filesystem::resize_file(huge, IcsLimits{}.fileSize + 1);
  EXPECT_THAT(FaultOf(huge), HasSubstr("is larger than 64 MiB"));
}

TEST_F(IcsReaderTest, AReaderThatFailsBecomesAMessage) {
  const std::string path = WriteTo("team.ics", Calendar(Event(WeeklyEvent)));
  EXPECT_EQ(FaultOf(path, Script("kill -SEGV $$")),
            "The calendar file " + path + " could not be read: the reader stopped with signal 11.");
  EXPECT_THAT(FaultOf(path, Script("exit 3")), HasSubstr("exit code 3"));
  EXPECT_THAT(FaultOf(path, Script("exit 0")), HasSubstr("gave no answer"));
  EXPECT_THAT(FaultOf(path, Script("echo hello; echo trouble >&2")), HasSubstr("gave no answer"));
  WorkerOptions missing;
  missing.program = folder_ + "/no-such-reader";
  EXPECT_THAT(FaultOf(path, missing), HasSubstr("could not be started"));
}

TEST_F(IcsReaderTest, AReaderThatHangsIsStopped) {
  const std::string path = WriteTo("team.ics", Calendar(""));
  for (const char* script : {"sleep 1000", "exec >&-; exec sleep 1000", "while :; do :; done"}) {
    WorkerOptions options = Script(script);
    options.timeLimit = std::chrono::milliseconds{200};
    EXPECT_THAT(FaultOf(path, options), HasSubstr("took longer than 200 ms")) << script;
  }
}

TEST_F(IcsReaderTest, AReaderThatNeedsTooMuchMemoryBecomesAMessage) {
#ifdef __SANITIZE_ADDRESS__
  GTEST_SKIP() << "the memory of a sanitized process cannot be bounded";
#endif
  std::string events;
  for (int i = 0; i < 200'000; ++i) events += "BEGIN:VEVENT\nDTSTART:20260101\nEND:VEVENT\n";
  WorkerOptions options;
  options.memoryLimit = std::size_t{200} << 20;
  EXPECT_THAT(FaultOf(WriteTo("many.ics", Calendar(events)), options), HasSubstr("memory"));
}

TEST_F(IcsReaderTest, BrokenAnswersAreRefusedWhateverTheyHold) {
  const std::string path = WriteTo("team.ics", Calendar(""));
  const std::string answer = EncodeAnswer(Parse(
      Calendar(Event(WeeklyEvent + "EXDATE:20260108T120000Z\n") + Event("SUMMARY:broken\n"))));
  EXPECT_EQ(DecodeAnswer(answer).items.size(), 1U);
  EXPECT_THROW(DecodeAnswer(answer + "x"), Error);
  for (std::size_t size = 0; size < answer.size(); ++size) {
    EXPECT_THROW(DecodeAnswer(std::string_view(answer).substr(0, size)), Error) << size;
  }
  for (std::size_t at = 0; at < answer.size(); ++at) {
    for (const char wrong : {'\x00', '\x7F', '\xFF'}) {
      std::string broken = answer;
      broken[at] = wrong;
      try {
        for (const CalendarItem& item : DecodeAnswer(broken).items) {
          for (const CalendarOccurrence& occurrence : item.occurrences) {
            EXPECT_LT(occurrence.changed, static_cast<std::int32_t>(item.changed.size()));
            EXPECT_LE(occurrence.start, occurrence.end);
          }
        }
      } catch (const Error&) {
      }
    }
  }
  const std::string cut = WriteTo("answer", answer.substr(0, answer.size() - 20));
  EXPECT_THAT(FaultOf(path, Script("cat '" + cut + "'")), HasSubstr("answer is not whole"));
}

}  // namespace
}  // namespace velkor
