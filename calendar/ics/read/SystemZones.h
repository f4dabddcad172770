// calendar/ics/read/SystemZones.h: the time zones that the system knows, by every name they go by.
#pragma once

#include <QTimeZone>
#include <map>
#include <optional>
#include <string>
#include <string_view>

namespace velkor {

/// Reads nothing until a name is looked for, and the whole table only for one in another case.
class SystemZones {
 public:
  /// The zone with this name of the system's zone table (Europe/Berlin, US/Eastern, GMT) or of
  /// Windows (W. Europe Standard Time), in any case, also behind a prefix that ends in a slash
  /// (/example.org/2007/Asia/Tokyo).
  std::optional<QTimeZone> Find(std::string_view name);

 private:
  std::optional<QTimeZone> FindInAnyCase(std::string_view name);
  void ReadTable();

  /// Names of the table by what they are in upper case, those of Windows too; empty until read.
  std::map<std::string, std::string> table_;
};

}  // namespace velkor
