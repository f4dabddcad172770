// calendar/ics/file/FileAttributes.cpp: permissions and extended attributes from one file to
// another.
#include "calendar/ics/file/FileAttributes.h"

#include <sys/stat.h>
#include <sys/xattr.h>
#include <unistd.h>

#include <cerrno>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velkor {
namespace {

bool IsForTheSystem(std::string_view name) {
  return name.starts_with("security.") || name.starts_with("trusted.");
}

/// What a call that fills a buffer gives; none when it fails. @param call  (buffer, size)
template <typename Call>
std::optional<std::string> Filled(const Call& call) {
  // The system's own bound on a value and on a list of names (xattr(7)).
  std::string buffer(std::size_t{1} << 16, '\0');
  const ssize_t size = call(buffer.data(), buffer.size());
  if (size < 0) return std::nullopt;
  buffer.resize(static_cast<std::size_t>(size));
  return buffer;
}

using Attributes = std::map<std::string, std::string>;

/// Also the access control list, which goes by the name of system.posix_acl_access (acl(5)).
/// None when one of them cannot be read; a file system without attributes has no one.
std::optional<Attributes> AttributesOf(int file) {
  const auto names = Filled([&](char* to, std::size_t size) { return flistxattr(file, to, size); });
  Attributes attributes;
  if (!names) return errno == ENOTSUP ? std::optional(attributes) : std::nullopt;
  for (std::string_view rest = *names; !rest.empty();) {
    const std::string name(rest.substr(0, rest.find('\0')));
    rest.remove_prefix(name.size() + 1);
    auto value =
        Filled([&](char* to, std::size_t size) { return fgetxattr(file, name.c_str(), to, size); });
    if (value) {
      attributes.emplace(name, std::move(*value));
    } else if (!IsForTheSystem(name)) {
      return std::nullopt;
    }
  }
  return attributes;
}

}  // namespace

bool CopyAttributes(int from, int to) {
  constexpr mode_t Permissions = 07777;
  struct stat old {};
  if (::fstat(from, &old) != 0) return false;
  // Only the superuser may give a file away; a group of our own can be kept. Without the owner the
  // rest is kept all the same, so that those who may read the one may read the other.
  const bool hasOwner = ::fchown(to, old.st_uid, old.st_gid) == 0;
  const bool hasGroup = hasOwner || ::fchown(to, static_cast<uid_t>(-1), old.st_gid) == 0;
  const auto wanted = AttributesOf(from);
  const auto inherited = AttributesOf(to);
  if (!hasGroup || !wanted || !inherited) return false;
  for (const auto& [name, value] : *inherited) {
    if (!wanted->contains(name) && ::fremovexattr(to, name.c_str()) != 0 && !IsForTheSystem(name)) {
      return false;
    }
  }
  // The list comes after the permissions: with one, those of the group are the list's mask.
  if (::fchmod(to, old.st_mode & Permissions) != 0) return false;
  for (const auto& [name, value] : *wanted) {
    const auto has = inherited->find(name);
    if (has != inherited->end() && has->second == value && IsForTheSystem(name)) continue;
    if (::fsetxattr(to, name.c_str(), value.data(), value.size(), 0) != 0 &&
        !IsForTheSystem(name)) {
      return false;
    }
  }
  return hasOwner;
}

}  // namespace velkor
