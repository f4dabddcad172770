// calendar/ics/read/SystemZones.cpp: names to zones, by the files of the system's zone table and by
// Qt.
#include "calendar/ics/read/SystemZones.h"

#include <algorithm>
#include <array>
#include <filesystem>
#include <fstream>

#include "values/Text.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;

/// Where Qt reads zones (QTimeZone: its list of identifiers leaves the aliases out, but a zone is
/// made of each file).
constexpr std::array<const char*, 2> TableFolders{"/usr/share/zoneinfo", "/usr/lib/zoneinfo"};
/// The same zones once more: in the second folder with leap seconds, which no other clock counts.
constexpr std::array<std::string_view, 2> OtherTables{"posix/", "right/"};

bool IsZoneFile(const fs::path& path) {
  std::error_code code;
  if (!fs::is_regular_file(path, code)) return false;
  std::array<char, 4> magic{};
  std::ifstream(path, std::ios::binary).read(magic.data(), magic.size());
  return std::string_view(magic.data(), magic.size()) == "TZif";
}

bool IsInTable(const std::string& name) {
  // Nothing that leads out of the folder.
  const auto plain = [](char c) {
    return IsLetter(c) || IsDigit(c) || c == '/' || c == '_' || c == '-' || c == '+';
  };
  if (name.front() == '/' || !std::all_of(name.begin(), name.end(), plain)) return false;
  const auto begins = [&](std::string_view prefix) { return name.starts_with(prefix); };
  if (std::any_of(OtherTables.begin(), OtherTables.end(), begins)) return false;
  return std::any_of(TableFolders.begin(), TableFolders.end(),
                     [&](const char* folder) { return IsZoneFile(fs::path(folder) / name); });
}

/// The zone with exactly this name.
std::optional<QTimeZone> Named(const std::string& name) {
  const QByteArray bytes = QByteArray::fromStdString(name);
  for (const QByteArray& id : {bytes, QTimeZone::windowsIdToDefaultIanaId(bytes)}) {
    // A zone object would also take an unknown name for a POSIX rule.
    if (id.isEmpty()) continue;
    if (!IsInTable(id.toStdString()) && !QTimeZone::isTimeZoneIdAvailable(id)) continue;
    if (QTimeZone zone(id); zone.isValid()) return zone;
  }
  return std::nullopt;
}

std::string UpperCase(std::string_view text) {
  std::string upper(text);
  std::transform(upper.begin(), upper.end(), upper.begin(), Upper);
  return upper;
}

}  // namespace

std::optional<QTimeZone> SystemZones::Find(std::string_view name) {
  constexpr std::size_t LongestName = 200;
  if (name.size() > LongestName) return std::nullopt;
  // Every tail of a prefixed name, the longest first.
  while (!name.empty()) {
    if (auto zone = Named(std::string(name))) return zone;
    if (auto zone = FindInAnyCase(name)) return zone;
    const std::size_t slash = name.find('/');
    name.remove_prefix(slash == std::string_view::npos ? name.size() : slash + 1);
  }
  return std::nullopt;
}

std::optional<QTimeZone> SystemZones::FindInAnyCase(std::string_view name) {
  if (table_.empty()) ReadTable();
  const auto known = table_.find(UpperCase(name));
  return known == table_.end() ? std::nullopt : Named(known->second);
}

void SystemZones::ReadTable() {
  for (const char* folder : TableFolders) {
    std::error_code code;
    fs::recursive_directory_iterator file(folder, code);
    for (; !code && file != fs::recursive_directory_iterator(); file.increment(code)) {
      const std::string name = file->path().lexically_relative(folder).string();
      if (std::find(OtherTables.begin(), OtherTables.end(), name + "/") != OtherTables.end()) {
        file.disable_recursion_pending();
      } else {
        table_.try_emplace(UpperCase(name), name);
      }
    }
  }
  for (const QByteArray& id : QTimeZone::availableTimeZoneIds()) {
    for (const QByteArray& other : {id, QTimeZone::ianaIdToWindowsId(id)}) {
      const std::string name = other.toStdString();
      if (!name.empty()) table_.try_emplace(UpperCase(name), name);
    }
  }
}

}  // namespace velkor
