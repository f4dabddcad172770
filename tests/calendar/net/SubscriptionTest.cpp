// tests/calendar/net/SubscriptionTest.cpp: the copy of an address outlives every fault of its
// server.
#include "calendar/net/Subscription.h"

#include <sys/resource.h>

#include <csignal>

#include "calendar/net/CalendarHead.h"
#include "calendar/net/HttpClient.h"
#include "tests/calendar/net/ScriptedServer.h"
#include "tests/platform/desktop/FolderCase.h"
#include "values/Error.h"

namespace velkor {
namespace {

using std::chrono::hours;
using std::chrono::minutes;
using testing::HasSubstr;

std::string Calendar(const std::string& properties, const std::string& subject = "Meeting") {
  return "BEGIN:VCALENDAR\r\nVERSION:2.0\r\n" + properties +
         "BEGIN:VEVENT\r\nUID:1\r\nDTSTART:20260101\r\nSUMMARY:" + subject +
         "\r\nEND:VEVENT\r\nEND:VCALENDAR\r\n";
}

class Subscription : public FolderCase {
 protected:
  std::string Folder() const { return Path("copy"); }
  std::string Copy() const { return Bytes("copy/calendar.ics").toStdString(); }
  bool Update(const std::string& address) const {
    HttpClient client({}, {.largestBody = 100'000});
    return BringUpToDate(client, address, Folder());
  }
  /// The sentence of the fault.
  std::string Trouble(const std::string& address) const {
    try {
      Update(address);
    } catch (const Error& error) {
      return error.Description();
    }
    return "none";
  }
};

TEST_F(Subscription, AsksOnlyForWhatIsNewAndTellsAServerWithoutMarksByTheBytes) {
  const ScriptedServer server(InTurn({
      {.headers = {{"ETag", "\"1\""}, {"Last-Modified", "Thu, 01 Jan 2026 00:00:00 GMT"}},
       .body = Calendar("REFRESH-INTERVAL;VALUE=DURATION:P1D\r\n")},
      {.status = 304},
      {.body = Calendar("", "Other")},
      {.body = Calendar("", "Other")},
  }));
  EXPECT_TRUE(Update(server.Url()));
  EXPECT_EQ(LoadSubscriptionState(Folder()).interval, hours(24));
  EXPECT_FALSE(Update(server.Url()));
  EXPECT_EQ(server.Requests().at(1).headers.at("if-none-match"), "\"1\"");
  EXPECT_THAT(server.Requests().at(1).headers.at("if-modified-since"), HasSubstr("2026"));
  EXPECT_EQ(LoadSubscriptionState(Folder()).interval, hours(24));
  EXPECT_TRUE(Update(server.Url()));
  EXPECT_FALSE(Update(server.Url()));
  EXPECT_EQ(Copy(), Calendar("", "Other"));
  EXPECT_GT(LoadSubscriptionState(Folder()).synchronised, 0);
  EXPECT_EQ(LoadSubscriptionState(Folder()).events, 1);
}

TEST_F(Subscription, AFaultKeepsTheLastGoodCopyAndSaysWhy) {
  const std::string good = Calendar("");
  const struct {
    ScriptedAnswer answer;
    const char* words;
  } cases[] = {
      {{.body = "<!DOCTYPE html><title>Sign in</title>"}, "web page in place of a calendar"},
      {{.headers = {{"Content-Type", "text/html"}}, .body = "Sign in"}, "web page"},
      {{.body = "PK\x03\x04"}, "is no calendar"},
      {{.body = good.substr(0, good.size() - 20), .tellsLength = false}, "cut short"},
      {{.body = good, .stopsAfter = 50}, "broke the connection off"},
      {{.body = std::string(100'001, 'x')}, "too large"},
      {{.status = 404}, "no calendar at this address"},
      {{.status = 410}, "status 410"},
      {{.status = 500}, "out of order"},
      {{.status = 401, .headers = {{"WWW-Authenticate", "Basic realm=\"x\""}}}, "asks for a user"},
  };
  ASSERT_TRUE(Update(ScriptedServer(InTurn({{.body = good}})).Url()));
  const auto before = LoadSubscriptionState(Folder()).synchronised;
  for (const auto& [answer, words] : cases) {
    const ScriptedServer server(InTurn({answer}));
    EXPECT_THAT(Trouble(server.Url()), HasSubstr(words));
    EXPECT_EQ(Copy(), good);
    EXPECT_THAT(LoadSubscriptionState(Folder()).trouble, HasSubstr(words));
    EXPECT_EQ(LoadSubscriptionState(Folder()).synchronised, before);
  }
  EXPECT_EQ(Update(ScriptedServer(InTurn({{.body = good}})).Url()), false);
  EXPECT_EQ(LoadSubscriptionState(Folder()).trouble, "");
}

TEST_F(Subscription, ACopyThatIsGoneIsFetchedAnewAndADamagedStateIsNone) {
  const ScriptedServer server([](const ScriptedRequest& request) {
    return request.headers.contains("if-none-match")
               ? ScriptedAnswer{.status = 304}
               : ScriptedAnswer{.headers = {{"ETag", "\"1\""}}, .body = Calendar("")};
  });
  ASSERT_TRUE(Update(server.Url()));
  ASSERT_TRUE(QFile::remove(File("copy/calendar.ics")));
  EXPECT_TRUE(Update(server.Url()));
  Write("copy/state.json", "{\"etag\":5}");
  EXPECT_TRUE(Update(server.Url()));
}

// A limit of the size of files stands for a disk without room.
TEST_F(Subscription, ADiskThatIsFullKeepsTheOldCopyAndIsTold) {
  ASSERT_TRUE(Update(ScriptedServer(InTurn({{.body = Calendar("")}})).Url()));
  std::signal(SIGXFSZ, SIG_IGN);
  rlimit before{};
  getrlimit(RLIMIT_FSIZE, &before);
  const rlimit small{1000, before.rlim_max};
  setrlimit(RLIMIT_FSIZE, &small);
  const ScriptedServer server(InTurn({{.body = Calendar("", std::string(5000, 'x'))}}));
  EXPECT_THAT(Trouble(server.Url()), HasSubstr("could not be written"));
  setrlimit(RLIMIT_FSIZE, &before);
  EXPECT_TRUE(Copy() == Calendar(""));
  EXPECT_THAT(LoadSubscriptionState(Folder()).trouble, HasSubstr("could not be written"));
  EXPECT_EQ(QDir(File("copy")).entryList(QDir::Files | QDir::Hidden).size(), 2);
}

TEST_F(Subscription, AWebcalAddressIsAskedForSafelyFirst) {
  EXPECT_THAT(WebAddressesOf("webcal://h/a:b"),
              testing::ElementsAre("https://h/a:b", "http://h/a:b"));
  EXPECT_THAT(WebAddressesOf("WEBCALS://h/"), testing::ElementsAre("https://h/"));
  const ScriptedServer open(InTurn({{.body = Calendar("")}}));
  EXPECT_TRUE(Update("webcal" + open.Url().substr(4)));
}

TEST(CalendarHead, TellsTheCalendarsOwnIntervalWithinBoundsAndItsName) {
  const struct {
    const char* properties;
    std::chrono::seconds interval;
  } cases[] = {
      {"", hours(1)},
      {"REFRESH-INTERVAL;VALUE=DURATION:PT2H\r\n", hours(2)},
      {"X-PUBLISHED-TTL:PT12H\r\n", hours(12)},
      {"X-PUBLISHED-TTL:PT12H\r\nREFRESH-INTERVAL;VALUE=DURATION:PT2H\r\n", hours(2)},
      {"X-PUBLISHED-TTL:PT1S\r\n", minutes(15)},
      {"X-PUBLISHED-TTL:P9000W\r\n", hours(24 * 7)},
      {"X-PUBLISHED-TTL:-PT5H\r\n", hours(1)},
      {"X-PUBLISHED-TTL:often\r\n", hours(1)},
  };
  for (const auto& [properties, interval] : cases) {
    EXPECT_EQ(HeadOf(Calendar(properties)).interval, interval) << properties;
  }
  EXPECT_EQ(HeadOf(Calendar("X-WR-CALNAME:Old\r\nNAME:Team\\, north\r\n")).name, "Team, north");
  EXPECT_EQ(HeadOf(Calendar("X-WR-CALNAME:Old\\, too\r\n")).name, "Old, too");
}

}  // namespace
}  // namespace velkor
