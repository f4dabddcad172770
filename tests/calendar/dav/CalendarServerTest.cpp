// tests/calendar/dav/CalendarServerTest.cpp: people with planners share calendars on a real server.
#include <gmock/gmock.h>

#include <algorithm>
#include <map>
#include <memory>
#include <optional>
#include <string>

#include "calendar/dav/Discovery.h"
#include "calendar/dav/MakeCalendar.h"
#include "calendar/net/HttpClient.h"
#include "tests/calendar/dav/FakeCalendar.h"
#include "tests/calendar/dav/MirrorUser.h"
#include "tests/calendar/dav/RunningServer.h"
#include "tests/platform/desktop/FolderCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;

class CalendarServer : public FolderCase {
 protected:
  static void SetUpTestSuite() { server_ = std::make_unique<RunningServer>(); }
  static void TearDownTestSuite() { server_.reset(); }

  void SetUp() override {
    ASSERT_NE(server_->Fact("url"), "") << "the server did not start";
    account_ = DiscoverCalendars(server_->Fact("url"), Access());
    HttpAccess access = Access();
    access.url = account_.home;
    HttpClient client(access);
    calendar_ = MakeServerCalendar(client, account_.home, "Team ä & b", "#12ab34");
  }

  static HttpAccess Access() { return server_->Access(); }

  /// Somebody with an own mirror of the test's calendar.
  MirrorUser& Person(const std::string& name) {
    auto& person = people_[name];
    if (!person) {
      person =
          std::make_unique<MirrorUser>(Access(), calendar_.url, Path(QString::fromStdString(name)));
    }
    return *person;
  }

  HttpResponse Send(const std::string& method, const std::string& name = {},
                    const std::string& body = {}) {
    HttpAccess access = Access();
    access.url = calendar_.url;
    return HttpClient(access).Send(
        {method, calendar_.url + name, {{"Content-Type", "text/calendar; charset=utf-8"}}, body});
  }

  static std::unique_ptr<RunningServer> server_;
  DiscoveredAccount account_;
  ServerCalendar calendar_;
  std::map<std::string, std::unique_ptr<MirrorUser>> people_;
};

std::unique_ptr<RunningServer> CalendarServer::server_;

TEST_F(CalendarServer, ANewCalendarIsListedWithNameAndColour) {
  EXPECT_EQ(calendar_.name, "Team ä & b");
  EXPECT_EQ(calendar_.colour, "#12ab34");
  EXPECT_FALSE(calendar_.readOnly);
  const auto listed = DiscoverCalendars(server_->Fact("url"), Access()).calendars;
  EXPECT_EQ(std::ranges::count(listed, calendar_.url, &ServerCalendar::url), 1);
  EXPECT_EQ(DiscoverCalendars(calendar_.url, Access()).calendars.front().url, calendar_.url);
}

TEST_F(CalendarServer, AsksNoMoreThanItMust) {
  for (int i = 0; i < 5; ++i) {
    const std::string name = "n" + std::to_string(i);
    EXPECT_EQ(Send("PUT", name + ".ics", Appointment(name, name)).status, 201);
  }
  MirrorUser& tom = Person("tom");
  tom.Synchronise();
  EXPECT_LE(tom.Requests(), 3);
  EXPECT_THAT(tom.Items(), SizeIs(5));
  tom.Synchronise();
  EXPECT_EQ(tom.Requests(), 1);
  Send("PUT", "n3.ics", Appointment("n3", "changed"));
  tom.Synchronise();
  EXPECT_LE(tom.Requests(), 3);
  EXPECT_EQ(tom.Find("changed").fields.subject, "changed");
  Send("DELETE", "n3.ics");
  tom.Synchronise();
  EXPECT_THAT(tom.Items(), SizeIs(4));
  EXPECT_EQ(tom.Place().State().displayName, "Team ä & b");
}

