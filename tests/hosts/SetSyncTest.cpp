// tests/hosts/SetSyncTest.cpp: the sources of a set come up to date, and questions wait for
// answers.
#include "hosts/SetSync.h"

#include <QEventLoop>

#include "calendar/set/LocalPlaces.h"
#include "tests/calendar/net/ScriptedServer.h"
#include "tests/platform/desktop/FolderCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;

constexpr const char* Calendar = "BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n";

class SetSyncCase : public FolderCase {
 protected:
  SetSyncSeams Seams() {
    return {.now = [this] { return now_; },
            .trusted = [this] { return trusted_; },
            .findPassword = [this](const std::string&, const std::string&,
                                   const auto& found) { found(password_); },
            .forgetPassword = [this](const std::string&,
                                     const std::string&) { password_ = std::nullopt; },
            .program = VKR_SYNC};
  }
  SetSyncListener Listener() {
    return {.onStarted = [this](const std::string& id) { Note("start " + id); },
            .onStep = {},
            .onChanged = [this](const std::string& id) { Note("changed " + id); },
            .onCertificate = [this](const std::string& id,
                                    const CertificateFault& fault) { Note(fault.host + " " + id); },
            .onLogin = [this](const std::string& id,
                              const SyncLogin& login) { Note(login.user + "? " + id); },
            .onEnded =
                [this](const std::string& id, const SyncOutcome& outcome) {
                  Note((outcome.done ? "done " : "failed ") + id);
                  loop_.quit();
                }};
  }
  static SetSource Source(const std::string& id, const std::string& url,
                          const std::string& user = {}) {
    return {.id = id, .kind = SourceKind::Address, .location = url, .user = user};
  }
  void Note(const std::string& line) { log_.push_back(line); }
  /// What is told until one has ended.
  std::vector<std::string> UntilEnd() {
    log_.clear();
    loop_.exec();
    return log_;
  }

  std::int64_t now_ = 1'800'000'000;
  std::map<std::string, std::string> trusted_;
  std::optional<std::string> password_;
  std::vector<std::string> log_;
  QEventLoop loop_;
};

TEST_F(SetSyncCase, ACertificateAndAPasswordAreAskedForOnceAndThenUsed) {
  const ScriptedServer server(
      [](const ScriptedRequest& request) {
        const auto told = request.headers.find("authorization");
        return told != request.headers.end() && told->second == "Basic dTpnb29k"
                   ? ScriptedAnswer{.body = Calendar}
                   : ScriptedAnswer{.status = 401,
                                    .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}}};
      },
      "first.pem");
  SetSync sync(Path("data"), Seams(), Listener());
  const SetSource source = Source("a", server.Url(), "u");
  sync.Follow({source, {.id = "file", .location = "/x.ics"}});
  EXPECT_THAT(UntilEnd(), ElementsAre("start a", "u? a", "failed a"));
  password_ = "bad";
  sync.SyncNow("a");
  EXPECT_THAT(UntilEnd(), ElementsAre("start a", "127.0.0.1 a", "failed a"));
  trusted_["127.0.0.1"] = Sha256Of("first.pem");
  sync.SyncNow("a");
  EXPECT_THAT(UntilEnd(), ElementsAre("start a", "u? a", "failed a"));
  EXPECT_EQ(password_, std::nullopt);
  password_ = "good";
  sync.EditsWait("a");
  EXPECT_FALSE(sync.IsBusy());
  sync.SyncNow("a");
  EXPECT_THAT(UntilEnd(), ElementsAre("start a", "changed a", "done a"));
  EXPECT_EQ(Bytes("data/subscriptions/" +
                  QString::fromStdString(LocalPlaceOf(source, "").substr(15)) + "/calendar.ics"),
            Calendar);
}

TEST_F(SetSyncCase, WhatIsStoppedOrGoneIsKilledAndTheOthersGoOn) {
  const ScriptedServer silent(InTurn({{.sleep = std::chrono::minutes(10)}}));
  const ScriptedServer quick(InTurn({{.body = Calendar}}));
  SetSync sync(Path("data"), Seams(), Listener());
  sync.Follow({Source("slow", silent.Url()), Source("gone", silent.Url("/2")),
               Source("quick", quick.Url())});
  EXPECT_THAT(UntilEnd(), ElementsAre("start gone", "start quick", "start slow", "changed quick",
                                      "done quick"));
  sync.Follow({Source("slow", silent.Url()), Source("quick", quick.Url())});
  EXPECT_FALSE(sync.IsBusy("gone"));
  EXPECT_TRUE(sync.IsBusy("slow"));
  log_.clear();
  sync.CancelAll();
  EXPECT_THAT(log_, ElementsAre("failed slow"));
  EXPECT_FALSE(sync.IsBusy());
}

}  // namespace
}  // namespace velkor
