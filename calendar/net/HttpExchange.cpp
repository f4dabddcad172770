// calendar/net/HttpExchange.cpp: one request over Qt Network, its limits and its faults.
#include "calendar/net/HttpExchange.h"

#include <QAuthenticator>
#include <QNetworkAccessManager>
#include <QNetworkRequest>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslError>
#include <QTimer>
#include <algorithm>

#include "Version.h"
#include "calendar/net/HttpDate.h"
#include "calendar/net/Unpack.h"
#include "values/Text.h"

namespace velkor {
namespace {

using Kind = NetworkFault::Kind;

QByteArray BytesOf(const std::string& text) {
  return QByteArray::fromStdString(text);
}

QNetworkRequest RequestOf(const HttpRequest& request, const QUrl& url) {
  QNetworkRequest made(url);
  made.setAttribute(QNetworkRequest::RedirectPolicyAttribute,
                    QNetworkRequest::ManualRedirectPolicy);
  made.setAttribute(QNetworkRequest::CacheLoadControlAttribute, QNetworkRequest::AlwaysNetwork);
  // One request at a time gains nothing by it, and a password asked for half-way is simpler
  // without.
  made.setAttribute(QNetworkRequest::Http2AllowedAttribute, false);
  // Told so, the library leaves the unpacking to us: it takes a packed body that was cut short for
  // a whole one, and bounds none.
  made.setRawHeader("Accept-Encoding", "gzip");
  made.setHeader(QNetworkRequest::UserAgentHeader,
                 QStringLiteral("OutlookVelkor/") + QString::fromUtf8(Version));
  for (const auto& [name, value] : request.headers) {
    made.setRawHeader(BytesOf(name), BytesOf(value));
  }
  return made;
}

std::string DayOf(const QDateTime& time) {
  return time.toUTC().date().toString(Qt::ISODate).toStdString();
}

/// What a certificate says of somebody: the name, else the organisation.
std::string NameIn(const QStringList& names, const QStringList& organisations) {
  return Printable((names.isEmpty() ? organisations : names).join(", ").toStdString());
}

std::string Words(const QList<QSslError>& errors) {
  const auto has = [&](std::initializer_list<QSslError::SslError> which) {
    return std::ranges::any_of(errors, [&](const QSslError& error) {
      return std::ranges::find(which, error.error()) != which.end();
    });
  };
  if (has({QSslError::CertificateRevoked, QSslError::CertificateBlacklisted})) {
    return "It was called back by its issuer.";
  }
  if (has({QSslError::CertificateExpired})) return "Its time is over.";
  if (has({QSslError::CertificateNotYetValid})) return "Its time has not begun.";
  if (has({QSslError::HostNameMismatch})) return "It is made out for another server.";
  return "Nobody known to this computer vouches for it.";
}

CertificateFault FaultOf(const QSslCertificate& certificate, const std::string& host,
                         std::string reason) {
  return {host,
          certificate.digest(QCryptographicHash::Sha256).toHex().toStdString(),
          NameIn(certificate.subjectInfo(QSslCertificate::CommonName),
                 certificate.subjectInfo(QSslCertificate::Organization)),
          NameIn(certificate.issuerInfo(QSslCertificate::CommonName),
                 certificate.issuerInfo(QSslCertificate::Organization)),
          DayOf(certificate.effectiveDate()),
          DayOf(certificate.expiryDate()),
          std::move(reason),
          false};
}

}  // namespace

HttpExchange::HttpExchange(QNetworkAccessManager& manager, const HttpAccess& access,
                           const HttpLimits& limits, bool mayLogIn, HttpRecord& record)
    : manager_(manager), access_(access), limits_(limits), mayLogIn_(mayLogIn), record_(record) {}

std::string HttpExchange::Host() const {
  return url_.host().toStdString();
}

HttpResponse HttpExchange::Run(const HttpRequest& request, const QUrl& url) {
  Start(request, url);
  Hear();
  if (!reply_->isFinished()) loop_.exec();
  Take();
  ThrowOnFault();
  ThrowOnNetworkError();
  if (request.method != "HEAD") ThrowWhenCutShort();
  Unpack();
  return Answer();
}

void HttpExchange::Start(const HttpRequest& request, const QUrl& url) {
  url_ = url;
  QNetworkRequest made = RequestOf(request, url);
  made.setTransferTimeout(static_cast<int>(limits_.longestSilence.count()));
  if (!mayLogIn_) {
    // Nothing that was told to the library for another address.
    made.setAttribute(QNetworkRequest::AuthenticationReuseAttribute, QNetworkRequest::Manual);
  } else if (!record_.wasAsked) {
    made.setRawHeader("Authorization",
                      "Basic " + BytesOf(access_.user + ":" + access_.password).toBase64());
  }
  const QByteArray body = BytesOf(request.body);
  ++record_.requests;
  if (request.method == "GET") {
    reply_.reset(manager_.get(made));
  } else if (request.method == "HEAD") {
    reply_.reset(manager_.head(made));
  } else {
    reply_.reset(manager_.sendCustomRequest(made, BytesOf(request.method), body));
  }
}

void HttpExchange::Hear() {
  QNetworkReply* const reply = reply_.get();
  QObject::connect(reply, &QNetworkReply::finished, &receiver_, [this] { loop_.quit(); });
  QObject::connect(reply, &QNetworkReply::readyRead, &receiver_, [this] { Take(); });
  QObject::connect(reply, &QNetworkReply::metaDataChanged, &receiver_, [this] { CheckLength(); });
  QObject::connect(reply, &QNetworkReply::sslErrors, &receiver_,
                   [this](const QList<QSslError>& errors) { CheckCertificate(errors); });
  QObject::connect(&manager_, &QNetworkAccessManager::authenticationRequired, &receiver_,
                   [this](QNetworkReply*, QAuthenticator* asked) { LogIn(*asked); });
  QTimer::singleShot(limits_.longestAnswer, &receiver_, [this] {
    Fail({Kind::TooSlow, "The server " + Host() + " takes too long to answer."});
  });
}

NetworkFault HttpExchange::TooLarge() const {
  return {Kind::TooLarge, "The answer of the server " + Host() + " is too large."};
}

void HttpExchange::Take() {
  const QByteArray bytes = reply_->isOpen() ? reply_->readAll() : QByteArray();
  if (fault_) return;
  if (body_.size() + static_cast<std::size_t>(bytes.size()) > limits_.largestBody) {
    Fail(TooLarge());
  } else {
    body_.append(bytes.constData(), static_cast<std::size_t>(bytes.size()));
  }
}

void HttpExchange::CheckLength() {
  const auto length = reply_->header(QNetworkRequest::ContentLengthHeader).toLongLong();
  if (length > 0 && static_cast<std::uint64_t>(length) > limits_.largestBody) {
    Fail(TooLarge());
  }
}

/// Once: a second question means that the answer was wrong.
void HttpExchange::LogIn(QAuthenticator& authenticator) {
  if (!mayLogIn_ || isAsked_) return;
  isAsked_ = true;
  record_.wasAsked = true;
  authenticator.setUser(QString::fromStdString(access_.user));
  authenticator.setPassword(QString::fromStdString(access_.password));
  ++record_.requests;
}

void HttpExchange::CheckCertificate(const QList<QSslError>& errors) {
  const QSslCertificate certificate = reply_->sslConfiguration().peerCertificate();
  const auto trusted = access_.trusted.find(Host());
  CertificateFault fault = FaultOf(certificate, Host(), Words(errors));
  if (trusted != access_.trusted.end() && trusted->second == fault.sha256) {
    reply_->ignoreSslErrors(errors);
    return;
  }
  fault.changed = trusted != access_.trusted.end();
  if (fault.changed) {
    fault.reason = "It is not the one that was trusted for this server before. " + fault.reason;
  }
  const std::string description =
      "The server " + Host() + " cannot prove who it is. " + fault.reason;
  fault_ = NetworkFault({Kind::Certificate, 0, {}, std::move(fault), Host()}, description);
}

void HttpExchange::Fail(NetworkFault fault) {
  if (!fault_) fault_ = std::move(fault);
  reply_->abort();
}

void HttpExchange::ThrowOnFault() const {
  if (fault_) throw NetworkFault(*fault_);
}

void HttpExchange::ThrowOnNetworkError() const {
  const auto error = reply_->error();
  // Beyond these are the statuses (enum QNetworkReply::NetworkError).
  const int status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  constexpr int FirstOfStatuses = QNetworkReply::ContentAccessDenied;
  if (error == QNetworkReply::NoError || (status >= 400 && error >= FirstOfStatuses)) return;
  const std::string server = "The server " + Host();
  switch (error) {
    case QNetworkReply::HostNotFoundError:
      throw NetworkFault(Kind::Offline, server + " cannot be found.");
    case QNetworkReply::OperationCanceledError:
    case QNetworkReply::TimeoutError:
      throw NetworkFault(status == 0 ? Kind::Offline : Kind::TooSlow, server + " does not answer.");
    case QNetworkReply::RemoteHostClosedError:
      throw NetworkFault(Kind::Offline, server + " broke the connection off.");
    case QNetworkReply::SslHandshakeFailedError:
      throw NetworkFault(Kind::Offline,
                         "There is no safe connection to the server " + Host() + ".");
    default:
      break;
  }
  if (error < FirstOfStatuses) {
    throw NetworkFault(Kind::Offline, server + " cannot be reached.");
  }
  throw NetworkFault(Kind::NotUnderstood,
                     "The answer of the server " + Host() + " makes no sense.");
}

/// What the library lets pass: an answer of fewer bytes than it announced.
void HttpExchange::ThrowWhenCutShort() const {
  const QVariant length = reply_->header(QNetworkRequest::ContentLengthHeader);
  if (length.isValid() && length.toULongLong() > body_.size()) {
    throw NetworkFault(Kind::Offline, "The server " + Host() + " broke the connection off.");
  }
}

void HttpExchange::Unpack() {
  const std::string coding = reply_->rawHeader("Content-Encoding").toStdString();
  if (coding.empty() || SameName(coding, "identity") || body_.empty()) return;
  switch (velkor::Unpack(body_, limits_.largestBody, body_)) {
    case UnpackEnd::Whole:
      return;
    case UnpackEnd::TooLarge:
      throw TooLarge();
    case UnpackEnd::Damaged:
      throw NetworkFault(Kind::NotUnderstood,
                         "The answer of the server " + Host() + " makes no sense.");
  }
}

HttpResponse HttpExchange::Answer() const {
  HttpResponse response;
  response.status = reply_->attribute(QNetworkRequest::HttpStatusCodeAttribute).toInt();
  response.url = url_.toString(QUrl::FullyEncoded).toStdString();
  response.body = body_;
  for (const auto& [name, value] : reply_->rawHeaderPairs()) {
    response.headers.emplace_back(name.toStdString(), value.toStdString());
  }
  const auto date = SecondsOfHttpDate(response.Header("date"));
  if (date) response.secondsAhead = *date - SecondsNow();
  return response;
}

}  // namespace velkor
