// tests/calendar/dav/CollectionSyncTest.cpp: a mirror follows its calendar, whatever the server
// does.
#include "calendar/dav/CollectionSync.h"

#include <gmock/gmock.h>
#include <sys/resource.h>

#include <csignal>
#include <map>
#include <vector>

#include "calendar/dav/DavClient.h"
#include "calendar/net/HttpClient.h"
#include "tests/calendar/dav/FakeCalendar.h"
#include "tests/platform/desktop/FolderCase.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

class CollectionSync : public FolderCase {
 protected:
  CollectionSync() {
    for (const char* name : {"a", "b", "c"}) Put(name, name);
  }

  void Put(const std::string& name, const std::string& subject) {
    calendar_.Put("/c/" + name + ".ics", Appointment(name, subject));
  }

  /// One synchronisation; the requests that it took.
  int Synchronise(const HttpLimits& limits = {}) {
    HttpClient client({.url = server_.Url()}, limits);
    const DescribedCalendar described = DescribeCalendar(client, server_.Url("/c/"));
    const SyncedCollection synced = SyncCollection(client, described.calendar, mirror_);
    trouble_ = synced.trouble;
    changed_ = synced.changed;
    return client.RequestCount();
  }

  /// Whatever ends it.
  std::string Fault() {
    try {
      Synchronise();
    } catch (const NetworkFault& fault) {
      return fault.Description();
    }
    return "none";
  }

  /// The mirror's objects are the calendar's, byte for byte.
  void ExpectSame(const std::string& title = {}) {
    std::map<std::string, std::string> mirrored;
    for (const ObjectKey& key : mirror_.Objects()) {
      mirrored[key.href] = mirror_.Object(key.name).value().bytes;
    }
    EXPECT_EQ(mirrored, calendar_.All()) << title;
  }

  FakeCalendar calendar_;
  ScriptedServer server_{calendar_.Script()};
  Mirror mirror_{Path("mirror")};
  std::string trouble_;
  bool changed_ = false;
};

ScriptedAnswer Broken() {
  return {.status = 207, .body = "<d:multistatus xmlns:d='DAV:'>", .stopsAfter = 10};
}

bool AsksForChanges(const ScriptedRequest& request) {
  return request.body.find(":sync-collection") != std::string::npos;
}
bool AsksForObjects(const ScriptedRequest& request) {
  return request.body.find(":calendar-multiget") != std::string::npos;
}

TEST_F(CollectionSync, AsksNoMoreThanItMust) {
  for (const bool tellsChanges : {true, false}) {
    SCOPED_TRACE(tellsChanges);
    calendar_.tellsChanges = tellsChanges;
    for (int i = 0; i < 247; ++i) Put("n" + std::to_string(i), "many");
    mirror_ = Mirror(Path(tellsChanges ? "one" : "two"));
    EXPECT_LE(Synchronise(), 3 + 250 / 100);
    ExpectSame();
    EXPECT_EQ(Synchronise(), 1);
    EXPECT_FALSE(changed_);
    Put("b", "changed");
    EXPECT_LE(Synchronise(), 3);
    EXPECT_TRUE(changed_);
    calendar_.Remove("/c/a.ics");
    EXPECT_LE(Synchronise(), 2);
    ExpectSame();
  }
}

