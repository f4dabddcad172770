// tests/calendar/dav/SendEditsTest.cpp: no edit is lost, whatever the server answers to it.
#include "calendar/dav/SendEdits.h"

#include <gmock/gmock.h>

#include <QDateTime>
#include <QLocale>
#include <array>
#include <functional>
#include <map>
#include <optional>
#include <random>
#include <regex>

#include "calendar/net/HttpClient.h"
#include "tests/calendar/dav/FakeCalendar.h"
#include "tests/calendar/dav/MirrorUser.h"
#include "tests/platform/desktop/FolderCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Pair;
using testing::SizeIs;

using Fault = std::function<std::optional<ScriptedAnswer>(const ScriptedRequest&)>;

/// Answers requests of one method with a status.
Fault Answering(const std::string& method, int status, const std::string& body = {}) {
  return [=](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    if (request.method == method) return {{.status = status, .body = body}};
    return {};
  };
}

class SendEdits : public FolderCase {
 protected:
  SendEdits() {
    calendar_.Put("/c/a.ics", Appointment("a", "Alpha"));
    Ours().Synchronise();
  }

  MirrorUser& Ours() { return ours_; }
  void SetPlace(const std::string& place) { ours_.SetPlace("Alpha", place); }
  /// What the server holds: subject and place of each object.
  std::vector<std::string> There() {
    MirrorUser reader({}, server_.Url("/c/"), Path("reader" + QString::number(++readers_)));
    calendar_.fault = nullptr;
    reader.Synchronise();
    return reader.Shown();
  }

  FakeCalendar calendar_;
  ScriptedServer server_{calendar_.Script()};
  MirrorUser ours_{{}, server_.Url("/c/"), Path("ours")};
  int readers_ = 0;
};

TEST_F(SendEdits, ChangesCreationsAndDeletionsAreSentOnceEach) {
  Ours().Add("Beta");
  SetPlace("here");
  EXPECT_EQ(Ours().Synchronise().sent, 2u);
  EXPECT_EQ(Ours().Requests(), 3);
  EXPECT_THAT(There(), ElementsAre("Alpha||here", "Beta||"));
  Ours().Delete("Beta");
  EXPECT_EQ(Ours().Synchronise().sent, 1u);
  EXPECT_THAT(There(), ElementsAre("Alpha||here"));
  EXPECT_EQ(Ours().Synchronise().sent, 0u);
  EXPECT_THAT(Ours().Shown(), ElementsAre("Alpha||here"));
}

TEST_F(SendEdits, ProgressIsToldOfWhatIsSentAndFetched) {
  for (int i = 0; i < 150; ++i) {
    const std::string name = "n" + std::to_string(i);
    calendar_.Put("/c/" + name + ".ics", Appointment(name, name));
  }
  Ours().Add("Beta");
  Ours().Add("Gamma");
  HttpClient client({});
  std::vector<std::pair<std::size_t, std::size_t>> told;
  SyncServerCalendar(client, server_.Url("/c"), Ours().Place(),
                     [&](std::size_t done, std::size_t of) { told.emplace_back(done, of); });
  EXPECT_THAT(told, ElementsAre(Pair(1, 2), Pair(2, 2), Pair(100, 150), Pair(150, 150)));
}

TEST_F(SendEdits, OneProgramAtATimeSynchronisesAMirror) {
  SetPlace("here");
  Mirror other(Path("ours"));
  auto turn = other.TryTurn();
  EXPECT_TRUE(Ours().Synchronise().isBusy);
  EXPECT_EQ(Ours().Requests(), 0);
  turn.reset();
  EXPECT_EQ(Ours().Synchronise().sent, 1u);
}

TEST_F(SendEdits, AnEditIsMadeAgainOnWhatOthersMadeMeanwhile) {
  SetPlace("here");
  calendar_.Put("/c/a.ics", Appointment("a", "Renamed"));
  EXPECT_EQ(Ours().Synchronise().sent, 1u);
  EXPECT_THAT(There(), ElementsAre("Renamed||here"));
  EXPECT_THAT(Ours().Shown(), ElementsAre("Renamed||here"));
  EXPECT_THAT(Ours().Edits().Notes(), IsEmpty());
}

