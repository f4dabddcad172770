// calendar/net/HttpClient.cpp: which server is told the password, and where redirects may lead.
#include "calendar/net/HttpClient.h"

#include <QNetworkAccessManager>
#include <QUrl>

#include "calendar/net/HttpExchange.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Kind = NetworkFault::Kind;

constexpr int SafePort = 443;
constexpr int OpenPort = 80;

bool IsSafe(const QUrl& url) {
  return url.scheme() == QStringLiteral("https");
}

bool IsOnThisMachine(const QUrl& url) {
  const QString host = url.host();
  return host == QStringLiteral("localhost") || host == QStringLiteral("::1") ||
         host.startsWith(QStringLiteral("127."));
}

int PortOf(const QUrl& url) {
  return url.port(IsSafe(url) ? SafePort : OpenPort);
}

/// Another port is another server, unless both are the usual ones and the second is safe.
bool IsSameServer(const QUrl& known, const QUrl& url) {
  if (known.host() != url.host()) return false;
  return PortOf(known) == PortOf(url) || (PortOf(known) == OpenPort && PortOf(url) == SafePort);
}

QUrl AddressOf(const std::string& text) {
  QUrl url(QString::fromStdString(text), QUrl::StrictMode);
  const bool isWeb = IsSafe(url) || url.scheme() == QStringLiteral("http");
  if (!url.isValid() || !isWeb || url.host().isEmpty()) {
    throw NetworkFault(Kind::NotUnderstood,
                       "\"" + Printable(text) + "\" is no address on the web.");
  }
  url.setUserInfo({});
  url.setFragment({});
  return url;
}

bool IsRedirect(int status) {
  return status == 301 || status == 302 || status == 303 || status == 307 || status == 308;
}

/// Where an answer leads. Throws NetworkFault for where it must not.
QUrl TargetOf(const HttpResponse& response, const QUrl& from) {
  const QUrl target =
      from.resolved(QUrl(QString::fromStdString(response.Header("location")), QUrl::TolerantMode));
  if (IsSafe(from) && !IsSafe(target)) {
    throw NetworkFault(Kind::NotUnderstood, "The server " + from.host().toStdString() +
                                                " leads from a safe address to one that is not.");
  }
  return AddressOf(target.toString(QUrl::FullyEncoded).toStdString());
}

NetworkFault LoginFault(const HttpResponse& response, const QUrl& url, bool told) {
  const std::string host = url.host().toStdString();
  std::string words = "The server " + host + " asks for a user and a password.";
  if (told) words = "The server " + host + " does not accept the user or the password.";
  if (!told && !IsSafe(url) && !IsOnThisMachine(url)) {
    words += " They are not sent over a connection that others can read; use https.";
  }
  return {{Kind::Login, response.status, {}, {}, host}, words};
}

}  // namespace

HttpClient::HttpClient(HttpAccess access, const HttpLimits& limits)
    : access_(std::move(access)),
      limits_(limits),
      manager_(std::make_unique<QNetworkAccessManager>()),
      record_(std::make_unique<HttpRecord>()) {}

HttpClient::~HttpClient() = default;

int HttpClient::RequestCount() const {
  return record_->requests;
}

HttpResponse HttpClient::Send(const HttpRequest& request) {
  constexpr int MostRedirects = 5;
  const QUrl home(QString::fromStdString(access_.url));
  HttpRequest sent = request;
  QUrl url = AddressOf(request.url);
  for (int redirects = 0; redirects <= MostRedirects; ++redirects) {
    const bool mayLogIn =
        !access_.user.empty() && IsSameServer(home, url) && (IsSafe(url) || IsOnThisMachine(url));
    HttpExchange exchange(*manager_, access_, limits_, mayLogIn, *record_);
    HttpResponse response = exchange.Run(sent, url);
    if (response.status == 401) throw LoginFault(response, url, mayLogIn);
    if (!IsRedirect(response.status) || response.Header("location").empty()) return response;
    url = TargetOf(response, url);
    if (response.status == 303) sent = {"GET", {}, request.headers, {}};
  }
  throw NetworkFault(Kind::NotUnderstood, "The server " + url.host().toStdString() +
                                              " leads in a circle from address to address.");
}

}  // namespace velkor
