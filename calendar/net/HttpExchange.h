// calendar/net/HttpExchange.h: sends one request and waits for its answer, within limits.
#pragma once

#include <QEventLoop>
#include <QNetworkReply>
#include <QObject>
#include <QUrl>
#include <memory>
#include <optional>

#include "calendar/net/Http.h"

class QAuthenticator;
class QNetworkAccessManager;

namespace velkor {

/// What the requests of one client have in common.
struct HttpRecord {
  /// Sent so far, repetitions with a password included.
  int requests = 0;
  /// The server asked for the password itself: from then on the library tells it.
  bool wasAsked = false;
};

class HttpExchange {
 public:
  /// @param mayLogIn  whether user and password may be told to the server
  HttpExchange(QNetworkAccessManager& manager, const HttpAccess& access, const HttpLimits& limits,
               bool mayLogIn, HttpRecord& record);

  /// The answer, redirects and 401 included. Throws NetworkFault.
  HttpResponse Run(const HttpRequest& request, const QUrl& url);

 private:
  void Start(const HttpRequest& request, const QUrl& url);
  void Hear();
  void Take();
  void CheckLength();
  void LogIn(QAuthenticator& authenticator);
  void CheckCertificate(const QList<QSslError>& errors);
  void Fail(NetworkFault fault);
  void ThrowOnFault() const;
  void ThrowOnNetworkError() const;
  void ThrowWhenCutShort() const;
  void Unpack();
  NetworkFault TooLarge() const;
  HttpResponse Answer() const;
  std::string Host() const;

  QNetworkAccessManager& manager_;
  const HttpAccess& access_;
  const HttpLimits& limits_;
  bool mayLogIn_;
  HttpRecord& record_;
  QUrl url_;
  std::unique_ptr<QNetworkReply> reply_;
  /// What is delivered to it is not delivered after the end of this.
  QObject receiver_;
  QEventLoop loop_;
  std::string body_;
  std::optional<NetworkFault> fault_;
  bool isAsked_ = false;
};

}  // namespace velkor
