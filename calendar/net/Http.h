// calendar/net/Http.h: a request to a server, its answer, and what a client is allowed.
#pragma once

#include <chrono>
#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

#include "calendar/net/NetworkFault.h"

namespace velkor {

/// Names and values in the order of sending.
using HttpHeaders = std::vector<std::pair<std::string, std::string>>;

struct HttpRequest {
  std::string method = "GET";
  /// http or https; a user and a password in it are left out.
  std::string url = {};
  HttpHeaders headers = {};
  std::string body = {};
};

struct HttpResponse {
  int status = 0;
  HttpHeaders headers = {};
  /// Decompressed.
  std::string body = {};
  /// Where the answer came from, after redirects.
  std::string url = {};
  /// How far the server's clock is ahead of ours, by its Date; none without one.
  std::optional<std::int64_t> secondsAhead = {};

  /// A header's value, whatever the case of its name; empty for none.
  std::string Header(std::string_view name) const;
  bool IsSuccess() const { return status >= 200 && status < 300; }
};

/// The answer as a fault: which status, and when to come again (Retry-After, seconds or a date,
/// RFC 9110 section 10.2.3, at most a day).
NetworkFault RefusalOf(const HttpResponse& response);

/// Who asks, and whom the user trusts.
struct HttpAccess {
  /// User and password are for the server of this address alone.
  std::string url = {};
  std::string user = {};
  std::string password = {};
  /// Certificates that the user trusts: host to SHA-256 as CertificateFault has it.
  std::map<std::string, std::string> trusted = {};
};

struct HttpLimits {
  /// Bytes of a decompressed body.
  std::size_t largestBody = std::size_t{64} << 20;
  /// How long nothing may come.
  std::chrono::milliseconds longestSilence{60'000};
  /// How long one answer may take, redirects left out.
  std::chrono::milliseconds longestAnswer{600'000};
};

}  // namespace velkor
