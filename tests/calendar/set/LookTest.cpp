// tests/calendar/set/LookTest.cpp: looks at a calendar file that leave the event loop running.
#include <gmock/gmock.h>
#include <signal.h>
#include <sys/stat.h>

#include <QCoreApplication>
#include <QDeadlineTimer>
#include <QTimer>
#include <algorithm>

#include "calendar/set/SetCalendar.h"
#include "tests/calendar/ics/CalendarFileCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using Texts = std::vector<std::string>;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

/// A calendar whose reader takes the file as it is, then waits for as long as there is a file
/// "hold", and only then answers. Its log has "begin <process>" and "end" of each reading.
class SetLook : public CalendarFileCase {
 protected:
  SetLook() : application_(argumentCount_, arguments_) { Write(Calendar(Named("a") + Named("b"))); }

  void Hold() const { WriteTo("hold", ""); }
  void Release() const { fs::remove(folder_ + "/hold"); }
  Texts Log() const {
    std::ifstream file(folder_ + "/log");
    Texts lines;
    for (std::string line; std::getline(file, line);) lines.push_back(line);
    return lines;
  }
  std::ptrdiff_t Begun() const {
    const Texts log = Log();
    return std::count_if(log.begin(), log.end(),
                         [](const std::string& line) { return line.rfind("begin", 0) == 0; });
  }
  bool IsAlive(const std::string& beginning) const {
    return kill(std::stoi(beginning.substr(beginning.find(' '))), 0) == 0;
  }

  /// Opens the calendar, and has a reading of these bytes begun but not answered.
  void OpenAndHold(const std::string& bytes, std::chrono::milliseconds timeLimit = 20s) {
    Open(timeLimit);
    Hold();
    Write(bytes);
    Look();
    ASSERT_TRUE(RunUntil([&] { return Begun() == 2; }));
  }
  void Open(std::chrono::milliseconds timeLimit = 20s) {
    WorkerOptions options;
    options.timeLimit = timeLimit;
    options.program = folder_ + "/reader";
    const std::string real = QCoreApplication::applicationDirPath().toStdString();
    WriteTo("reader", "#!/bin/sh\ncd '" + folder_ + "'\n'" + real +
                          "/vkrRefresh' \"$@\" >answer$$\ncode=$?\n"
                          "echo begin $$ >>log\n"
                          "while [ -e hold ]; do sleep 0.01; done\n"
                          "cat answer$$\necho end >>log\nexit $code\n");
    chmod(options.program.c_str(), 0700);
    calendar_ =
        std::make_unique<SetCalendar>(path_, Year(2026), SetCalendarOptions{.worker = options});
    listening_ = calendar_->Folder().Listen([this](const FolderEvent& event) {
      events_.push_back(event.item ? event.item->fields.subject : "removal");
    });
  }
  void Look() {
    calendar_->Look([this](const std::string& trouble) { told_.push_back(trouble); });
  }
  /// Runs the event loop until something is so, or for too long.
  static bool RunUntil(const std::function<bool()>& isSo) {
    const QDeadlineTimer deadline(15s);
    while (!isSo() && !deadline.hasExpired()) {
      QCoreApplication::processEvents(QEventLoop::AllEvents, 5);
    }
    return isSo();
  }
  bool RunUntilTold(std::size_t times) {
    return RunUntil([&] { return told_.size() >= times; });
  }
  void Rename(std::size_t index, const std::string& subject) {
    ItemChange change;
    change.subject = subject;
    CalendarFolder& folder = calendar_->Folder();
    folder.SaveChange(folder.AllItems()[index]->entryId, change, Date::FromYmd(2026, 2, 3));
  }
  Texts Subjects() {
    Texts subjects;
    for (const auto& item : calendar_->Folder().AllItems()) {
      subjects.push_back(item->fields.subject);
    }
    return subjects;
  }

  char name_[5] = "test";
  char* arguments_[2] = {name_, nullptr};
  int argumentCount_ = 1;
  QCoreApplication application_;
  std::unique_ptr<SetCalendar> calendar_;
  std::shared_ptr<const CalendarFolder::Listener> listening_;
  Texts events_;
  Texts told_;
};

TEST_F(SetLook, TimersRunWhileASlowReaderReadsAndItsAnswerThenArrives) {
  Open();
  Hold();
  Write(Calendar(Named("a") + Named("c")));
  int ticks = 0;
  QTimer timer;
  QObject::connect(&timer, &QTimer::timeout, [&] {
    Look();
    EXPECT_EQ(events_, Texts{});
    if (++ticks == 20) Release();
  });
  timer.start(5ms);
  ASSERT_TRUE(RunUntilTold(1));
  EXPECT_GE(ticks, 20);
  timer.stop();
  EXPECT_EQ(events_, (Texts{"c", "removal"}));
  EXPECT_EQ(told_, Texts{""});
  EXPECT_FALSE(calendar_->CheckForChanges());
  EXPECT_EQ(Begun(), 2) << "one reading opens the calendar, one follows it";
}

