// calendar/set/CalendarSet.h: a set of calendars that are shown as one, and the file that keeps it.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "values/Colour.h"

namespace velkor {

enum class SourceKind { File, Address, Server };

/// One calendar of a set.
struct SetSource {
  /// 8 lower-case hexadecimal digits, unique in the set; AddSource gives it.
  std::string id = {};
  SourceKind kind = SourceKind::File;
  /// File: the absolute path. Address: a URL (webcal, http, https). Server: the URL of the
  /// collection.
  std::string location = {};
  /// Server: the account's user. Address: optional.
  std::string user = {};
  /// For people; empty: the calendar's own.
  std::string name = {};
  std::optional<Colour> colour = {};
  bool shown = true;
  /// Its days are days off: shaded, without bars.
  bool background = false;
  /// Fields of its file that this version does not know, as a JSON object; empty for none.
  std::string more = {};

  friend bool operator==(const SetSource&, const SetSource&) = default;
};

enum class BarColours { Category, Calendar };

struct CalendarSet {
  /// Of the .yearplan file, absolute.
  std::string path;
  std::vector<SetSource> sources;
  /// The identifier of the source where new appointments and the colour record go; empty, or of no
  /// source: the first that can be written.
  std::string defaultSource;
  BarColours barColours = BarColours::Category;
  /// As that of a source.
  std::string more = {};

  friend bool operator==(const CalendarSet&, const CalendarSet&) = default;
};

/// Ends in .yearplan, in letters of any case.
bool IsSetPath(std::string_view path);

/// Null when the set has none with this identifier.
const SetSource* FindSource(const CalendarSet& set, std::string_view id);
SetSource* FindSource(CalendarSet& set, std::string_view id);
/// The source of the same place (kind, location, user); null when the set has none.
const SetSource* SourceOfPlace(const CalendarSet& set, const SetSource& place);
/// Adds a source at the end and gives it its identifier, the same for the same place.
/// @return the identifier; that of the source which is there already when the place is
std::string AddSource(CalendarSet& set, SetSource source);
/// Gives the sources without an identifier theirs.
void GiveMissingIds(CalendarSet& set);

/// Throws Error that names the file and says what is wrong and where (line, or field): not there,
/// not to be read, no JSON, made by a later version, a field of the wrong kind, one identifier
/// twice.
CalendarSet LoadSet(const std::string& path);

/// Writes the whole set to its path in one step: whoever looks, whenever the program is stopped,
/// finds the old file or the new one. Throws Error that names the file. To change a set that is
/// open somewhere, use UpdateSet.
void SaveSet(const CalendarSet& set);

/// Changes a set's file: `edit` gets the set as it is on the disk now, so that two windows on one
/// set lose nothing of each other. Nobody else of us changes it meanwhile. A file that `edit`
/// leaves as it is is not written. Waits three seconds at most for others. Throws as LoadSet and
/// SaveSet do, and what `edit` throws; the file is then as it was.
/// @return the set as the file has it now
CalendarSet UpdateSet(const std::string& path, const std::function<void(CalendarSet&)>& edit);

/// The set of these sources that nobody has saved: in the folder for private data, the same file
/// for the same places in whatever order, with all that was set in it before. Identifiers are given
/// as AddSource does. Throws as LoadSet and SaveSet do.
/// @param dataFolder  as PrivateDataFolder gives it
CalendarSet SetOf(const std::vector<SetSource>& sources, const std::string& dataFolder);
/// Whether a set's file is one that SetOf made.
bool IsUnsavedSet(std::string_view path, std::string_view dataFolder);

}  // namespace velkor
