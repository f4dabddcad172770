// hosts/yearplan/window/RecentCalendars.cpp: the recent paths as numbered values of one section.
#include "hosts/yearplan/window/RecentCalendars.h"

#include <algorithm>

#include "hosts/yearplan/window/StoredProperties.h"

namespace velkor {
namespace {

constexpr std::string_view Section = "Recent";

}  // namespace

std::vector<std::string> RecentCalendars::Paths() const {
  std::vector<std::string> paths;
  for (std::size_t i = 1; i <= Most; ++i) {
    std::string path = settings_.Get(SettingsName, Section, std::to_string(i), "");
    if (path.empty()) break;
    paths.push_back(std::move(path));
  }
  return paths;
}

void RecentCalendars::Add(const std::string& path) {
  std::vector<std::string> paths = Paths();
  if (!paths.empty() && paths.front() == path) return;
  std::erase(paths, path);
  paths.insert(paths.begin(), path);
  if (paths.size() > Most) paths.resize(Most);
  Store(paths);
}

void RecentCalendars::Store(const std::vector<std::string>& paths) {
  for (std::size_t i = 1; i <= Most; ++i) {
    settings_.Save(SettingsName, Section, std::to_string(i),
                   i <= paths.size() ? paths[i - 1] : std::string());
  }
}

}  // namespace velkor