TEST_F(SetLook, AnswerFromBeforeASaveIsDroppedAndTheFileReadAgain) {
  OpenAndHold(Calendar(Named("a") + Named("b") + Named("c")));
  Rename(0, "A");
  Release();
  ASSERT_TRUE(RunUntilTold(1));
  EXPECT_EQ(events_, (Texts{"A", "c"}));
  EXPECT_EQ(Subjects(), (Texts{"A", "b", "c"}));
  EXPECT_EQ(told_, Texts{""});
  EXPECT_EQ(Begun(), 3);
}

TEST_F(SetLook, AnswerThatAnotherReadingOvertookIsDropped) {
  OpenAndHold("garbage");
  Write(Calendar(Named("d")));
  Release();
  calendar_->Folder().Load(Year(2031));
  EXPECT_EQ(Subjects(), Texts{"d"});
  Write(Calendar(Named("d") + Named("e")));
  ASSERT_TRUE(RunUntilTold(1));
  EXPECT_EQ(told_, Texts{""}) << "trouble that is over already";
  EXPECT_EQ(Subjects(), (Texts{"d", "e"}));
}

TEST_F(SetLook, ChangesInQuickSuccessionEndWithTheLastOneReadOneAtATime) {
  OpenAndHold(Calendar(Named("first")));
  for (const char* next : {"second", "third", "the last"}) {
    Write(Calendar(Named(next)));
    Look();
  }
  Release();
  ASSERT_TRUE(RunUntilTold(2));
  EXPECT_EQ(Subjects(), Texts{"the last"});
  const Texts log = Log();
  ASSERT_EQ(log.size(), 6U);
  for (std::size_t i = 1; i < log.size(); i += 2) EXPECT_EQ(log[i], "end");
}

TEST_F(SetLook, ReaderThatHangsIsKilledAtItsLimitAndToldOnce) {
  OpenAndHold(Calendar(Named("c")), 1500ms);
  ASSERT_TRUE(RunUntilTold(1));
  EXPECT_THAT(told_[0], HasSubstr("took longer than 1500 ms")) << told_[0];
  EXPECT_FALSE(IsAlive(Log().back()));
  for (int i = 0; i < 10; ++i) {
    Look();
    QCoreApplication::processEvents();
  }
  EXPECT_EQ(told_.size(), 1U);
  EXPECT_EQ(Subjects(), (Texts{"a", "b"}));
  EXPECT_EQ(events_, Texts{});

  Release();
  Write(Calendar(Named("c") + Named("d")));
  Look();
  ASSERT_TRUE(RunUntilTold(2));
  EXPECT_EQ(told_[1], "");
  EXPECT_EQ(Subjects(), (Texts{"c", "d"}));
}

TEST_F(SetLook, BrokenStatesAreToldOnceEachAndSoIsTheirEnd) {
  // Moving a folder leaves the entry of the file in it as it is.
  fs::create_directories(folder_ + "/in");
  fs::rename(path_, folder_ + "/in/team.ics");
  path_ = folder_ + "/in/team.ics";
  Open();
  const auto isToldOnce = [&](const std::string& words) {
    told_.clear();
    Look();
    ASSERT_TRUE(RunUntilTold(1));
    Look();
    QCoreApplication::processEvents();
    ASSERT_EQ(told_.size(), 1U);
    EXPECT_THAT(told_[0], HasSubstr(words)) << told_[0];
    EXPECT_EQ(Subjects(), (Texts{"a", "b"}));
  };
  fs::rename(folder_ + "/in", folder_ + "/out");
  isToldOnce("does not exist");
  fs::rename(folder_ + "/out", folder_ + "/in");
  isToldOnce("");
  EXPECT_EQ(told_, Texts{""});
  WriteTo("in/team.ics", "garbage");
  isToldOnce("holds no calendar");
  WriteTo("in/team.ics", "more garbage");
  isToldOnce("holds no calendar");

  fs::remove(folder_ + "/reader");
  WriteTo("in/team.ics", Calendar(Named("c")));
  isToldOnce("could not be started");
  EXPECT_EQ(events_, Texts{});
}

TEST_F(SetLook, CalendarThatGoesDuringAReadingKillsTheReaderAndHearsNoMore) {
  OpenAndHold(Calendar(Named("c")));
  const std::string reader = Log().back();
  EXPECT_TRUE(IsAlive(reader));
  const QDeadlineTimer soon(5s);
  calendar_.reset();
  EXPECT_FALSE(soon.hasExpired());
  EXPECT_FALSE(IsAlive(reader));
  Release();
  QCoreApplication::processEvents();
  EXPECT_EQ(told_, Texts{});
  EXPECT_EQ(events_, Texts{});
}

}  // namespace
}  // namespace velkor
