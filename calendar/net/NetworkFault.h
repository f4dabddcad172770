// calendar/net/NetworkFault.h: what goes wrong between here and a server, for programs and people.
#pragma once

#include <chrono>
#include <optional>
#include <string>
#include <utility>

#include "values/Error.h"

namespace velkor {

/// A certificate that a server showed and that nobody vouches for.
struct CertificateFault {
  std::string host;
  /// Of the whole certificate: 64 hexadecimal digits in lower case.
  std::string sha256;
  std::string subject;
  std::string issuer;
  /// The days from and until which it holds, as in 2026-01-31.
  std::string from;
  std::string until;
  /// What is wrong with it, a sentence for people.
  std::string reason;
  /// Another one of this host is trusted.
  bool changed = false;

  friend bool operator==(const CertificateFault&, const CertificateFault&) = default;
};

/// What to do about a fault follows from its kind; the description is a sentence for people.
class NetworkFault : public Error {
 public:
  enum class Kind {
    /// The server cannot be reached, or the connection broke off. A later try may do.
    Offline,
    TooLarge,
    TooSlow,
    /// `certificate` tells which one; the user may trust it.
    Certificate,
    /// The server wants a user and a password, or others than were given.
    Login,
    /// The server answered with a status that says no.
    Refused,
    /// An address, a redirect or an answer that makes no sense or is not allowed.
    NotUnderstood,
  };

  struct Details {
    Kind kind = Kind::Offline;
    /// The server's status; 0 where there was none.
    int status = 0;
    /// How long the server asks to be left alone.
    std::optional<std::chrono::seconds> retryAfter = {};
    std::optional<CertificateFault> certificate = {};
    /// Kind::Login: the host that asks.
    std::string host = {};
  };

  NetworkFault(Details details, std::string description)
      : Error(errors::CalendarFailed, std::move(description), "Network"),
        details_(std::move(details)) {}
  NetworkFault(Kind kind, std::string description)
      : NetworkFault(Details{kind, 0, {}, {}, {}}, std::move(description)) {}

  const Details& Told() const noexcept { return details_; }
  Kind What() const noexcept { return details_.kind; }

 private:
  Details details_;
};

}  // namespace velkor
