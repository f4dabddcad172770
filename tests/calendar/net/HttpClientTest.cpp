// tests/calendar/net/HttpClientTest.cpp: what a client makes of servers that behave and misbehave.
#include "calendar/net/HttpClient.h"

#include <gmock/gmock.h>

#include <QByteArray>

#include "tests/calendar/net/ScriptedServer.h"

namespace velkor {
namespace {

using Kind = NetworkFault::Kind;
using std::chrono::milliseconds;
using testing::HasSubstr;

const HttpLimits Small{
    .largestBody = 5000, .longestSilence = milliseconds(400), .longestAnswer = milliseconds(900)};

/// The fault of asking for an address; the test fails when there is none.
NetworkFault FaultOf(HttpClient& client, const std::string& url) {
  try {
    client.Send({.method = "GET", .url = url});
  } catch (const NetworkFault& fault) {
    return fault;
  }
  ADD_FAILURE() << "no fault of " << url;
  return {Kind::NotUnderstood, ""};
}

HttpResponse Get(HttpClient& client, const std::string& url) {
  return client.Send({.method = "GET", .url = url});
}

/// As a server compresses it.
std::string Deflated(std::size_t size) {
  const QByteArray packed = qCompress(QByteArray(static_cast<qsizetype>(size), 'x'), 9);
  return packed.mid(4).toStdString();
}

TEST(HttpClient, AnAnswerHasItsStatusHeadersBodyAndTheServersClock) {
  const ScriptedServer server(
      InTurn({{.status = 207,
               .headers = {{"ETag", "\"a\""}, {"Date", "Fri, 01 Jan 2100 00:00:00 GMT"}},
               .body = "body"}}));
  HttpClient client({});
  const HttpResponse response =
      client.Send({"REPORT", server.Url("/c?d"), {{"Depth", "1"}}, "<x/>"});
  EXPECT_EQ(response.status, 207);
  EXPECT_EQ(response.Header("etag"), "\"a\"");
  EXPECT_EQ(response.body, "body");
  EXPECT_EQ(response.url, server.Url("/c?d"));
  EXPECT_GT(response.secondsAhead.value(), 1'000'000'000);
  const ScriptedRequest request = server.Requests().at(0);
  EXPECT_EQ(request.method + request.path + request.headers.at("depth") + request.body,
            "REPORT/c?d1<x/>");
}

TEST(HttpClient, AServerThatMisbehavesEndsInAFaultOfItsKind) {
  const struct {
    const char* what;
    ScriptedAnswer answer;
    Kind kind;
  } cases[] = {
      {"stops in the body", {.body = std::string(4000, 'x'), .stopsAfter = 100}, Kind::Offline},
      {"stops in chunks",
       {.headers = {{"Transfer-Encoding", "chunked"}}, .body = "8\r\nlonger", .tellsLength = false},
       Kind::Offline},
      {"too large", {.body = std::string(5001, 'x')}, Kind::TooLarge},
      {"too large, untold",
       {.body = std::string(100'000, 'x'), .tellsLength = false},
       Kind::TooLarge},
      {"too large, packed",
       {.headers = {{"Content-Encoding", "deflate"}}, .body = Deflated(50'000'000)},
       Kind::TooLarge},
      {"packed, stops in the body",
       {.headers = {{"Content-Encoding", "deflate"}}, .body = Deflated(4000), .stopsAfter = 20},
       Kind::Offline},
      {"packed, damaged",
       {.headers = {{"Content-Encoding", "gzip"}}, .body = "\x1f\x8bnonsense"},
       Kind::NotUnderstood},
      {"silent", {.body = "x", .sleep = milliseconds(60'000)}, Kind::Offline},
      {"a byte now and then",
       {.body = std::string(4000, 'x'), .sleepBeforeByte = milliseconds(100)},
       Kind::TooSlow},
      {"in a circle", {.status = 302, .headers = {{"Location", "/"}}}, Kind::NotUnderstood},
      {"elsewhere",
       {.status = 302, .headers = {{"Location", "file:///etc/passwd"}}},
       Kind::NotUnderstood},
      {"401", {.status = 401, .headers = {{"WWW-Authenticate", "Basic realm=\"a\""}}}, Kind::Login},
  };
  for (const auto& [what, answer, kind] : cases) {
    SCOPED_TRACE(what);
    const ScriptedServer server(InTurn({answer}));
    HttpClient client({}, Small);
    const NetworkFault fault = FaultOf(client, server.Url());
    EXPECT_EQ(fault.What(), kind) << fault.Description();
    EXPECT_THAT(fault.Description(), testing::EndsWith("."));
    EXPECT_LE(server.Requests().size(), 6u);
  }
}

TEST(HttpClient, WithoutANetworkItIsOffline) {
  std::string gone;
  {
    const ScriptedServer server(InTurn({{}}));
    gone = server.Url();
  }
  HttpClient client({}, Small);
  EXPECT_EQ(FaultOf(client, gone).What(), Kind::Offline);
  EXPECT_EQ(FaultOf(client, "http://no-such-host.invalid/").What(), Kind::Offline);
  EXPECT_EQ(FaultOf(client, "ftp://localhost/").What(), Kind::NotUnderstood);
}

TEST(HttpClient, AStatusThatSaysNoIsAnAnswerAndTellsWhenToComeAgain) {
  for (const int status : {403, 404, 405, 412, 423, 429, 500, 503, 507}) {
    const ScriptedServer server(
        InTurn({{.status = status, .headers = {{"Retry-After", "30"}}, .body = "no"}}));
    HttpClient client({});
    const HttpResponse response = Get(client, server.Url());
    const NetworkFault fault = RefusalOf(response);
    EXPECT_EQ(response.status, status);
    EXPECT_EQ(fault.Told().status, status);
    EXPECT_EQ(fault.Told().retryAfter, std::chrono::seconds(30));
    EXPECT_THAT(fault.Description(), HasSubstr("127.0.0.1"));
  }
  HttpResponse later{.status = 503};
  later.headers = {{"retry-after", "Fri, 01 Jan 2100 00:00:00 GMT"}};
  EXPECT_EQ(RefusalOf(later).Told().retryAfter, std::chrono::hours(24));
  later.headers = {{"retry-after", "soon"}};
  EXPECT_EQ(RefusalOf(later).Told().retryAfter, std::nullopt);
}

TEST(HttpClient, ThePasswordIsToldToItsServerOnlyAndAtOnce) {
  const ScriptedServer other(InTurn({{.body = "other"}}));
  const ScriptedServer own([&](const ScriptedRequest& request) {
    return request.path == "/away"
               ? ScriptedAnswer{.status = 302, .headers = {{"Location", other.Url("/")}}}
               : ScriptedAnswer{.body = "own"};
  });
  HttpClient client({.url = own.Url("/x"), .user = "u", .password = "p"});
  EXPECT_EQ(Get(client, own.Url("/here")).body, "own");
  EXPECT_EQ(Get(client, own.Url("/away")).body, "other");
  EXPECT_EQ(own.Requests().at(0).headers.at("authorization"), "Basic dTpw");
  EXPECT_FALSE(other.Requests().at(0).headers.contains("authorization"));
  EXPECT_EQ(client.RequestCount(), 3);
}

TEST(HttpClient, AServerThatWantsADigestGetsIt) {
  const ScriptedServer server([](const ScriptedRequest& request) {
    const auto told = request.headers.find("authorization");
    const bool knows = told != request.headers.end() && told->second.starts_with("Digest ") &&
                       told->second.find("username=\"u\"") != std::string::npos;
    return knows ? ScriptedAnswer{.body = "in"}
                 : ScriptedAnswer{.status = 401,
                                  .headers = {{"WWW-Authenticate",
                                               "Digest realm=\"r\", nonce=\"n\", qop=\"auth\""}}};
  });
  HttpClient client({.url = server.Url(), .user = "u", .password = "p"});
  EXPECT_EQ(client.Send({"PUT", server.Url(), {}, "body"}).body, "in");
  EXPECT_EQ(server.Requests().back().body, "body");
}

TEST(HttpClient, AWrongPasswordIsTriedTwiceAtMost) {
  const ScriptedServer server(
      InTurn({{.status = 401, .headers = {{"WWW-Authenticate", "Basic realm=\"a\""}}}}));
  HttpClient client({.url = server.Url(), .user = "u", .password = "old"});
  EXPECT_EQ(FaultOf(client, server.Url()).Told().host, "127.0.0.1");
  EXPECT_LE(server.Requests().size(), 2u);
}

TEST(HttpClient, ACertificateIsTrustedForItsHostOnlyAndShownOtherwise) {
  const struct {
    const char* certificate;
    std::map<std::string, std::string> trusted;
    const char* reason;
  } cases[] = {
      {"first.pem", {}, "Nobody known"},
      {"first.pem", {{"localhost", Sha256Of("first.pem")}}, "Nobody known"},
      {"second.pem", {{"127.0.0.1", Sha256Of("first.pem")}}, "not the one that was trusted"},
      {"expired.pem", {}, "Its time is over"},
      {"first.pem", {{"127.0.0.1", Sha256Of("first.pem")}}, nullptr},
  };
  for (const auto& [certificate, trusted, reason] : cases) {
    const ScriptedServer server(InTurn({{.body = "safe"}}), certificate);
    HttpClient client({.url = server.Url(), .user = "u", .password = "p", .trusted = trusted});
    if (reason == nullptr) {
      EXPECT_EQ(Get(client, server.Url()).body, "safe");
      continue;
    }
    const NetworkFault fault = FaultOf(client, server.Url());
    ASSERT_EQ(fault.What(), Kind::Certificate) << fault.Description();
    EXPECT_EQ(fault.Told().certificate->sha256, Sha256Of(certificate));
    EXPECT_EQ(fault.Told().certificate->host, "127.0.0.1");
    EXPECT_THAT(fault.Told().certificate->subject, HasSubstr("Test Server"));
    EXPECT_THAT(fault.Told().certificate->reason, HasSubstr(reason));
    EXPECT_TRUE(server.Requests().empty());
  }
}

TEST(HttpClient, ARedirectNeverLeavesASafeConnection) {
  const ScriptedServer open(InTurn({{.body = "open"}}));
  const ScriptedServer safe(InTurn({{.status = 301, .headers = {{"Location", open.Url()}}}}),
                            "first.pem");
  HttpClient client({.trusted = {{"127.0.0.1", Sha256Of("first.pem")}}});
  EXPECT_THAT(FaultOf(client, safe.Url()).Description(), HasSubstr("not"));
  EXPECT_TRUE(open.Requests().empty());
}

}  // namespace
}  // namespace velkor
