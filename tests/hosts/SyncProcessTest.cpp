// tests/hosts/SyncProcessTest.cpp: jobs done by vkrSync, and every end of it told.
#include "hosts/SyncProcess.h"

#include <QCoreApplication>
#include <QElapsedTimer>
#include <QEventLoop>

#include "tests/calendar/net/ScriptedServer.h"
#include "tests/platform/desktop/FolderCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;

constexpr const char* Calendar =
    "BEGIN:VCALENDAR\r\nX-WR-CALNAME:Team\r\nX-PUBLISHED-TTL:PT2H\r\nBEGIN:VEVENT\r\nUID:1\r\n"
    "DTSTART:20260101\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";

class SyncProcessCase : public FolderCase {
 protected:
  /// All that is told until the outcome.
  static std::vector<SyncEvent> Events(const SyncJob& job, const std::string& program = VKR_SYNC) {
    std::vector<SyncEvent> events;
    QEventLoop loop;
    std::unique_ptr<SyncProcess> process;
    process = std::make_unique<SyncProcess>(
        job,
        [&](const SyncEvent& event) {
          events.push_back(event);
          if (!std::holds_alternative<SyncOutcome>(event)) return;
          process.reset();
          loop.quit();
        },
        program);
    loop.exec();
    return events;
  }
  SyncJob Job(const std::string& url) const {
    return {.kind = SyncJob::Kind::Address, .location = url, .place = Path("copy")};
  }
};

TEST_F(SyncProcessCase, AnAddressIsCopiedAndItsContentTold) {
  const ScriptedServer server(InTurn({{.body = Calendar}}), "first.pem");
  SyncJob job = Job(server.Url());
  job.trusted = {{"127.0.0.1", Sha256Of("first.pem")}};
  EXPECT_THAT(Events(job),
              testing::ElementsAre(
                  SyncEvent(SyncChanged{}), SyncEvent(SyncContent{"Team", 1}),
                  SyncEvent(SyncOutcome{.done = true, .interval = std::chrono::hours(2)})));
  EXPECT_EQ(Bytes("copy/calendar.ics"), Calendar);
  EXPECT_EQ(Events(job).size(), 2u);
}

TEST_F(SyncProcessCase, WhatStandsInTheWayIsToldBeforeTheOutcome) {
  const ScriptedServer unknown(InTurn({{}}), "first.pem");
  const auto shown = Events(Job(unknown.Url()));
  ASSERT_EQ(shown.size(), 2u);
  EXPECT_EQ(std::get<CertificateFault>(shown[0]).sha256, Sha256Of("first.pem"));
  const ScriptedServer closed(
      InTurn({{.status = 401, .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}}}}));
  SyncJob job = Job(closed.Url());
  job.user = "u";
  const auto asked = Events(job);
  ASSERT_EQ(asked.size(), 2u);
  EXPECT_EQ(asked[0], SyncEvent(SyncLogin{"127.0.0.1", "u"}));
  EXPECT_FALSE(std::get<SyncOutcome>(asked[1]).offline);
  const ScriptedServer busy(InTurn({{.status = 503, .headers = {{"Retry-After", "7"}}}}));
  EXPECT_EQ(std::get<SyncOutcome>(Events(Job(busy.Url())).back()).retryAfter,
            std::chrono::seconds(7));
}

TEST_F(SyncProcessCase, AProgramThatIsNotThereOrSaysNothingEndsInAFault) {
  for (const char* program : {"/no/such/program", "/bin/true", "/bin/false"}) {
    const auto events = Events(Job("http://127.0.0.1/"), program);
    ASSERT_EQ(events.size(), 1u) << program;
    EXPECT_FALSE(std::get<SyncOutcome>(events[0]).done);
    EXPECT_THAT(std::get<SyncOutcome>(events[0]).reason, testing::EndsWith("."));
  }
}

TEST_F(SyncProcessCase, TheEndOfItEndsTheProgramAtOnce) {
  const ScriptedServer silent(InTurn({{.sleep = std::chrono::minutes(10)}}));
  QElapsedTimer time;
  {
    const SyncProcess process(
        Job(silent.Url()), [](const SyncEvent&) { FAIL(); }, VKR_SYNC);
    while (silent.Requests().empty()) QCoreApplication::processEvents(QEventLoop::AllEvents, 50);
    time.start();
  }
  EXPECT_LT(time.elapsed(), 5000);
}

TEST_F(SyncProcessCase, AKillAtAnyMomentLeavesAWholeCopy) {
  const std::string large(1'000'000, ' ');
  const QByteArray copies[] = {QByteArray(Calendar).prepend(large.c_str()),
                               QByteArray(Calendar).append(large.c_str())};
  int next = 0;
  const ScriptedServer server([&](const ScriptedRequest&) {
    return ScriptedAnswer{.body = copies[next++ % 2].toStdString()};
  });
  Events(Job(server.Url()));
  int stopped = 0;
  for (int kill = 0; kill < 20; ++kill) {
    bool ended = false;
    auto process = std::make_unique<SyncProcess>(
        Job(server.Url()), [&](const SyncEvent&) { ended = true; }, VKR_SYNC);
    QElapsedTimer time;
    for (time.start(); !ended && time.elapsed() < 10 * kill;) QCoreApplication::processEvents();
    stopped += !ended;
    process.reset();
    const QByteArray copy = Bytes("copy/calendar.ics");
    EXPECT_TRUE(copy == copies[0] || copy == copies[1]) << kill;
  }
  EXPECT_GT(stopped, 0);
  EXPECT_TRUE(std::get<SyncOutcome>(Events(Job(server.Url())).back()).done);
}

TEST(SyncMessages, WhatIsToldComesBackTheSame) {
  const SyncJob job{SyncJob::Kind::Make, "https://h/", "",       "u", "p\"\n",
                    {{"h", "ab"}},       "Name",       "#112233"};
  EXPECT_EQ(ParseSyncJob(LineOf(job)), job);
  const SyncEvent events[] = {
      SyncStep{3, 100},
      SyncChanged{},
      CertificateFault{"h", "ab", "s", "i", "2026-01-01", "2027-01-01", "r", true},
      SyncLogin{"h", "u"},
      SyncCalendars{"https://h/", {{"https://h/c/", "C", "#00ff00", true}}},
      SyncOutcome{.done = true},
      SyncOutcome{.offline = true, .reason = "r", .retryAfter = std::chrono::seconds(9)},
  };
  for (const SyncEvent& event : events) EXPECT_EQ(ParseSyncEvent(LineOf(event)), event);
  for (const char* line : {"", "{}", "[", "{\"event\":\"progress\",\"done\":\"x\"}", "3"}) {
    EXPECT_EQ(ParseSyncEvent(line), std::nullopt) << line;
    EXPECT_THROW(ParseSyncJob(line), Error) << line;
  }
}

}  // namespace
}  // namespace velkor
