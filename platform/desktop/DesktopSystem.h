// platform/desktop/DesktopSystem.h: the clock, the environment and the user's own folders.
#pragma once

#include "platform/System.h"

namespace velkor {

class DesktopClock : public Clock {
 public:
  Date Now() override;
};

class DesktopEnvironment : public Environment {
 public:
  /// "TMP" answers PrivateCacheFolder(), "USERNAME" LoginName().
  std::string Variable(std::string_view name) override;
  char PathSeparator() const override { return '/'; }
};

/// The product's folder under the user's cache home ($XDG_CACHE_HOME or ~/.cache), made when it is
/// absent, closed to other users. Throws Error when it is not the user's own folder or cannot be
/// made.
std::string PrivateCacheFolder();

/// The same under the user's data home ($XDG_DATA_HOME or ~/.local/share), for what cannot be made
/// anew: mirrors, copies of addresses, sets that nobody saved.
std::string PrivateDataFolder();

/// A file of the product under the user's configuration home ($XDG_CONFIG_HOME or ~/.config).
std::string ConfigurationFile(std::string_view name);

/// The variables that decide where those two folders lie now: the ones that are named above, or
/// HOME where they are not set.
std::string CacheHomeVariable();
std::string ConfigurationHomeVariable();

/// The user of this process, by name.
std::string LoginName();

}  // namespace velkor
