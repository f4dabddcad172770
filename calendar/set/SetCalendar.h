// calendar/set/SetCalendar.h: one calendar file, or the calendars of a set, as one folder that
// follows them and saves into them.
#pragma once

#include <cstdint>
#include <functional>
#include <map>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsReader.h"
#include "calendar/set/CalendarSet.h"
#include "calendar/set/SetPlace.h"
#include "values/DayOff.h"

namespace velkor {

/// The identifier of a calendar's store, which is the absolute path of its file, and of the folder.
std::string StoreIdOf(const std::string& calendar);
std::string FolderIdOf(const std::string& calendar);

struct SetCalendarOptions {
  /// As PrivateDataFolder gives it; a set with addresses or servers needs it.
  std::string dataFolder = {};
  WorkerOptions worker = {};
  /// Which subjects are those of colour records. A planner has only those of one calendar: the
  /// default one, else the first that can be written, else the first.
  std::function<bool(std::string_view subject)> isRecord = {};
};

/// How one calendar of a set is.
struct PlaceState {
  std::string id;
  /// Its own name; empty before it was read.
  std::string name;
  bool readOnly = false;
  /// Its appointments are there, perhaps those of an earlier copy.
  bool hasItems = false;
  /// Why it was not read, or why an earlier copy was; else why it was not synchronised. One line,
  /// empty for nothing.
  std::string trouble;
  /// The trouble is that its server was not reached.
  bool offline = false;
  /// Edits that wait to be sent.
  std::size_t waiting = 0;
  /// Seconds since 1970 when the last complete synchronisation ended; 0 for never, and for files.
  std::int64_t synchronised = 0;
};

/// A calendar opened for a planner: a store with one folder, the default calendar. Several of
/// these, in one process or in many, may be open on the same files: each save takes in what the
/// file holds by then, and each of the others learns of it by a look. On one thread.
///
/// Of a set the folder has the items of all calendars that are shown and are no days off, each
/// known by its source's identifier before its own; of a calendar file, by its own alone. A
/// calendar that cannot be read is that calendar's trouble alone: its last items stay.
class SetCalendar : private CalendarWriter {
 public:
  /// Reads everything, with the occurrences of `window`. Throws Error when the calendar file, or
  /// the set itself, cannot be read.
  /// @param calendar  an iCalendar file or a set, UTF-8
  SetCalendar(const std::string& calendar, const DateWindow& window,
              SetCalendarOptions options = {});
  SetCalendar(const SetCalendar&) = delete;
  SetCalendar& operator=(const SetCalendar&) = delete;

  CalendarStore& Store() { return store_; }
  CalendarFolder& Folder() { return *folder_; }
  /// Of the calendar file or the set, absolute.
  const std::string& Path() const { return store_.StoreID(); }
  bool IsSet() const { return IsSetPath(Path()); }
  /// As its file says; of a calendar file one source without an identifier. To change it, use
  /// UpdateSet, and have it looked at.
  const CalendarSet& Set() const { return set_; }
  /// What the calendars got wrong when they were last read.
  std::vector<Diagnostic> Diagnostics() const;

  /// Reads everything again, with the occurrences of another window alone. Throws as the
  /// constructor does.
  void Read(const DateWindow& window);

  /// Reads what is another than in memory, and raises the item events: one for each item that was
  /// added, changed or removed, or a single removal for more than CalendarFolder::MostEvents. Costs
  /// one look at each calendar when nothing changed. A calendar file, or a set's own file, that is
  /// gone or cannot be read throws Error once for each such state; the items stay as they were.
  /// @return true when something was read again
  bool CheckForChanges();

  /// Told when a look is done: empty when all is well with the file of the calendar or the set,
  /// else why it could not be read.
  using LookDone = std::function<void(const std::string& trouble)>;
  /// Does what CheckForChanges does without waiting for the reader: the event loop takes its
  /// answer, raises the item events and then calls `onDone`. One reading runs at a time; what
  /// changes meanwhile is read after it. An answer that a save or another reading has overtaken is
  /// dropped and the calendar read again. A look that finds nothing new tells nothing, except that
  /// trouble of any calendar which a look told is over. `onDone` and the listeners do not destroy
  /// the calendar. Needs a QCoreApplication.
  void Look(const LookDone& onDone);
  /// The files to be watched: the set's own, and those of its calendars.
  std::vector<std::string> Files() const;

