// tests/calendar/net/ScriptedServer.h: a server in the test's process that answers as it is told.
#pragma once

#include <chrono>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <utility>
#include <vector>

namespace velkor {

struct ScriptedRequest {
  std::string method;
  /// With the query.
  std::string path;
  /// Names in lower case.
  std::map<std::string, std::string> headers;
  std::string body;
};

struct ScriptedAnswer {
  int status = 200;
  std::vector<std::pair<std::string, std::string>> headers = {};
  std::string body = {};
  /// Told as Content-Length unless it is false; the end of the connection ends the body then.
  bool tellsLength = true;
  /// The connection is closed after so many bytes of the body.
  std::optional<std::size_t> stopsAfter = {};
  /// Before the answer, and before each byte of the body.
  std::chrono::milliseconds sleep{0};
  std::chrono::milliseconds sleepBeforeByte{0};
};

/// Called in the server's thread.
using ServerScript = std::function<ScriptedAnswer(const ScriptedRequest&)>;

/// Answers one after another, the last one again and again.
ServerScript InTurn(std::vector<ScriptedAnswer> answers);

/// Listens on a free port of 127.0.0.1 in a thread of its own, one connection at a time, each for
/// one request.
class ScriptedServer {
 public:
  /// @param certificate  a file of tests/data/certificates: TLS; empty for none
  explicit ScriptedServer(ServerScript script, const std::string& certificate = {});
  ~ScriptedServer();

  /// @param host  "127.0.0.1" or "localhost"
  std::string Url(const std::string& path = "/", const std::string& host = "127.0.0.1") const;
  std::vector<ScriptedRequest> Requests() const;

 private:
  struct State;
  void Serve();

  std::unique_ptr<State> state_;
};

/// SHA-256 of a certificate of tests/data/certificates, as CertificateFault has it.
std::string Sha256Of(const std::string& certificate);

}  // namespace velkor
