// platform/desktop/DesktopSettings.cpp: keys of the INI file, and saving one under a lock.
#include "platform/desktop/DesktopSettings.h"

#include <fcntl.h>
#include <sys/stat.h>

#include <QDir>
#include <QFileInfo>
#include <QLockFile>
#include <QSettings>

#include "platform/desktop/DesktopSystem.h"
#include "platform/desktop/QtText.h"
#include "platform/posix/OpenFile.h"
#include "values/Error.h"

namespace velkor {
namespace {

/// How long a process waits for another one's Save, in milliseconds.
constexpr int Patience = 10000;

/// A slash would begin a group of its own, and an empty name would vanish.
QString Component(std::string_view name) {
  if (name.empty()) return QStringLiteral("%");
  QString text = ToQt(name);
  text.replace(u'%', QLatin1String("%25"));
  text.replace(u'/', QLatin1String("%2F"));
  text.replace(u'\\', QLatin1String("%5C"));
  return text;
}

/// Makes what is absent of a file and its folder, and closes the file to other users.
/// @return false when the folder cannot be made
bool MakeForOwner(const QString& path) {
  const QFileInfo file(path);
  if (!QDir().mkpath(QFileInfo(file.path()).path())) return false;
  const bool hasFolder =
      ::mkdir(QFile::encodeName(file.path()).constData(), 0700) == 0 || file.dir().exists();
  // The file that replaces it has the same mode.
  const OpenFile opened(
      ::open(QFile::encodeName(path).constData(), O_RDONLY | O_CREAT | O_CLOEXEC, 0600));
  ::fchmod(opened.Descriptor(), 0600);
  return hasFolder;
}

QString PathOf(std::string_view application, std::string_view section, std::string_view key) {
  return Component(application) + u'/' + Component(section) + u'/' + Component(key);
}

}  // namespace

DesktopSettings::DesktopSettings(std::string path)
    : path_(path.empty() ? ConfigurationFile("settings.ini") : std::move(path)) {}

std::string DesktopSettings::Get(std::string_view application, std::string_view section,
                                 std::string_view key, std::string_view fallback) {
  const QSettings file(QString::fromStdString(path_), QSettings::IniFormat);
  const QString path = PathOf(application, section, key);
  return file.contains(path) ? file.value(path).toString().toStdString() : std::string(fallback);
}

void DesktopSettings::Save(std::string_view application, std::string_view section,
                           std::string_view key, std::string_view value) {
  const QString path = QString::fromStdString(path_);
  const auto fail = [&](const char* reason) {
    throw Error(errors::DeviceInputOutput, "Cannot write the settings " + path_ + ": " + reason);
  };
  if (!MakeForOwner(path)) fail("its folder cannot be made");
  QLockFile lock(path + QLatin1String(".saving"));
  if (!lock.tryLock(Patience))
    fail(lock.error() == QLockFile::LockFailedError ? "another program holds it"
                                                    : "its folder cannot be written");
  QSettings file(path, QSettings::IniFormat);
  // What another process saved meanwhile is read before this key is merged in.
  file.sync();
  file.setValue(PathOf(application, section, key), ToQt(value));
  file.sync();
  if (file.status() != QSettings::NoError) fail("the file cannot be replaced");
}

}  // namespace velkor
