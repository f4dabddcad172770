// calendar/net/HttpClient.h: asks servers over HTTP and TLS, one request at a time.
#pragma once

#include <memory>

#include "calendar/net/Http.h"

class QNetworkAccessManager;

namespace velkor {

struct HttpRecord;

/// Waits for each answer in the caller, who has a QCoreApplication and no window. Cookies and
/// connections are kept as long as this lives.
class HttpClient {
 public:
  explicit HttpClient(HttpAccess access, const HttpLimits& limits = {});
  ~HttpClient();
  HttpClient(const HttpClient&) = delete;
  HttpClient& operator=(const HttpClient&) = delete;

  /// The server's answer, whatever its status but 401 (a fault of kind Login) and redirects, which
  /// are followed, five at most: from http to https and to any other server, never from https to
  /// http. The method stays the same but for 303. User and password (Basic or Digest) are told to
  /// the server of HttpAccess::url only, and only over TLS or within this machine. Throws
  /// NetworkFault.
  HttpResponse Send(const HttpRequest& request);

  /// How many requests were sent, redirects and repetitions with a password included.
  int RequestCount() const;

 private:
  HttpAccess access_;
  HttpLimits limits_;
  std::unique_ptr<QNetworkAccessManager> manager_;
  std::unique_ptr<HttpRecord> record_;
};

}  // namespace velkor
