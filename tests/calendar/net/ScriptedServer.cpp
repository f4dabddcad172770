// tests/calendar/net/ScriptedServer.cpp: a thread that accepts, reads a request and plays its
// answer.
#include "tests/calendar/net/ScriptedServer.h"

#include <QFile>
#include <QSslCertificate>
#include <QSslConfiguration>
#include <QSslKey>
#include <QSslSocket>
#include <QTcpServer>
#include <algorithm>
#include <condition_variable>
#include <mutex>
#include <thread>

namespace velkor {
namespace {

using std::chrono::milliseconds;

constexpr int Blink = 20;
constexpr int LongestWait = 10'000;

QByteArray PemOf(const std::string& name) {
  QFile file(QString::fromStdString(TEST_DATA "certificates/" + name));
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

/// Gives each connection a socket that may speak TLS.
class Listener : public QTcpServer {
 public:
  std::unique_ptr<QSslSocket> Take() { return std::move(socket_); }

 protected:
  void incomingConnection(qintptr handle) override {
    socket_ = std::make_unique<QSslSocket>();
    socket_->setSocketDescriptor(handle);
    // Only what is pending is told to who waits for it.
    addPendingConnection(new QTcpSocket(this));
    delete nextPendingConnection();
  }

 private:
  std::unique_ptr<QSslSocket> socket_;
};

bool ReadLine(QSslSocket& socket, QByteArray& line) {
  while (!socket.canReadLine()) {
    if (!socket.waitForReadyRead(LongestWait)) return false;
  }
  line = socket.readLine().trimmed();
  return true;
}

std::optional<ScriptedRequest> ReadRequest(QSslSocket& socket) {
  // Who begins to speak TLS where none is spoken sends no line.
  constexpr char Handshake = 0x16;
  if (!socket.waitForReadyRead(LongestWait) || socket.peek(1)[0] == Handshake) return std::nullopt;
  QByteArray line;
  if (!ReadLine(socket, line)) return std::nullopt;
  const QList<QByteArray> words = line.split(' ');
  if (words.size() < 3) return std::nullopt;
  ScriptedRequest request{words[0].toStdString(), words[1].toStdString(), {}, {}};
  while (ReadLine(socket, line) && !line.isEmpty()) {
    const qsizetype colon = line.indexOf(':');
    request.headers[line.left(colon).toLower().toStdString()] =
        line.mid(colon + 1).trimmed().toStdString();
  }
  const auto length = request.headers.find("content-length");
  const qsizetype size =
      length == request.headers.end() ? 0 : QByteArray::fromStdString(length->second).toLongLong();
  QByteArray body;
  while (body.size() < size) {
    if (socket.bytesAvailable() == 0 && !socket.waitForReadyRead(LongestWait)) return std::nullopt;
    body += socket.read(size - body.size());
  }
  request.body = body.toStdString();
  return request;
}

std::string HeadOf(const ScriptedAnswer& answer) {
  std::string head = "HTTP/1.1 " + std::to_string(answer.status) + " Scripted\r\n";
  for (const auto& [name, value] : answer.headers) head += name + ": " + value + "\r\n";
  if (answer.tellsLength) head += "Content-Length: " + std::to_string(answer.body.size()) + "\r\n";
  return head + "Connection: close\r\n\r\n";
}

}  // namespace

struct ScriptedServer::State {
  ServerScript script;
  std::string certificate;
  quint16 port = 0;
  std::vector<ScriptedRequest> requests;
  mutable std::mutex lock;
  std::condition_variable changed;
  bool ended = false;
  std::thread thread;

  /// False when the server's end came first.
  bool Sleep(milliseconds time) {
    std::unique_lock held(lock);
    return !changed.wait_for(held, time, [&] { return ended; });
  }
  bool IsEnded() const {
    const std::lock_guard held(lock);
    return ended;
  }
  bool Write(QSslSocket& socket, const std::string& bytes) const {
    socket.write(bytes.data(), static_cast<qint64>(bytes.size()));
    while (socket.bytesToWrite() > 0 || socket.encryptedBytesToWrite() > 0) {
      if (socket.state() != QAbstractSocket::ConnectedState || IsEnded()) return false;
      if (!socket.waitForBytesWritten(LongestWait)) return false;
    }
    return true;
  }
  void Play(QSslSocket& socket, const ScriptedAnswer& answer, bool hasBody) {
    if (!Sleep(answer.sleep) || !Write(socket, HeadOf(answer)) || !hasBody) return;
    const std::string body = answer.body.substr(0, answer.stopsAfter.value_or(answer.body.size()));
    if (answer.sleepBeforeByte == milliseconds(0)) {
      Write(socket, body);
      return;
    }
    for (const char byte : body) {
      if (!Sleep(answer.sleepBeforeByte) || !Write(socket, std::string(1, byte))) return;
    }
  }
  void Encrypt(QSslSocket& socket) const {
    const QByteArray pem = PemOf(certificate);
    socket.setLocalCertificate(QSslCertificate(pem));
    socket.setPrivateKey(QSslKey(pem, QSsl::Ec));
    socket.startServerEncryption();
    socket.waitForEncrypted(LongestWait);
  }
  void Answer(QSslSocket& socket) {
    if (!certificate.empty()) Encrypt(socket);
    const auto request = ReadRequest(socket);
    if (!request) return;
    {
      const std::lock_guard held(lock);
      requests.push_back(*request);
    }
    Play(socket, script(*request), request->method != "HEAD");
    socket.disconnectFromHost();
    if (socket.state() != QAbstractSocket::UnconnectedState)
      socket.waitForDisconnected(LongestWait);
  }
};

ScriptedServer::ScriptedServer(ServerScript script, const std::string& certificate)
    : state_(std::make_unique<State>()) {
  state_->script = std::move(script);
  state_->certificate = certificate;
  state_->thread = std::thread([this] { Serve(); });
  std::unique_lock held(state_->lock);
  state_->changed.wait(held, [&] { return state_->port != 0; });
}

ScriptedServer::~ScriptedServer() {
  {
    const std::lock_guard held(state_->lock);
    state_->ended = true;
  }
  state_->changed.notify_all();
  state_->thread.join();
}

void ScriptedServer::Serve() {
  Listener listener;
  listener.listen(QHostAddress::LocalHost);
  {
    const std::lock_guard held(state_->lock);
    state_->port = listener.serverPort();
  }
  state_->changed.notify_all();
  while (!state_->IsEnded()) {
    listener.waitForNewConnection(Blink);
    const auto socket = listener.Take();
    if (socket) state_->Answer(*socket);
  }
}

std::string ScriptedServer::Url(const std::string& path, const std::string& host) const {
  return (state_->certificate.empty() ? "http://" : "https://") + host + ":" +
         std::to_string(state_->port) + path;
}

std::vector<ScriptedRequest> ScriptedServer::Requests() const {
  const std::lock_guard held(state_->lock);
  return state_->requests;
}

ServerScript InTurn(std::vector<ScriptedAnswer> answers) {
  return [answers = std::move(answers), next = std::size_t{0}](const ScriptedRequest&) mutable {
    return answers[std::min(next++, answers.size() - 1)];
  };
}

std::string Sha256Of(const std::string& certificate) {
  return QSslCertificate(PemOf(certificate))
      .digest(QCryptographicHash::Sha256)
      .toHex()
      .toStdString();
}

}  // namespace velkor