TEST_F(SendEdits, WhatTheServerCannotNowWaitsAndWhatItRefusesIsKeptAside) {
  const struct {
    int status;
    std::size_t refused;
    std::size_t waiting;
    const char* trouble;
  } Cases[] = {
      {400, 1, 0, ""}, {403, 1, 0, ""},       {405, 1, 0, ""},       {409, 1, 0, ""},
      {413, 1, 0, ""}, {415, 1, 0, ""},       {423, 0, 1, "locked"}, {500, 0, 1, "out of order"},
      {502, 0, 1, ""}, {507, 0, 1, "no room"}};
  std::size_t refused = 0;
  std::string kept;
  for (const auto& [status, refuses, waits, trouble] : Cases) {
    SCOPED_TRACE(status);
    const std::string place = "at " + std::to_string(status);
    SetPlace(place);
    calendar_.fault = Answering("PUT", status);
    const ServerSyncResult result = Ours().Synchronise();
    EXPECT_EQ(result.refused, refuses);
    EXPECT_EQ(result.waiting, waits);
    EXPECT_THAT(Ours().Place().State().trouble, HasSubstr(trouble));
    refused += refuses;
    EXPECT_THAT(Ours().Edits().Refused(), SizeIs(refused));
    calendar_.fault = nullptr;
    EXPECT_EQ(Ours().Synchronise().sent, waits);
    EXPECT_EQ(Ours().Place().State().trouble, "");
    EXPECT_THAT(There(), ElementsAre("Alpha||" + (waits == 1 ? place : kept)));
    if (waits == 1) kept = place;
  }
}

TEST_F(SendEdits, AServerThatWantsNoMoreIsLeftAlone) {
  for (const int status : {429, 503}) {
    SetPlace(std::to_string(status));
    Ours().Add("New at " + std::to_string(status));
    int asked = 0;
    calendar_.fault = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
      if (request.method != "PUT") return {};
      ++asked;
      return {{.status = status, .headers = {{"Retry-After", "60"}}}};
    };
    EXPECT_NE(Ours().Trouble(), "none");
    EXPECT_EQ(asked, 1);
    calendar_.fault = nullptr;
    EXPECT_EQ(Ours().Synchronise().sent, 2u);
  }
}

TEST_F(SendEdits, AnAnswerThatIsLostIsFoundOut) {
  // The server stores what it is sent, and the connection ends.
  const auto losing = [&](const std::string& method) {
    return [&, method](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
      if (request.method != method) return {};
      if (method == "PUT") {
        calendar_.Put(request.path, request.body);
      } else {
        calendar_.Remove(request.path);
      }
      return {{.status = 201, .body = "12345", .stopsAfter = 1}};
    };
  };
  SetPlace("here");
  Ours().Add("Beta");
  for (int edit = 0; edit < 2; ++edit) {
    calendar_.fault = losing("PUT");
    EXPECT_NE(Ours().Trouble(), "none");
  }
  calendar_.fault = nullptr;
  Ours().Synchronise();
  EXPECT_THAT(Ours().Edits().Waiting(), IsEmpty());
  EXPECT_THAT(There(), ElementsAre("Alpha||here", "Beta||"));
  Ours().Delete("Beta");
  calendar_.fault = losing("DELETE");
  EXPECT_NE(Ours().Trouble(), "none");
  calendar_.fault = nullptr;
  Ours().Synchronise();
  EXPECT_THAT(Ours().Edits().Waiting(), IsEmpty());
  EXPECT_THAT(Ours().Edits().Questions(), IsEmpty());
  EXPECT_THAT(There(), ElementsAre("Alpha||here"));
}

/// The object with a text as another program writes it.
std::string WithText(const std::string& bytes, const std::string& text) {
  static const std::regex Line("DESCRIPTION:[^\r]*\r\n");
  std::string changed = std::regex_replace(bytes, Line, "");
  return changed.insert(changed.find("END:VEVENT"), "DESCRIPTION:" + text + "\r\n");
}