TEST_F(CalendarServer, ATokenThatMakesNoSenseStartsAnew) {
  Send("PUT", "a.ics", Appointment("a", "Alpha"));
  MirrorUser& tom = Person("tom");
  tom.Synchronise();
  Send("DELETE", "a.ics");
  Send("PUT", "b.ics", Appointment("b", "Beta"));
  MirrorState state = tom.Place().State();
  state.syncToken = "nonsense";
  tom.Place().SetState(state);
  tom.Synchronise();
  EXPECT_THAT(tom.Shown(), ElementsAre("Beta||"));
  tom.Synchronise();
  EXPECT_EQ(tom.Requests(), 1);
}

TEST_F(CalendarServer, BothPeoplesChangesOfOneAppointmentSurvive) {
  MirrorUser& tom = Person("tom");
  MirrorUser& eva = Person("eva");
  tom.Add("Alpha");
  EXPECT_EQ(tom.Synchronise().sent, 1u);
  eva.Synchronise();
  tom.SetPlace("Alpha", "Room 1");
  eva.SetCategories("Alpha", {"Blue", "Red"});
  tom.Synchronise();
  eva.Synchronise();
  tom.Synchronise();
  EXPECT_THAT(tom.Shown(), ElementsAre("Alpha|Blue,Red|Room 1"));
  EXPECT_EQ(eva.Shown(), tom.Shown());
  EXPECT_THAT(eva.Edits().Notes(), IsEmpty());

  tom.SetPlace("Alpha", "Room 2");
  eva.SetPlace("Alpha", "Room 3");
  tom.Synchronise();
  eva.Synchronise();
  tom.Synchronise();
  EXPECT_EQ(eva.Shown(), tom.Shown());
  EXPECT_THAT(eva.Edits().Notes(), SizeIs(1));
}

TEST_F(CalendarServer, WhatWasMadeAndDeletedOfflineIsSentLater) {
  MirrorUser& tom = Person("tom");
  for (const char* subject : {"Alpha", "Beta"}) tom.Add(subject);
  tom.Delete("Beta");
  tom.Add("Gamma");
  tom.Rename("Gamma", "Delta");
  tom.Synchronise();
  MirrorUser& eva = Person("eva");
  eva.Synchronise();
  EXPECT_THAT(eva.Shown(), ElementsAre("Alpha||", "Delta||"));
  tom.Delete("Delta");
  eva.SetPlace("Delta", "here");
  eva.Synchronise();
  tom.Synchronise();
  EXPECT_THAT(tom.Edits().Questions(), SizeIs(1));
  tom.Edits().Answer(tom.Edits().Questions().at(0).id, false);
  tom.Synchronise();
  EXPECT_THAT(tom.Shown(), ElementsAre("Alpha||", "Delta||here"));
  tom.Delete("Alpha");
  tom.Synchronise();
  eva.Synchronise();
  EXPECT_THAT(eva.Shown(), ElementsAre("Delta||here"));
}

TEST_F(CalendarServer, WhoMayOnlyReadIsToldAndRefused) {
  if (server_->Fact("reader").empty()) GTEST_SKIP() << "this server has one person only";
  Send("PUT", "a.ics", Appointment("a", "Alpha"));
  const HttpAccess access{.user = server_->Fact("reader"),
                          .password = server_->Fact("readerPassword")};
  const auto found = DiscoverCalendars(calendar_.url, access).calendars;
  ASSERT_THAT(found, SizeIs(1));
  EXPECT_TRUE(found[0].readOnly);
  MirrorUser reader(access, calendar_.url, Path("reader"));
  reader.Add("Made before the rights were known");
  EXPECT_EQ(reader.Synchronise().refused, 1u);
  EXPECT_THAT(reader.Edits().Refused().at(0).reason, HasSubstr("not change it"));
  EXPECT_THAT(reader.Shown(), ElementsAre("Alpha||"));
  EXPECT_THROW(reader.Add("Beta"), Error);
}

TEST_F(CalendarServer, ACalendarThatIsDeletedThereStaysHere) {
  MirrorUser& tom = Person("tom");
  tom.Add("Alpha");
  tom.Synchronise();
  Send("DELETE");
  tom.SetPlace("Alpha", "here");
  EXPECT_NE(tom.Trouble(), "none");
  EXPECT_NE(tom.Place().State().trouble, "");
  EXPECT_THAT(tom.Shown(), ElementsAre("Alpha||here"));
}

}  // namespace
}  // namespace velkor
