// tests/calendar/dav/DiscoveryTest.cpp: calendars are found from what people know of a server.
#include "calendar/dav/Discovery.h"

#include <gmock/gmock.h>

#include <map>
#include <string>

#include "calendar/dav/MakeCalendar.h"
#include "calendar/net/HttpClient.h"
#include "tests/calendar/dav/FakeCalendar.h"

namespace velkor {
namespace {

using testing::HasSubstr;

const std::string Calendar = "<d:resourcetype><d:collection/><c:calendar/></d:resourcetype>";
const std::string Folder = "<d:resourcetype><d:collection/></d:resourcetype>";
const std::string Tasks = Calendar +
                          "<c:supported-calendar-component-set><c:comp name='VTODO'/>"
                          "</c:supported-calendar-component-set>";

std::string Principal(const std::string& href) {
  return "<d:current-user-principal><d:href>" + href + "</d:href></d:current-user-principal>";
}
std::string Home(const std::string& href) {
  return "<c:calendar-home-set><d:href>" + href + "</d:href></c:calendar-home-set>";
}
ScriptedAnswer RedirectTo(const std::string& location) {
  return {.status = 301, .headers = {{"Location", location}}};
}

/// Answers by path; a list of a home by path and "1". Others get a page of HTML.
using Site = std::map<std::string, ScriptedAnswer>;

/// What is found: home, then the calendars' paths; else the fault's sentence.
std::string Found(const Site& site, const std::string& path) {
  const ScriptedServer server([site](const ScriptedRequest& request) {
    const bool isList = request.headers.contains("depth") && request.headers.at("depth") == "1";
    const auto found = site.find(request.path + (isList ? "1" : ""));
    return found == site.end() ? ScriptedAnswer{.body = "<!DOCTYPE html><p>Hello"} : found->second;
  });
  const std::string root = server.Url("", "localhost");
  const auto pathOf = [&](const std::string& url) {
    return url.starts_with(root) ? url.substr(root.size()) : url;
  };
  try {
    const DiscoveredAccount account = DiscoverCalendars(root.substr(root.find("//") + 2) + path,
                                                        {.user = "tom", .password = "x"});
    std::string found = pathOf(account.home);
    for (const ServerCalendar& calendar : account.calendars) found += " " + pathOf(calendar.url);
    return found;
  } catch (const NetworkFault& fault) {
    return fault.Description();
  }
}

TEST(Discovery, LeadsFromWhatIsTypedToTheCalendars) {
  const ScriptedAnswer list =
      Multistatus(ResponseOf("/home/", Folder) + ResponseOf("/home/a/", Calendar) +
                  ResponseOf("/home/tasks/", Tasks) + ResponseOf("/home/b", Calendar));
  const ScriptedAnswer principal = Multistatus(ResponseOf("/tom/", Home("/home")));
  const Site whole{{"/.well-known/caldav", RedirectTo("/dav")},
                   {"/dav", Multistatus(ResponseOf("/dav", Principal("/tom/")))},
                   {"/tom/", principal},
                   {"/home/", Multistatus(ResponseOf("/home/", Folder + Principal("/tom/")))},
                   {"/home/a/", Multistatus(ResponseOf("/home/a/", Calendar + Principal("/tom/")))},
                   {"/other/", Multistatus(ResponseOf("/other/", Calendar))},
                   {"/home/1", list}};
  const Site noPrincipal{{"/home/", Multistatus(ResponseOf("/home/", Folder))}, {"/home/1", list}};
  const Site atRoot{{"/", Multistatus(ResponseOf("/", Principal("/tom/") + Home("/home/")))},
                    {"/.well-known/caldav", {.status = 404}},
                    {"/home/1", list}};
  const Site circle{{"/.well-known/caldav", RedirectTo("/x")}, {"/x", RedirectTo("/x")}};
  const Site refused{{"/.well-known/caldav", {.status = 403}}, {"/", {.status = 405}}};
  const Site busy{{"/.well-known/caldav", {.status = 503}}};
  const Site locked{{"/.well-known/caldav", {.status = 401}}};
  const Site elsewhere{{"/", Multistatus(ResponseOf("/", Principal("http://127.0.0.1:1/tom/")))}};
  const struct {
    const char* title;
    Site site;
    const char* path;
    const char* found;
  } Cases[] = {
      {"a host", whole, "", "/home/ /home/a/ /home/b/"},
      {"the home", whole, "/home/", "/home/ /home/a/ /home/b/"},
      {"one calendar", whole, "/home/a/", "/home/ /home/a/ /home/b/"},
      {"a calendar of somebody else", whole, "/other/", " /other/"},
      {"a path that leads nowhere", whole, "/nowhere", "/home/ /home/a/ /home/b/"},
      {"a home of no principal", noPrincipal, "/home/", " /home/a/ /home/b/"},
      {"no well-known place", atRoot, "", "/home/ /home/a/ /home/b/"},
      {"a site without calendars", {}, "", "No calendars were found"},
      {"a circle", circle, "", "No calendars were found"},
      {"a refusal", refused, "", "does not allow this"},
      {"a server that is busy", busy, "", "busy"},
      {"a wrong password", locked, "", "does not accept the user or the password"},
      {"a principal on a server that is not there", elsewhere, "", "127.0.0.1"},
  };
  for (const auto& [title, site, path, found] : Cases) {
    EXPECT_THAT(Found(site, path), HasSubstr(found)) << title;
  }
  EXPECT_THROW(DiscoverCalendars("no address", {}), NetworkFault);
}

TEST(Discovery, AnotherServerIsNotToldThePassword) {
  const ScriptedServer other(InTurn({{.status = 401}}));
  const ScriptedServer server(
      InTurn({Multistatus(ResponseOf("/", Principal(other.Url("/tom/"))))}));
  EXPECT_THROW(DiscoverCalendars(server.Url("/"), {.user = "tom", .password = "secret"}),
               NetworkFault);
  EXPECT_TRUE(server.Requests().at(0).headers.contains("authorization"));
  for (const ScriptedRequest& request : other.Requests()) {
    EXPECT_FALSE(request.headers.contains("authorization"));
  }
  EXPECT_EQ(other.Requests().size(), 1u);
}

TEST(MakeCalendar, AColourThatTheServerDropsIsSetOnceMore) {
  std::string colour;
  ScriptedServer server([&](const ScriptedRequest& request) -> ScriptedAnswer {
    if (request.method == "MKCALENDAR") return {.status = 201};
    if (request.method == "PROPPATCH") colour = "#00ff00";
    return Multistatus(ResponseOf(request.path, Calendar +
                                                    "<i:calendar-color xmlns:i='http://apple"
                                                    ".com/ns/ical/'>" +
                                                    colour + "</i:calendar-color>"));
  });
  HttpClient client({});
  const ServerCalendar made = MakeServerCalendar(client, server.Url("/home"), "A & B", "#00ff00");
  EXPECT_EQ(made.colour, "#00ff00");
  EXPECT_TRUE(made.url.starts_with(server.Url("/home/")));
  EXPECT_THAT(server.Requests().at(0).body, HasSubstr("A &amp; B"));
}

}  // namespace
}  // namespace velkor