TEST_F(SendEdits, FaultsAtAnyRequestLoseNoField) {
  std::minstd_rand random(1);
  const auto below = [&](int bound) { return static_cast<int>(random() % bound); };
  calendar_.fault = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    switch (below(12)) {
      case 0:
        return {{.status = std::array{412, 423, 429, 500, 502, 503, 507}[below(7)]}};
      case 1: {
        ScriptedAnswer lost = calendar_.Answer(request);
        lost.body = "12345";
        lost.stopsAfter = 1;
        return lost;
      }
      default:
        return {};
    }
  };
  MirrorUser theirs({}, server_.Url("/c/"), Path("theirs"));
  for (int tries = 0; tries < 100 && theirs.Shown().empty(); ++tries) theirs.Trouble();
  Ours().Add("Beta");
  std::map<std::string, std::string> places, categories, texts;
  const auto subjectOf = [&](int i) { return std::string(i == 0 ? "Alpha" : "Beta"); };
  for (int step = 0; step < 150; ++step) {
    const std::string subject = subjectOf(below(2));
    const std::string value = std::to_string(step);
    switch (below(4)) {
      case 0:
        Ours().SetPlace(subject, places[subject] = value);
        break;
      case 1:
        if (theirs.Shown().size() < 2) break;
        theirs.SetCategories(subject, {categories[subject] = value});
        break;
      case 2:
        for (const auto& [href, bytes] : calendar_.All()) {
          if (bytes.find("SUMMARY:" + subject) == std::string::npos) continue;
          calendar_.Put(href, WithText(bytes, texts[subject] = value));
        }
        break;
      default:
        (below(2) == 0 ? Ours() : theirs).Trouble();
    }
  }
  calendar_.fault = nullptr;
  for (int round = 0; round < 2; ++round) {
    EXPECT_EQ(Ours().Trouble(), "none");
    EXPECT_EQ(theirs.Trouble(), "none");
  }
  for (MirrorUser* user : {&Ours(), &theirs}) {
    EXPECT_THAT(user->Edits().Waiting(), IsEmpty());
    EXPECT_THAT(user->Edits().Refused(), IsEmpty());
    for (int i = 0; i < 2; ++i) {
      const std::string subject = subjectOf(i);
      const AppointmentFields fields = user->Find(subject).fields;
      EXPECT_EQ(fields.location, places[subject]);
      EXPECT_THAT(fields.categories, ElementsAre(categories[subject]));
      EXPECT_EQ(fields.body, texts[subject]);
    }
  }
  EXPECT_THAT(calendar_.All(), SizeIs(2));
}

TEST_F(SendEdits, ServersWithOddEntityTagsLoseNothing) {
  const auto withoutETags = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    if (request.method != "GET") return {};
    return {{.body = calendar_.Bytes(request.path)}};
  };
  const auto neverMatching = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    if (request.headers.contains("if-match")) return {{.status = 412}};
    return {};
  };
  const auto weak = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    if (request.method != "PUT") return {};
    calendar_.Put(request.path, request.body);
    return {{.status = 204, .headers = {{"ETag", "W/" + calendar_.ETag(request.path)}}}};
  };
  const auto rewriting = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    if (request.method != "PUT") return {};
    std::string bytes = request.body;
    bytes.insert(bytes.find("END:VEVENT"), "X-SERVER:1\r\n");
    calendar_.Put(request.path, bytes);
    return {{.status = 204}};
  };
  calendar_.tellsETags = false;
  int number = 0;
  for (const Fault& fault :
       {Fault(), Fault(withoutETags), Fault(neverMatching), Fault(weak), Fault(rewriting)}) {
    SCOPED_TRACE(number);
    const std::string place = "place " + std::to_string(++number);
    calendar_.fault = fault;
    SetPlace(place);
    EXPECT_EQ(Ours().Synchronise().sent, 1u);
    SetPlace(place + " again");
    EXPECT_EQ(Ours().Synchronise().sent, 1u);
    EXPECT_THAT(Ours().Edits().Waiting(), IsEmpty());
    EXPECT_THAT(There(), ElementsAre("Alpha||" + place + " again"));
  }
  EXPECT_THAT(calendar_.Bytes("/c/a.ics"), HasSubstr("X-SERVER:1"));
}

TEST_F(SendEdits, ANewAppointmentFindsItsPlace) {
  // Another appointment has its name.
  Ours().Add("Beta");
  const std::string name = Ours().Edits().Waiting().at(0);
  calendar_.Put("/c/" + name + ".ics", Appointment("other", "Other"));
  EXPECT_EQ(Ours().Synchronise().sent, 1u);
  EXPECT_THAT(There(), ElementsAre("Alpha||", "Beta||", "Other||"));
  // The server puts it elsewhere.
  Ours().Add("Gamma");
  calendar_.fault = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    if (request.method != "PUT") return {};
    calendar_.Put("/c/moved.ics", request.body);
    return {{.status = 201,
             .headers = {{"Location", "/c/moved.ics"}, {"ETag", calendar_.ETag("/c/moved.ics")}}}};
  };
  EXPECT_EQ(Ours().Synchronise().sent, 1u);
  calendar_.fault = nullptr;
  Ours().SetPlace("Gamma", "there");
  EXPECT_EQ(Ours().Synchronise().sent, 1u);
  EXPECT_THAT(There(), ElementsAre("Alpha||", "Beta||", "Gamma||there", "Other||"));
}

