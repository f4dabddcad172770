// tests/calendar/dav/RunningServer.h: a real calendar server that runs for as long as this lives.
#pragma once

#include <QCoreApplication>
#include <QProcess>
#include <QProcessEnvironment>
#include <QTemporaryDir>
#include <map>
#include <string>

#include "calendar/net/Http.h"

namespace velkor {

/// A server of scripts/servers: the one that VELKOR_SERVER names, Radicale without it.
class RunningServer {
 public:
  RunningServer() {
    for (const QByteArray& line :
         Run("start", {QString::number(QCoreApplication::applicationPid())}).split('\n')) {
      const auto equals = line.indexOf('=');
      if (equals > 0) facts_[line.left(equals).toStdString()] = line.mid(equals + 1).toStdString();
    }
  }
  ~RunningServer() { Run("stop", {}); }
  RunningServer(const RunningServer&) = delete;
  RunningServer& operator=(const RunningServer&) = delete;

  HttpAccess Access(const std::string& url = {}) const {
    return {.url = url, .user = Fact("user"), .password = Fact("password")};
  }
  /// What the script prints: url, user, password, reader, readerPassword.
  std::string Fact(const std::string& name) const {
    const auto found = facts_.find(name);
    return found == facts_.end() ? std::string() : found->second;
  }

 private:
  QByteArray Run(const QString& verb, const QStringList& more) const {
    const QString name =
        QProcessEnvironment::systemEnvironment().value("VELKOR_SERVER", "radicale");
    QProcess script;
    script.setProcessChannelMode(QProcess::ForwardedErrorChannel);
    script.start(VELKOR_SOURCE "/scripts/servers/" + name + ".sh",
                 QStringList{verb, folder_.path()} + more);
    script.waitForFinished(60'000);
    return script.readAllStandardOutput();
  }

  QTemporaryDir folder_;
  std::map<std::string, std::string> facts_;
};

}  // namespace velkor
