// calendar/set/SetPlace.h: one calendar of a planner as it lies on this machine, and which state of
// it is in memory.
#pragma once

#include <memory>
#include <optional>
#include <string>
#include <vector>

#include "calendar/PlaceWriter.h"
#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/read/Diagnostics.h"
#include "calendar/set/CalendarSet.h"
#include "values/Error.h"

namespace velkor {

/// Follows one place: tells news from what is known already.
class KnownState {
 public:
  KnownState() { Forget(); }

  /// Whether a look that finds this mark has to read the place. Trouble is over where it is the
  /// state in memory.
  bool IsNews(const PlaceMark& mark);
  /// The place was read in this state. With a fault what is in memory is older.
  void Take(const PlaceMark& mark, std::optional<Error> fault);
  /// A save of ours went into the place; `item` is compared in full where another program's change,
  /// perhaps of this very item, went in between.
  void NoteSave(const PlaceWriter::States& save, CalendarItem& item);
  /// It is to be read, whatever its state.
  void Forget();

  /// Another one whenever what is in memory is found anew; no two places ever have the same.
  using Revision = std::shared_ptr<const bool>;
  const Revision& Now() const { return revision_; }
  /// Why the last state could not be read; none when it was.
  const std::optional<Error>& Fault() const { return fault_; }

 private:
  void Turn() { revision_ = std::make_shared<const bool>(true); }

  Revision revision_;
  /// The state that is in memory; none when that is unknown.
  PlaceMark known_;
  /// The last state that could not be read; a place that is gone has no mark.
  std::optional<PlaceMark> failed_;
  std::optional<Error> fault_;
};

/// A calendar of a set, or the one of a planner without a set.
struct SetPlace {
  SetSource source;
  /// Goes before its items' identifiers: the source's own; empty without a set.
  std::string prefix;
  std::unique_ptr<PlaceWriter> writer;
  KnownState state;
  /// It stands in the set before already, and is shown there.
  bool isTwice = false;
  /// Its items were read since the start, or those of an earlier copy.
  bool hasItems = false;
  /// Its own name, once it was read.
  std::string name;
  std::vector<Diagnostic> diagnostics;
  /// Of a background calendar.
  std::vector<CalendarItem> daysOff;

  /// None of our saves goes there.
  bool IsReadOnly() const { return isTwice || writer->IsReadOnly(); }
};

/// @param dataFolder  as PrivateDataFolder gives it
/// @param locks       of the places of one planner
std::unique_ptr<PlaceWriter> MakePlaceWriter(const SetSource& source, const std::string& dataFolder,
                                             const std::shared_ptr<FolderLocks>& locks);

}  // namespace velkor