TEST_F(SendEdits, AnAppointmentThatIsThereUnderAnotherAddressIsTakenOver) {
  for (const bool tellsWhere : {true, false}) {
    SCOPED_TRACE(tellsWhere);
    const std::string subject = tellsWhere ? "Beta" : "Gamma";
    const std::string elsewhere = "/c/" + subject + ".ics";
    Ours().Add(subject);
    calendar_.fault = [&](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
      if (request.method != "PUT" || request.path == elsewhere) return {};
      if (calendar_.Bytes(elsewhere).empty()) calendar_.Put(elsewhere, request.body);
      return {{.status = 409,
               .body = "<d:error xmlns:d='DAV:' xmlns:c='urn:ietf:params:xml:ns:caldav'>"
                       "<c:no-uid-conflict>" +
                       (tellsWhere ? "<d:href>" + elsewhere + "</d:href>" : "") +
                       "</c:no-uid-conflict></d:error>"}};
    };
    EXPECT_EQ(Ours().Synchronise().refused, 0u);
    calendar_.fault = nullptr;
    EXPECT_EQ(Ours().Synchronise().refused, 0u);
    EXPECT_THAT(Ours().Edits().Waiting(), IsEmpty());
  }
  EXPECT_THAT(There(), ElementsAre("Alpha||", "Beta||", "Gamma||"));
}

TEST_F(SendEdits, ADeletionAgainstAChangeAsks) {
  SetPlace("here");
  calendar_.Remove("/c/a.ics");
  Ours().Synchronise();
  ASSERT_THAT(Ours().Edits().Questions(), SizeIs(1));
  EXPECT_THAT(Ours().Shown(), ElementsAre("Alpha||here"));
  Ours().Edits().Answer(Ours().Edits().Questions().at(0).id, true);
  Ours().Synchronise();
  EXPECT_THAT(There(), ElementsAre("Alpha||here"));

  Ours().Delete("Alpha");
  calendar_.Put(Ours().Place().Objects().at(0).href, Appointment("a", "Changed"));
  Ours().Synchronise();
  ASSERT_THAT(Ours().Edits().Questions(), SizeIs(1));
  Ours().Edits().Answer(Ours().Edits().Questions().at(0).id, true);
  Ours().Synchronise();
  EXPECT_THAT(There(), IsEmpty());
}

TEST_F(SendEdits, ACalendarThatMayOnlyBeReadRefusesAndOneThatIsGoneOrLockedAwayLetsWait) {
  SetPlace("here");
  calendar_.readOnly = true;
  calendar_.fault = Answering("PUT", 403);
  EXPECT_EQ(Ours().Synchronise().refused, 1u);
  EXPECT_THAT(Ours().Edits().Refused().at(0).reason, HasSubstr("not change it"));
  EXPECT_TRUE(Ours().Place().State().readOnly);
  EXPECT_THROW(SetPlace("there"), Error);

  calendar_.readOnly = false;
  calendar_.fault = nullptr;
  Ours().Synchronise();
  SetPlace("elsewhere");
  for (const auto& [status, trouble] :
       {std::pair{404, "no calendar"}, {410, "no calendar"}, {401, "password"}}) {
    calendar_.fault = [status = status](const ScriptedRequest&) {
      return ScriptedAnswer{.status = status};
    };
    EXPECT_THAT(Ours().Trouble(), HasSubstr(trouble));
    EXPECT_THAT(Ours().Place().State().trouble, HasSubstr(trouble));
    EXPECT_THAT(Ours().Shown(), ElementsAre("Alpha||elsewhere"));
  }
  calendar_.fault = nullptr;
  EXPECT_EQ(Ours().Synchronise().sent, 1u);
}

TEST_F(SendEdits, TheLaterEditIsKnownByTheServersClock) {
  // The server is an hour ahead: what was saved there half an hour ahead of our clock is older than
  // what is saved here now.
  const auto edit = [&](int hoursAhead) {
    const auto stamp = [](std::int64_t seconds) {
      return QDateTime::fromSecsSinceEpoch(seconds, Qt::UTC)
          .toString("yyyyMMdd'T'HHmmss'Z'")
          .toStdString();
    };
    const std::int64_t now = QDateTime::currentSecsSinceEpoch();
    const std::string date =
        QLocale::c()
            .toString(QDateTime::fromSecsSinceEpoch(now + hoursAhead * 3600, Qt::UTC),
                      "ddd, dd MMM yyyy HH:mm:ss 'GMT'")
            .toStdString();
    SetPlace("ours " + std::to_string(hoursAhead));
    std::string theirs = Appointment("a", "Alpha");
    theirs.insert(theirs.find("END:VEVENT"),
                  "LOCATION:theirs\r\nLAST-MODIFIED:" + stamp(now + 1800) + "\r\n");
    calendar_.Put("/c/a.ics", theirs);
    calendar_.date = date;
    Ours().Synchronise();
    return There();
  };
  EXPECT_THAT(edit(1), ElementsAre("Alpha||ours 1"));
  EXPECT_THAT(edit(0), ElementsAre("Alpha||theirs"));
  EXPECT_THAT(Ours().Edits().Notes(), SizeIs(2));
}

}  // namespace
}  // namespace velkor
