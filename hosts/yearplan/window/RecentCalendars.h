// hosts/yearplan/window/RecentCalendars.h: the calendars and sets that were opened last.
#pragma once

#include <cstddef>
#include <string>
#include <vector>

#include "platform/Settings.h"

namespace velkor {

/// A short list of paths in the user's settings, the newest first, each path once. Throws what the
/// settings throw.
class RecentCalendars {
 public:
  static constexpr std::size_t Most = 9;

  /// The settings outlive this.
  explicit RecentCalendars(Settings& settings) : settings_(settings) {}

  std::vector<std::string> Paths() const;
  /// Puts a path first; the oldest of too many is forgotten.
  void Add(const std::string& path);
  void Clear() { Store({}); }

 private:
  void Store(const std::vector<std::string>& paths);

  Settings& settings_;
};

}  // namespace velkor
