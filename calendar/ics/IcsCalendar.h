// calendar/ics/IcsCalendar.h: an iCalendar file as a store that follows the file and saves into it.
#pragma once

#include <cstdint>
#include <functional>
#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include "calendar/CalendarStore.h"
#include "calendar/ics/file/CalendarFile.h"
#include "calendar/ics/read/Diagnostics.h"
#include "calendar/ics/read/IcsReader.h"
#include "calendar/ics/write/IcsEditor.h"

namespace velkor {

/// The absolute path of a file, which is the identifier of its store.
std::string StoreIdOfIcsFile(const std::string& path);

/// One calendar file opened for a window: a store with one folder, the default calendar. Several
/// of these, in one process or in many, may be open on one file: each save takes in what the file
/// holds by then, and each of the others learns of it by a look. On one thread.
class IcsCalendar : private CalendarWriter {
 public:
  /// Reads the file, with the occurrences of `window`. Throws as ReadIcsFile does.
  /// @param path  UTF-8
  IcsCalendar(const std::string& path, const DateWindow& window, const WorkerOptions& options = {});
  IcsCalendar(const IcsCalendar&) = delete;
  IcsCalendar& operator=(const IcsCalendar&) = delete;

  CalendarStore& Store() { return store_; }
  CalendarFolder& Folder() { return *folder_; }
  const std::string& Path() const { return file_.Path(); }
  /// What the file got wrong when it was last read.
  const std::vector<Diagnostic>& Diagnostics() const { return diagnostics_; }

  /// Reads the file again when it is another than the one in memory, and raises the item events:
  /// one for each item that was added, changed or removed, or a single removal for more than
  /// CalendarFolder::MostEvents. Costs one look at the file's entry when nothing changed.
  /// A file that is gone or cannot be read throws Error once for each such state; the items stay
  /// as they were last read.
  /// @return true when the file was read again
  bool CheckForChanges();

  /// Told when a look is done: empty when the file was read, else why it could not be.
  using LookDone = std::function<void(const std::string& trouble)>;
  /// Does what CheckForChanges does without waiting for the reader: the event loop takes its
  /// answer, raises the item events and then calls `onDone`. One reading runs at a time; what
  /// changes meanwhile is read after it. An answer that a save or another reading has overtaken is
  /// dropped and the file read again. A look that finds nothing new tells nothing, except that
  /// trouble which a look told is over. `onDone` and the listeners do not destroy
  /// the calendar. Needs a QCoreApplication.
  void Look(const LookDone& onDone);

 private:
  CalendarItem WriteNew(const CalendarItem& item, bool reminder) override;
  CalendarItem WriteChange(const CalendarItem& after, const ItemChange& change) override;
  void WriteDeletion(const CalendarItem& item) override;
  void WriteCategory(std::string_view from, std::string_view to, Date now) override;
  std::shared_ptr<const void> Hold() override { return file_.Hold(); }
  void Refresh() override { CheckForChanges(); }

  /// A reading that the event loop sees to, and what it was started for.
  struct StartedLook {
    std::unique_ptr<IcsReading> reading;
    std::optional<FileMark> mark;
    DateWindow window;
    std::uint64_t revision;
    LookDone onDone;
  };

  bool IsNews(const std::optional<FileMark>& mark);
  std::vector<CalendarItem> Read(const DateWindow& window);
  std::vector<CalendarItem> Adopt(const std::optional<FileMark>& mark, ParsedCalendar calendar);
  void Show(const std::optional<FileMark>& mark, const DateWindow& window,
            const IcsReading& reading);
  void EndLook();
  CalendarItem Save(const std::function<IcsEdit(const std::string& bytes)>& edit);

  CalendarFile file_;
  WorkerOptions options_;
  CalendarStore store_;
  CalendarFolder* folder_ = nullptr;
  std::vector<Diagnostic> diagnostics_;
  /// The state of the file that is in memory; none when that is unknown.
  std::optional<FileMark> known_;
  /// The last state that could not be read; a file that is gone has no mark.
  std::optional<std::optional<FileMark>> failed_;
  /// Grows whenever one of the two is found anew.
  std::uint64_t revision_ = 0;
  /// The last that a look told was trouble.
  bool toldTrouble_ = false;
  std::optional<StartedLook> look_;
};

}  // namespace velkor
