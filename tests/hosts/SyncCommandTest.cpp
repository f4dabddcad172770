// tests/hosts/SyncCommandTest.cpp: `yearplan sync` tells what it did in words and by its exit code.
#include "calendar/mirror/MirrorWriter.h"
#include "calendar/mirror/ReadMirror.h"
#include "calendar/set/LocalPlaces.h"
#include "tests/calendar/dav/FakeCalendar.h"
#include "tests/hosts/YearplanCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;

constexpr const char* Calendar = "BEGIN:VCALENDAR\r\nEND:VCALENDAR\r\n";

/// Lets in who knows the password.
ScriptedAnswer Guarded(const ScriptedRequest& request) {
  const auto told = request.headers.find("authorization");
  if (told != request.headers.end() && told->second == "Basic dTpnb29k") return {.body = Calendar};
  return {.status = 401, .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}}};
}

class SyncCommand : public Yearplan {
 protected:
  /// A set of one address.
  void WriteSet(const std::string& url, const std::string& user = {}) const {
    Write("team.yearplan",
          QByteArray::fromStdString(R"({"yearplan": 1, "calendars": [{"address": ")" + url +
                                    R"(", "name": "Team", "user": ")" + user + "\"}]}"));
  }
};

TEST_F(SyncCommand, BringsASetUpToDateOrSaysWhatKeepsItFromThat) {
  const ScriptedServer server(InTurn({{.body = Calendar}, {.status = 503}}));
  WriteSet(server.Url());
  const Outcome good = Run({"sync", "team.yearplan"});
  EXPECT_EQ(good.out, "Team: up to date\n");
  EXPECT_EQ(good.messages, "");
  EXPECT_EQ(good.code, 0);
  const Outcome bad = Run({"sync", "team.yearplan"});
  EXPECT_EQ(bad.out, "");
  EXPECT_THAT(bad.messages, HasSubstr("Team: The server 127.0.0.1 is busy"));
  EXPECT_EQ(bad.code, 1);
  EXPECT_EQ(Run({"sync", "absent.yearplan"}).code, 1);
}

TEST_F(SyncCommand, ThePasswordComesFromStandardInputAndACertificateFromAnOption) {
  const ScriptedServer server(Guarded, "first.pem");
  const QString trust = "127.0.0.1=" + QString::fromStdString(Sha256Of("first.pem"));
  WriteSet(server.Url(), "u");
  const Outcome unknown = Run({"sync", "team.yearplan", "--password-stdin"}, "good\n");
  EXPECT_THAT(unknown.messages, HasSubstr("--trust " + trust.toStdString()));
  EXPECT_EQ(unknown.code, 1);
  const Outcome without = Run({"sync", "team.yearplan", "--trust", trust});
  EXPECT_THAT(without.messages, HasSubstr("wants the password of u"));
  EXPECT_EQ(without.code, 1);
  const Outcome wrong = Run({"sync", "team.yearplan", "--trust", trust, "--password-stdin"}, "bad");
  EXPECT_THAT(wrong.messages, HasSubstr("does not accept"));
  EXPECT_EQ(wrong.code, 1);
  const Outcome good =
      Run({"sync", "team.yearplan", "--trust", trust, "--password-stdin"}, "good\r\n");
  EXPECT_EQ(good.messages, "");
  EXPECT_EQ(good.code, 0);
  // A password is in no file.
  QDirIterator files(folder_.path(), QDir::Files | QDir::Hidden, QDirIterator::Subdirectories);
  while (files.hasNext()) EXPECT_FALSE(Bytes(files.next()).contains("good"));
}

TEST_F(SyncCommand, SendsWhatWaitsAndSaysWhenAQuestionIsLeft) {
  FakeCalendar calendar;
  calendar.Put("/c/1.ics", Appointment("1", "Trip"));
  calendar.Put("/c/2.ics", Appointment("2", "Talk"));
  // Asked between two runs only.
  const ScriptedServer server(calendar.Script());
  const QStringList command{"sync", QString::fromStdString(server.Url("/c/")), "--account", "u",
                            "--password-stdin"};
  EXPECT_EQ(Run(command, "p").code, 0);
  const SetSource source{.kind = SourceKind::Server, .location = server.Url("/c/"), .user = "u"};
  const std::string folder = LocalPlaceOf(source, Path("data/outlookvelkor"));
  Mirror mirror(folder);
  MirrorWriter writer(mirror, "Team");
  const DateWindow window{Date::FromYmd(2000, 1, 1), Date::FromYmd(2040, 1, 1)};
  for (const CalendarItem& item : ReadMirror(folder, window).items) writer.WriteDeletion(item);
  calendar.Put("/c/1.ics", Appointment("1", "Journey"));
  const Outcome asked = Run(command, "p");
  EXPECT_THAT(asked.messages, HasSubstr("waits for your answer"));
  EXPECT_EQ(asked.code, 3);
  EXPECT_EQ(calendar.All().size(), 1u);
}

}  // namespace
}  // namespace velkor
