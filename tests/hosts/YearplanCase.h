// tests/hosts/YearplanCase.h: the program run in a folder of its own.
#pragma once

#include <gtest/gtest.h>

#include <QByteArray>
#include <QDirIterator>
#include <QFile>
#include <QProcess>
#include <QTemporaryDir>
#include <string>

namespace velkor {

struct Outcome {
  int code = -1;
  std::string out;
  std::string messages;
};

class Yearplan : public testing::Test {
 protected:
  QString Path(const QString& name) const { return folder_.filePath(name); }

  void Write(const QString& name, const QByteArray& bytes) const {
    QFile file(Path(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  QByteArray Bytes(const QString& path) const {
    QFile file(path);
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
  }

  void Start(QProcess& process, const QStringList& arguments) const {
    QProcessEnvironment environment = QProcessEnvironment::systemEnvironment();
    environment.insert("XDG_CACHE_HOME", Path("cache"));
    environment.insert("XDG_CONFIG_HOME", Path("config"));
    process.setProcessEnvironment(environment);
    process.setWorkingDirectory(folder_.path());
    process.start(YEARPLAN, arguments);
  }
  Outcome Run(const QStringList& arguments) const {
    QProcess process;
    Start(process, arguments);
    if (!process.waitForFinished(60'000)) return {};
    const bool normal = process.exitStatus() == QProcess::NormalExit;
    return {normal ? process.exitCode() : -1, process.readAllStandardOutput().toStdString(),
            process.readAllStandardError().toStdString()};
  }

  /// The one cache file, work files not counted; empty when there is none.
  QString CacheFile() const {
    QDirIterator files(Path("cache/outlookvelkor"), {"*.tmp"}, QDir::Files | QDir::Hidden,
                       QDirIterator::Subdirectories);
    while (files.hasNext()) {
      const QString path = files.next();
      if (!files.fileName().startsWith('~')) return path;
    }
    return {};
  }

 private:
  QTemporaryDir folder_;
};

}  // namespace velkor
