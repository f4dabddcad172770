// tests/platform/desktop/FolderCase.h: a test with a folder of its own.
#pragma once

#include <gmock/gmock.h>

#include <QByteArray>
#include <QDir>
#include <QFile>
#include <QTemporaryDir>
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

  QTemporaryDir folder_;
};

}  // namespace velkor