  /// The source that an item of the folder is of; null for one that is of none (unsaved).
  const SetSource* SourceOf(std::string_view entryId) const;
  /// In the set's order.
  std::vector<PlaceState> PlaceStates() const;
  /// The identifiers of the sources whose edits wait to be sent.
  std::vector<std::string> WaitingToBeSent() const;

  /// The source that a new appointment goes to: the default one where it is shown and can be
  /// written, else the first such. Empty when there is none, and without a set.
  std::string DefaultForNew() const;
  /// Has the next new appointment go to this source, until one was saved. Empty: to the default.
  void ChooseForNew(std::string sourceId) { chosen_ = std::move(sourceId); }
  /// Takes an appointment to another calendar with all that it has: first there, then gone here.
  /// Throws Error; when that came from the second step, it is in both.
  /// @param now  local time of saving
  /// @return its identifier there
  std::string Move(const std::string& entryId, const std::string& toSourceId, Date now);

  /// Of the background calendars that are shown: what lasts whole days or longer than one. Those
  /// that come again are there for ten years before and after what the folder has.
  std::vector<DayOff> DaysOff() const;

 private:
  CalendarItem WriteNew(const CalendarItem& item, bool reminder) override;
  CalendarItem WriteChange(const CalendarItem& after, const ItemChange& change) override;
  void WriteDeletion(const CalendarItem& item) override;
  void WriteCategory(std::string_view from, std::string_view to, Date now) override;
  std::shared_ptr<const void> Hold() override;
  void Refresh() override { CheckForChanges(); }

  /// A calendar that is being read: the state that it is in and what was known then.
  struct Asked {
    std::string id;
    PlaceMark mark;
    KnownState::Revision known;
  };
  /// A reading that the event loop sees to, and what it was started for.
  struct StartedLook {
    std::unique_ptr<IcsReading> reading;
    std::vector<Asked> asked;
    DateWindow window;
    LookDone onDone;
  };

  void TakeSet(CalendarSet set);
  bool FollowSet();
  bool IsRecord(const CalendarItem& item) const;
  const SetPlace* RecordPlace() const;
  bool HasRecords(const SetPlace& place) const;
  bool IsRead(const SetPlace& place) const;
  bool Shows(const SetPlace& place, const CalendarItem& item) const;
  SetPlace* Find(std::string_view sourceId);
  SetPlace& PlaceOf(const std::string& entryId);
  std::string OwnId(const SetPlace& place, const std::string& entryId) const;
  SetPlace& PlaceForNew(const CalendarItem& item);
  CalendarItem Saved(SetPlace& place, CalendarItem item);

  std::vector<Asked> AskFor(bool all);
  std::unique_ptr<IcsReading> Start(const std::vector<Asked>& asked, const DateWindow& window);
  bool Take(const std::vector<Asked>& asked, std::vector<IcsOutcome> outcomes,
            const DateWindow& window);
  void Adopt(SetPlace& place, const PlaceMark& mark, IcsOutcome outcome,
             std::map<std::string, CalendarFolder::Items>& fresh);
  CalendarFolder::Items Together(std::map<std::string, CalendarFolder::Items> fresh) const;
  CalendarFolder::Items ReadAll(const DateWindow& window);
  void EndLook();
  std::string Trouble() const;
  std::string AllTrouble() const;

  SetCalendarOptions options_;
  CalendarStore store_;
  CalendarFolder* folder_ = nullptr;
  std::shared_ptr<FolderLocks> locks_ = MakeFolderLocks();
  CalendarSet set_;
  /// The state of the set's own file.
  KnownState setState_;
  std::vector<SetPlace> places_;
  std::string chosen_;
  /// The last that a look told of all trouble.
  std::string told_;
  std::optional<StartedLook> look_;
};

}  // namespace velkor
