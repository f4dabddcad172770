// hosts/yearplan/CalendarPlace.h: what the window and the commands share about one calendar file.
#pragma once

#include <string>
#include <string_view>

#include "platform/LocaleApi.h"
#include "platform/desktop/DesktopSystem.h"

namespace velkor {

/// The environment of a planner of one calendar: "TMP" is a folder of this calendar's own below
/// the private cache folder, so that two calendars never share a cache file.
class CalendarEnvironment : public DesktopEnvironment {
 public:
  /// @param calendar  the file; empty for none, whose folder is the private cache folder itself
  explicit CalendarEnvironment(const std::string& calendar);

  /// Makes the folder when it is absent. Throws as PrivateCacheFolder does.
  std::string Variable(std::string_view name) override;

 private:
  std::string folder_;
};

/// The user of this process, by name.
std::string LoginName();

/// A text as it comes back from a cache file, which is kept in the user's code page.
std::string AsCached(LocaleApi& locale, std::string_view text);

}  // namespace velkor
