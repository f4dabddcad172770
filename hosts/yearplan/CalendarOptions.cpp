// hosts/yearplan/CalendarOptions.cpp: the user's folder, and what counts as a colour record.
#include "hosts/yearplan/CalendarOptions.h"

#include "model/ColourRecord.h"
#include "platform/desktop/DesktopSystem.h"

namespace velkor {

SetCalendarOptions OptionsFor(const std::string& calendar) {
  SetCalendarOptions options;
  if (IsSetPath(calendar)) options.dataFolder = PrivateDataFolder();
  options.isRecord = [](std::string_view subject) { return colour_record::IsSubject(subject); };
  return options;
}

}  // namespace velkor
