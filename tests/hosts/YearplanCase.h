// tests/hosts/YearplanCase.h: the program run in a folder of its own.
#pragma once

#include <QDirIterator>
#include <QProcess>
#include <string>

#include "tests/platform/desktop/FolderCase.h"

namespace velkor {

struct Outcome {
  int code = -1;
  std::string out;
  std::string messages;
};

class Yearplan : public FolderCase {
 protected:
  void Start(QProcess& process, const QStringList& arguments) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CACHE_HOME", cacheHome_);
    environment.insert("XDG_CONFIG_HOME", File("config"));
    environment.insert("XDG_DATA_HOME", File("data"));
    // No store for passwords but those that a test makes.
    environment.insert("DBUS_SESSION_BUS_ADDRESS", "unix:path=/no/such/bus");
    environment.insert("HOME", home_);
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder_.path());
    process.start(YEARPLAN, arguments);
  }
  /// @param input  what stands on standard input
  Outcome Run(const QStringList& arguments, const QByteArray& input = {}) const {
    QProcess process;
    Start(process, arguments);
    process.write(input);
    process.closeWriteChannel();
    if (!process.waitForFinished(60'000)) return {};
    const bool normal = process.exitStatus() == QProcess::NormalExit;
    return {normal ? process.exitCode() : -1, process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
  }

  QString cacheHome_ = File("cache");
  QString home_ = folder_.path();

  /// The one cache file, work files not counted; empty when there is none.
  QString CacheFile() const {
    QDirIterator files(File("cache/outlookvelkor"), {"*.tmp"}, QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString path = files.next();
      if (!files.fileName().startsWith('~')) return path;
    }
    return {};
  }
};

}  // namespace velkor