TEST_F(CollectionSync, AFaultOfTheServerIsSurvivedAndMadeUpFor) {
  using Request = const ScriptedRequest&;
  using Answer = std::optional<ScriptedAnswer>;
  const struct {
    const char* title;
    std::function<Answer(Request)> fault;
    /// Part of what the fault says; null where the synchronisation succeeds all the same.
    const char* told;
  } Cases[] = {
      {"a token that is no longer good",
       [](Request r) -> Answer {
         if (AsksForChanges(r) && r.body.find("token>t") != std::string::npos)
           return {{.status = 403}};
         return {};
       },
       nullptr},
      {"the same, told as its own fault",
       [](Request r) -> Answer {
         if (AsksForChanges(r) && r.body.find("token>t") != std::string::npos)
           return {{.status = 500}};
         return {};
       },
       nullptr},
      {"changes that are not told after all",
       [](Request r) -> Answer {
         if (AsksForChanges(r)) return {{.status = 501}};
         return {};
       },
       nullptr},
      {"an answer that is cut and goes on",
       [](Request r) -> Answer {
         if (!AsksForChanges(r) || r.body.find("half") != std::string::npos) return {};
         return Multistatus(ResponseOf("/c/", 507) + "<d:sync-token>half</d:sync-token>");
       },
       nullptr},
      {"an answer that is cut for ever",
       [](Request r) -> Answer {
         if (!AsksForChanges(r)) return {};
         return Multistatus(ResponseOf("/c/", 507) + "<d:sync-token>same</d:sync-token>");
       },
       nullptr},
      {"no objects together",
       [](Request r) -> Answer {
         if (AsksForObjects(r)) return {{.status = 400}};
         return {};
       },
       nullptr},
      {"objects that no XML can hold",
       [](Request r) -> Answer {
         if (AsksForObjects(r)) return Multistatus("<d:response>\x0B</d:response>");
         return {};
       },
       nullptr},
      {"an answer without some objects",
       [](Request r) -> Answer {
         if (AsksForObjects(r)) return Multistatus("");
         return {};
       },
       nullptr},
      {"a body that stops in the middle",
       [](Request r) -> Answer {
         if (AsksForChanges(r)) return Broken();
         return {};
       },
       "connection off"},
      {"the server is busy",
       [](Request r) -> Answer {
         if (AsksForObjects(r)) return {{.status = 503, .headers = {{"Retry-After", "7"}}}};
         return {};
       },
       "busy"},
      {"a login page",
       [](Request r) -> Answer {
         if (AsksForObjects(r) || r.method == "GET") {
           return {{.headers = {{"Content-Type", "text/html"}}, .body = "<html>Log in</html>"}};
         }
         return {};
       },
       "a page for a browser"},
      {"the calendar is gone", [](Request) -> Answer { return {{.status = 404}}; }, "no calendar"},
      {"it is no calendar",
       [](Request) -> Answer { return Multistatus(ResponseOf("/c/", "<d:resourcetype/>")); },
       "no calendar"},
  };
  int number = 0;
  for (const auto& [title, fault, told] : Cases) {
    SCOPED_TRACE(title);
    const std::string name = "n" + std::to_string(++number);
    mirror_ = Mirror(Path(QString::fromStdString(name)));
    calendar_.fault = nullptr;
    ASSERT_EQ(Fault(), "none");
    const std::string before = mirror_.State().syncToken;
    Put("b", std::string("changed ") + title);
    Put(name, "new");
    calendar_.Remove("/c/c.ics");
    calendar_.fault = fault;
    if (told != nullptr) {
      EXPECT_THAT(Fault(), HasSubstr(told));
      EXPECT_EQ(mirror_.State().syncToken, before);
      calendar_.fault = nullptr;
    }
    EXPECT_EQ(Fault(), "none");
    ExpectSame();
    Put("c", "again");
  }
}

TEST_F(CollectionSync, AnObjectThatIsNotGivenIsAskedForAgain) {
  calendar_.fault = [](const ScriptedRequest& request) -> std::optional<ScriptedAnswer> {
    const bool isIll = request.path == "/c/b.ics" || AsksForObjects(request);
    if (isIll) return {{.status = 500}};
    return {};
  };
  Synchronise();
  EXPECT_THAT(trouble_, HasSubstr("1 appointment"));
  EXPECT_EQ(mirror_.State().trouble, trouble_);
  EXPECT_EQ(mirror_.Objects().size(), 2u);
  calendar_.fault = nullptr;
  Synchronise();
  EXPECT_THAT(mirror_.State().trouble, IsEmpty());
  ExpectSame();
}

TEST_F(CollectionSync, WhatIsNoAppointmentIsKeptAndWhatIsTooLargeIsNotFetchedAgain) {
  calendar_.Put("/c/b.ics", "no calendar at all");
  calendar_.Put("/c/d.ics", Appointment("a", "the same UID"));
  Synchronise();
  ExpectSame();
  calendar_.Put("/c/c.ics", Appointment("c", std::string(200'000, 'x')));
  Synchronise({.largestBody = 100'000});
  EXPECT_EQ(Synchronise({.largestBody = 100'000}), 1);
  EXPECT_EQ(mirror_.Objects().size(), 4u);
}

TEST_F(CollectionSync, AnAppointmentThatIsMovedOnTheServerStaysTheSameHere) {
  Synchronise();
  const ObjectKey key = mirror_.Objects().at(0);
  const std::string bytes = calendar_.Bytes(key.href);
  std::string from = key.href;
  for (const bool tellsChanges : {true, false}) {
    calendar_.tellsChanges = tellsChanges;
    const std::string to = tellsChanges ? "/c/moved.ics" : "/c/again.ics";
    calendar_.Remove(from);
    calendar_.Put(to, bytes);
    Synchronise();
    ExpectSame();
    EXPECT_EQ(mirror_.Object(key.name).value().key.href, to);
    from = to;
  }
}

// A limit of the size of files stands for a disk without room.
TEST_F(CollectionSync, ADiskThatIsFullIsToldAndMadeUpFor) {
  Synchronise();
  Put("b", std::string(5000, 'x'));
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  EXPECT_THROW(Synchronise(), Error);
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_EQ(mirror_.Objects().size(), 3u);
  Synchronise();
  ExpectSame();
}

TEST_F(CollectionSync, AKillAtAnyRequestIsMadeUpFor) {
  for (int last = 1; last < 6; ++last) {
    mirror_ = Mirror(Path(QString::number(last)));
    for (int i = 0; i < 150; ++i) Put("n" + std::to_string(i), std::to_string(last));
    calendar_.fault = [requests = 0,
                       last](const ScriptedRequest&) mutable -> std::optional<ScriptedAnswer> {
      if (++requests > last) return {{.status = 429}};
      return {};
    };
    Fault();
    calendar_.fault = nullptr;
    Synchronise();
    ExpectSame();
  }
}

}  // namespace
}  // namespace velkor
