// tests/platform/desktop/FolderCase.h: a test with a folder of its own.
#pragma once

#include <gmock/gmock.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QProcess>
#include <QStandardPaths>
#include <QTemporaryDir>
#include <optional>
#include <string>

namespace velkor {

/// Names count from the folder unless they are absolute.
class FolderCase : public testing::Test {
 protected:
  QString File(const QString& name) const { return QDir(folder_.path()).filePath(name); }
  std::string Path(const QString& name) const { return File(name).toStdString(); }

  void Write(const QString& name, const QByteArray& bytes) const {
    QFile file(File(name));
    ASSERT_TRUE(file.open(QIODevice::WriteOnly));
    file.write(bytes);
  }
  /// "none" for a file that is not there.
  QByteArray Bytes(const QString& name) const {
    QFile file(File(name));
    return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray("none");
  }

  /// What a program of the machine prints about files of the folder; none when it is not installed.
  std::optional<std::string> Output(const char* program, const QStringList& arguments) const {
    if (QStandardPaths::findExecutable(program).isEmpty()) return std::nullopt;
    QProcess process;
    process.setWorkingDirectory(folder_.path());
    process.start(program, arguments);
    if (!process.waitForFinished() || process.exitCode() != 0) {
      ADD_FAILURE() << program << ": " << process.readAllStandardError().toStdString();
    }
    return process.readAllStandardOutput().toStdString();
  }

  QTemporaryDir folder_;
};

}  // namespace velkor
