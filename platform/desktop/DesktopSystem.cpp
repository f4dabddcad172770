// platform/desktop/DesktopSystem.cpp: local time, and folders by the XDG base directory rules.
#include "platform/desktop/DesktopSystem.h"

#include <pwd.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cerrno>
#include <cstdlib>
#include <ctime>
#include <filesystem>
#include <system_error>

#include "platform/desktop/DesktopFiles.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr const char* ProductFolder = "outlookvelkor";
constexpr const char* CacheHome = "XDG_CACHE_HOME";
constexpr const char* ConfigurationHome = "XDG_CONFIG_HOME";
constexpr const char* DataHome = "XDG_DATA_HOME";

std::string Value(const char* name) {
  const char* const value = std::getenv(name);
  return value == nullptr ? std::string() : value;
}

std::string HomeFolder() {
  std::string home = Value("HOME");
  if (!home.empty()) return home;
  const passwd* const user = ::getpwuid(::geteuid());
  return user == nullptr ? std::string("/") : user->pw_dir;
}

bool NamesAFolder(const char* variable) {
  return std::filesystem::path(Value(variable)).is_absolute();
}

/// A folder that a variable names by an absolute path, else one under the home folder.
std::filesystem::path BaseFolder(const char* variable, const char* underHome) {
  return NamesAFolder(variable) ? std::filesystem::path(Value(variable))
                                : std::filesystem::path(HomeFolder()) / underHome;
}

/// A folder that is made when it is absent, closed to other users.
/// @param what  what messages call it
std::string PrivateFolder(const std::filesystem::path& folder, const std::string& what) {
  const auto refuse = [&](long number, const std::string& reason) {
    throw Error(number, "Cannot use the " + what + " folder " + folder.string() + ": " + reason);
  };
  const auto refuseFor = [&](int code) {
    refuse(FileErrorOf(code), std::generic_category().message(code));
  };
  std::error_code error;
  std::filesystem::create_directories(folder.parent_path(), error);
  if (error) refuse(FileErrorOf(error.value()), error.message());
  if (::mkdir(folder.c_str(), 0700) != 0 && errno != EEXIST) refuseFor(errno);
  struct stat status {};
  if (::lstat(folder.c_str(), &status) != 0) refuseFor(errno);
  if (!S_ISDIR(status.st_mode)) refuse(errors::PathNotFound, "it is no folder");
  if (status.st_uid != ::geteuid()) refuse(errors::BadFileMode, "it belongs to another user");
  if ((status.st_mode & 0777) != 0700 && ::chmod(folder.c_str(), 0700) != 0) {
    refuse(errors::BadFileMode, "it cannot be closed to other users");
  }
  return folder.string();
}

}  // namespace

Date DesktopClock::Now() {
  const std::time_t now = std::time(nullptr);
  std::tm local{};
  ::localtime_r(&now, &local);
  return Date::FromFields({local.tm_year + 1900, local.tm_mon + 1, local.tm_mday, local.tm_hour,
                           local.tm_min, local.tm_sec});
}

std::string DesktopEnvironment::Variable(std::string_view name) {
  if (name == "TMP") return PrivateCacheFolder();
  if (name == "USERNAME") return LoginName();
  return Value(std::string(name).c_str());
}

std::string LoginName() {
  const passwd* const user = ::getpwuid(::geteuid());
  return user != nullptr && user->pw_name != nullptr ? user->pw_name : "user";
}

std::string PrivateCacheFolder() {
  return PrivateFolder(BaseFolder(CacheHome, ".cache") / ProductFolder, "cache");
}

std::string PrivateDataFolder() {
  return PrivateFolder(BaseFolder(DataHome, ".local/share") / ProductFolder, "data");
}

std::string CacheHomeVariable() {
  return NamesAFolder(CacheHome) ? CacheHome : "HOME";
}

std::string ConfigurationHomeVariable() {
  return NamesAFolder(ConfigurationHome) ? ConfigurationHome : "HOME";
}

std::string ConfigurationFile(std::string_view name) {
  return (BaseFolder(ConfigurationHome, ".config") / ProductFolder / name).string();
}

}  // namespace velkor
