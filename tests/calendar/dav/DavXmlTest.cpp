// tests/calendar/dav/DavXmlTest.cpp: answers of calendar servers, odd and hostile ones too.
#include "calendar/dav/DavXml.h"

#include <gmock/gmock.h>

#include <string>

#include "calendar/dav/DavPath.h"
#include "calendar/dav/ServerCalendar.h"
#include "calendar/net/NetworkFault.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;

std::string Repeated(const std::string& text, std::size_t times) {
  std::string all;
  for (std::size_t i = 0; i < times; ++i) all += text;
  return all;
}

/// What reading ends in: "token" or the fault's sentence.
std::string Read(const std::string& body, std::vector<DavResponse>* responses = nullptr) {
  try {
    return ReadMultistatus(body, [&](DavResponse&& response) {
      if (responses != nullptr) responses->push_back(std::move(response));
    });
  } catch (const NetworkFault& fault) {
    return fault.Description();
  }
}

const std::string Open = "<multistatus xmlns='DAV:'>";
const std::string Close = "</multistatus>";

TEST(DavXml, PropertiesAreThoseThatTheServerHas) {
  std::vector<DavResponse> responses;
  EXPECT_EQ(Read("<?xml version='1.0'?><n:multistatus xmlns:n='DAV:' "
                 "xmlns:C='urn:ietf:params:xml:ns:caldav'><n:response>\n<n:href> /a/ </n:href>"
                 "<n:propstat><n:status>HTTP/1.1 404 Not Found</n:status><n:prop><n:displayname/>"
                 "</n:prop></n:propstat><n:propstat><n:prop><n:getetag>\"1\"</n:getetag>"
                 "<C:calendar-data><![CDATA[BEGIN\nä&\n]]></C:calendar-data></n:prop>"
                 "<n:status>HTTP/1.1 200 OK</n:status></n:propstat></n:response><n:response>"
                 "<n:href>/b</n:href><n:status>HTTP/1.1 404 Not Found</n:status></n:response>"
                 "<n:sync-token>t 1</n:sync-token></n:multistatus>",
                 &responses),
            "t 1");
  ASSERT_EQ(responses.size(), 2u);
  EXPECT_EQ(responses[0].href, "/a/");
  EXPECT_EQ(responses[0].Find(dav::DisplayName), nullptr);
  EXPECT_EQ(responses[0].Text(dav::ETag), "\"1\"");
  EXPECT_EQ(responses[0].Find(dav::CalendarData)->text, "BEGIN\r\nä&\r\n");
  EXPECT_EQ(responses[1].status, 404);
}

