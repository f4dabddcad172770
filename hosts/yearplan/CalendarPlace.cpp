// hosts/yearplan/CalendarPlace.cpp: a calendar's cache folder, and the user's name.
#include "hosts/yearplan/CalendarPlace.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <QFileInfo>
#include <cerrno>
#include <system_error>

#include "calendar/ShortHash.h"
#include "platform/desktop/DesktopFiles.h"
#include "support/values/Error.h"

namespace velkor {
namespace {

/// The file's name for people, and a hash of its whole path.
std::string FolderOf(const std::string& calendar) {
  constexpr int LongestName = 40;
  constexpr std::size_t HashLength = 16;
  const QFileInfo file(QString::fromStdString(calendar));
  const QString place =
      file.canonicalFilePath().isEmpty() ? file.absoluteFilePath() : file.canonicalFilePath();
  const std::string hash = ShortHash(place.toStdString()).substr(0, HashLength);
  return file.completeBaseName().left(LongestName).toStdString() + " " + hash;
}

}  // namespace

CalendarEnvironment::CalendarEnvironment(const std::string& calendar)
    : folder_(calendar.empty() ? std::string() : FolderOf(calendar)) {}

std::string CalendarEnvironment::Variable(std::string_view name) {
  if (name != "TMP" || folder_.empty()) return DesktopEnvironment::Variable(name);
  const std::string folder = PrivateCacheFolder() + "/" + folder_;
  if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) {
    const int code = errno;
    throw Error(FileErrorOf(code), "Cannot make the cache folder " + folder + ": " +
                                       std::generic_category().message(code));
  }
  return folder;
}

std::string LoginName() {
  const passwd* user = getpwuid(geteuid());
  return user != nullptr && user->pw_name != nullptr ? user->pw_name : "user";
}

std::string AsCached(LocaleApi& locale, std::string_view text) {
  const CodePage page = locale.AnsiCodePage();
  return locale.FromCodePage(locale.ToCodePage(text, page), page);
}

}  // namespace velkor
