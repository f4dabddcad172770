// tests/servers/OtherClient.cpp: runs vdirsyncer and edits its files.
#include "tests/servers/OtherClient.h"

#include <gtest/gtest.h>

#include <QDir>
#include <QFile>
#include <QProcess>
#include <QRegularExpression>
#include <QSaveFile>

#include "calendar/ics/read/IcsAppointments.h"
#include "calendar/mirror/ObjectText.h"

namespace velkor {
namespace {

QByteArray BytesOf(const QString& path) {
  QFile file(path);
  return file.open(QIODevice::ReadOnly) ? file.readAll() : QByteArray();
}

void Write(const QString& path, const QByteArray& bytes) {
  QSaveFile file(path);
  EXPECT_TRUE(file.open(QIODevice::WriteOnly) && file.write(bytes) == bytes.size() &&
              file.commit());
}

}  // namespace

OtherClient::OtherClient(const HttpAccess& calendar, const std::string& folder) : folder_(folder) {
  const QDir at(QString::fromStdString(folder));
  at.mkpath("calendar");
  Write(at.filePath("config"),
        QString(R"([general]
status_path = "%1/status"
[pair shared]
a = "files"
b = "server"
collections = null
[storage files]
type = "filesystem"
path = "%1/calendar"
fileext = ".ics"
[storage server]
type = "caldav"
url = "%2"
username = "%3"
password = "%4"
)")
            .arg(at.path(), QString::fromStdString(calendar.url),
                 QString::fromStdString(calendar.user), QString::fromStdString(calendar.password))
            .toUtf8());
  QProcess discover;
  discover.start("vdirsyncer", {"-c", at.filePath("config"), "discover"});
  discover.write("y\ny\n");
  discover.closeWriteChannel();
  EXPECT_TRUE(discover.waitForFinished(60'000) && discover.exitCode() == 0)
      << discover.readAllStandardError().toStdString();
}

std::string OtherClient::Synchronise() {
  QProcess process;
  process.setProcessChannelMode(QProcess::MergedChannels);
  process.start("vdirsyncer", {"-c", QString::fromStdString(folder_ + "/config"), "sync"});
  const bool ended = process.waitForFinished(120'000);
  return ended && process.exitCode() == 0 ? std::string() : process.readAll().toStdString();
}

std::string OtherClient::FileOf(const std::string& name) const {
  const QDir files(QString::fromStdString(folder_ + "/calendar"));
  for (const QString& file : files.entryList({"*.ics"}, QDir::Files)) {
    const QByteArray bytes = BytesOf(files.filePath(file));
    if (EntryIdOfUid(UidOfObject(bytes.toStdString())) == name) {
      return files.filePath(file).toStdString();
    }
  }
  return {};
}

CalendarState OtherClient::State() const {
  CalendarState state;
  const QDir files(QString::fromStdString(folder_ + "/calendar"));
  for (const QString& file : files.entryList({"*.ics"}, QDir::Files)) {
    const std::string bytes = BytesOf(files.filePath(file)).toStdString();
    state[EntryIdOfUid(UidOfObject(bytes))] = StateOfObject(bytes);
  }
  return state;
}

void OtherClient::Describe(const std::string& name, const std::string& text) {
  const QString path = QString::fromStdString(FileOf(name));
  ASSERT_FALSE(path.isEmpty()) << name;
  static const QRegularExpression described("DESCRIPTION[:;][^\n]*\n([ \t][^\n]*\n)*");
  QString bytes = QString::fromUtf8(BytesOf(path)).remove(described);
  bytes.replace("END:VEVENT", "DESCRIPTION:" + QString::fromStdString(text) + "\r\nEND:VEVENT");
  Write(path, bytes.toUtf8());
}

void OtherClient::Delete(const std::string& name) {
  EXPECT_TRUE(QFile::remove(QString::fromStdString(FileOf(name)))) << name;
}

}  // namespace velkor