TEST(DavXml, NoAnswerDoesHarm) {
  const struct {
    const char* title;
    std::string body;
    const char* fault;
  } Cases[] = {
      {"nothing", "", "no whole XML document"},
      {"a login page", "<!DOCTYPE html><html><body>Log in<br></body></html>", "document type"},
      {"a page that is XML", "<html><body/></html>", "begins like another document"},
      {"another namespace", "<multistatus xmlns='dav'/>", "begins like another document"},
      {"cut short", Open + "<response><href>/a</href>", "no whole XML document"},
      {"entities that grow",
       "<!DOCTYPE x [<!ENTITY a 'aaaa'><!ENTITY b '&a;&a;&a;&a;'>]>" + Open + "&b;" + Close,
       "document type"},
      {"an entity of nobody", Open + "<response><href>&b;</href></response>" + Close,
       "answer is not"},
      {"an endless depth", Open + Repeated("<a>", 1'000'000), "nested too deeply"},
      {"an endless tag", Open + "<a " + Repeated("b='>' ", 1'000'000) + "/>" + Close, "too long"},
      {"endless properties",
       Open + "<response><propstat><prop>" + Repeated("<a/>", 100'000) +
           "</prop></propstat></response>",
       "too many properties"},
      {"an endless property",
       Open + "<response><propstat><prop><p>" + Repeated("<a/>", 100'000) +
           "</p></prop></propstat></response>",
       "too long"},
  };
  for (const auto& [title, body, fault] : Cases) EXPECT_THAT(Read(body), HasSubstr(fault)) << title;
  // Large, but as it should be.
  const std::string large(std::size_t{20} << 20, 'x');
  EXPECT_EQ(
      Read(Open + "<!-- " + large + " --><response><href>" + large + "</href></response>" + Close),
      "");
}

TEST(DavXml, TheReasonOfARefusalIsTold) {
  const auto conditions = ReadConditions(
      "<D:error xmlns:D='DAV:' xmlns:C='urn:ietf:params:xml:ns:caldav'>"
      "<C:no-uid-conflict><D:href>/a/b.ics</D:href></C:no-uid-conflict></D:error>");
  ASSERT_EQ(conditions.size(), 1u);
  EXPECT_EQ(conditions[0].name, dav::NoUidConflict);
  EXPECT_THAT(conditions[0].hrefs, ElementsAre("/a/b.ics"));
  EXPECT_TRUE(ReadConditions("<html>").empty());
}

TEST(DavPath, AnObjectHasOneSpellingAndLiesInItsCalendar) {
  const std::string calendar = "https://host.example/dav/t%40x/my%20cal/";
  const struct {
    const char* href;
    const char* canonical;
  } Cases[] = {
      {"/dav/t@x/my%20cal/a.ics", "/dav/t@x/my%20cal/a.ics"},
      {"/dav/t%40x/my%20cal/%41%c3%a4%2f.ics", "/dav/t@x/my%20cal/A%C3%A4%2F.ics"},
      {"https://host.example:443/dav/t%40x/my%20cal/a b.ics", "/dav/t@x/my%20cal/a%20b.ics"},
      {"a.ics", "/dav/t@x/my%20cal/a.ics"},
      {"/dav/t@x/my%20cal/", nullptr},
      {"/dav/t@x/my%20cal/sub/", nullptr},
      {"/dav/t@x/other/a.ics", nullptr},
      {"/dav/t@x/my%20cal/../other/a.ics", nullptr},
      {"https://other.example/dav/t%40x/my%20cal/a.ics", nullptr},
      {"http://host.example/dav/t%40x/my%20cal/a.ics", nullptr},
      {"", nullptr},
  };
  for (const auto& [href, canonical] : Cases) {
    EXPECT_EQ(ObjectHref(calendar, href).value_or("none"), canonical ? canonical : "none") << href;
  }
  EXPECT_EQ(NewObjectHref(calendar, "0a.ics", 0), "/dav/t@x/my%20cal/0a.ics");
  EXPECT_EQ(NewObjectHref(calendar, "0a.ics", 1), "/dav/t@x/my%20cal/0a-2.ics");
}

TEST(DavPath, ThePasswordGoesOnToServersOfTheSameOwnerAlone) {
  const struct {
    const char* known;
    const char* other;
    bool isSame;
  } Cases[] = {
      {"https://caldav.example.com/", "https://p42-caldav.example.com:443/1/", true},
      {"https://example.com/", "https://caldav.example.com/", true},
      {"https://caldav.example.com/", "https://evil.example/", false},
      {"https://caldav.example.com/", "https://evilexample.com/", false},
      {"https://caldav.example.com/", "http://p42-caldav.example.com/", false},
      {"http://caldav.example.com/", "https://p42-caldav.example.com/", false},
      {"https://shop.co.uk/", "https://evil.co.uk/", false},
      {"https://com/", "https://evil.com/", false},
      {"https://example.com/", "https://example.com/", false},
      {"https://127.0.0.1/", "https://127.0.0.2/", false},
  };
  for (const auto& [known, other, isSame] : Cases) {
    EXPECT_EQ(IsOfSameOwner(known, other), isSame) << known << " " << other;
  }
}

TEST(ServerCalendar, RightsColoursAndKindsAreReadAsServersWriteThem) {
  const auto calendarOf = [](const std::string& properties) {
    ServerCalendar calendar;
    ReadMultistatus(
        "<d:multistatus xmlns:d='DAV:' xmlns:c='urn:ietf:params:xml:ns:caldav' "
        "xmlns:i='http://apple.com/ns/ical/'><d:response><d:href>/h/team%20a</d:href>"
        "<d:propstat><d:prop>" +
            properties + "</d:prop></d:propstat></d:response></d:multistatus>",
        [&](DavResponse&& r) { calendar = CalendarOf("http://localhost/x/", r); });
    return calendar;
  };
  const std::string type = "<d:resourcetype><d:collection/><c:calendar/></d:resourcetype>";
  const auto rights = [](const std::string& right) {
    return "<d:current-user-privilege-set><d:privilege><d:read/></d:privilege><d:privilege>" +
           right + "</d:privilege></d:current-user-privilege-set>";
  };
  const ServerCalendar plain = calendarOf(type + "<i:calendar-color>#FF8800cc</i:calendar-color>");
  EXPECT_EQ(plain.url, "http://localhost/h/team%20a/");
  EXPECT_EQ(plain.name, "team a");
  EXPECT_EQ(plain.colour, "#ff8800");
  EXPECT_FALSE(plain.readOnly);
  EXPECT_TRUE(plain.holdsAppointments);
  EXPECT_TRUE(calendarOf(type + rights("<d:read-acl/>")).readOnly);
  EXPECT_FALSE(calendarOf(type + rights("<d:write-content/>")).readOnly);
  EXPECT_EQ(calendarOf(type + "<i:calendar-color>red</i:calendar-color>").colour, "");
  EXPECT_FALSE(calendarOf(type + "<c:supported-calendar-component-set><c:comp name='VTODO'/>"
                                 "</c:supported-calendar-component-set>")
                   .holdsAppointments);
  EXPECT_FALSE(calendarOf("<d:resourcetype><d:collection/></d:resourcetype>").isCalendar);
}

}  // namespace
}  // namespace velkor
