// calendar/ics/IcsCalendar.cpp: which state of the file is in memory, and saving into the file.
#include "calendar/ics/IcsCalendar.h"

#include <QFileInfo>
#include <QUuid>
#include <utility>

#include "calendar/ics/file/ShortHash.h"
#include "values/Error.h"

namespace velkor {

std::string StoreIdOfIcsFile(const std::string& path) {
  return QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString();
}

IcsCalendar::IcsCalendar(const std::string& path, const DateWindow& window,
                         const WorkerOptions& options)
    : file_(StoreIdOfIcsFile(path)), options_(options), store_(file_.Path()) {
  known_ = file_.Mark();
  ParsedCalendar calendar = ReadIcsFile(file_.Path(), window, options_);
  diagnostics_ = std::move(calendar.diagnostics);
  folder_ = &store_.AddFolder(std::move(calendar.name), ShortHash(file_.Path()),
                              outlook::ItemTypeAppointment);
  folder_->Replace(std::move(calendar.items), window);
  folder_->SetLoader([this](const DateWindow& wider) { return Read(wider); });
  folder_->SetWriter(this);
  store_.SetDefaultCalendar(folder_);
}

std::vector<CalendarItem> IcsCalendar::Read(const DateWindow& window) {
  // Taken before: a change while the file is read is then found at the next look.
  const std::optional<FileMark> mark = file_.Mark();
  return Adopt(mark, ReadIcsFile(file_.Path(), window, options_));
}

std::vector<CalendarItem> IcsCalendar::Adopt(const std::optional<FileMark>& mark,
                                             ParsedCalendar calendar) {
  ++revision_;
  known_ = mark;
  failed_.reset();
  diagnostics_ = std::move(calendar.diagnostics);
  return std::move(calendar.items);
}

bool IcsCalendar::IsNews(const std::optional<FileMark>& mark) {
  if (mark && mark == known_) {
    failed_.reset();
    return false;
  }
  return !failed_ || *failed_ != mark;
}

/// @param reading  one of the file in the state `mark`, that has ended
void IcsCalendar::Show(const std::optional<FileMark>& mark, const DateWindow& window,
                       const IcsReading& reading) {
  std::vector<CalendarItem> items;
  try {
    items = Adopt(mark, reading.Result());
  } catch (const Error&) {
    ++revision_;
    failed_.emplace(mark);
    throw;
  }
  folder_->Replace(std::move(items), window);
}

bool IcsCalendar::CheckForChanges() {
  const std::optional<FileMark> mark = file_.Mark();
  if (!IsNews(mark)) return false;
  const DateWindow window = *folder_->Loaded();
  IcsReading reading(file_.Path(), window, options_);
  reading.Wait();
  Show(mark, window, reading);
  return true;
}

void IcsCalendar::Look(const LookDone& onDone) {
  if (look_) return;
  const std::optional<FileMark> mark = file_.Mark();
  if (!IsNews(mark)) {
    if (!failed_ && std::exchange(toldTrouble_, false)) onDone({});
    return;
  }
  const DateWindow window = *folder_->Loaded();
  auto reading = std::make_unique<IcsReading>(file_.Path(), window, options_);
  reading->WhenEnded([this] { EndLook(); });
  look_.emplace(StartedLook{std::move(reading), mark, window, revision_, onDone});
}

void IcsCalendar::EndLook() {
  const StartedLook look = std::move(*look_);
  look_.reset();
  if (look.revision == revision_) {
    std::string trouble;
    try {
      Show(look.mark, look.window, *look.reading);
    } catch (const Error& error) {
      trouble = error.Description();
    }
    toldTrouble_ = !trouble.empty();
    look.onDone(trouble);
  }
  Look(look.onDone);
}

CalendarItem IcsCalendar::Save(const std::function<IcsEdit(const std::string& bytes)>& edit) {
  IcsEdit made;
  const auto replacement = file_.Replace([&](const std::string& bytes) {
    made = edit(bytes);
    return std::move(made.bytes);
  });
  const bool isAlone = known_ == replacement.before;
  ++revision_;
  known_.reset();
  if (!isAlone) {
    // Another program's change went in between, perhaps of this very item: the next look compares
    // the item in full.
    made.item.contentMark.clear();
  } else if (!made.movesOthers) {
    known_ = replacement.after;
  }
  return std::move(made.item);
}

CalendarItem IcsCalendar::WriteNew(const CalendarItem& item, bool reminder) {
  const std::string uid = QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
  return Save(
      [&](const std::string& bytes) { return AddToIcs(bytes, file_.Path(), item, reminder, uid); });
}

CalendarItem IcsCalendar::WriteChange(const CalendarItem& after, const ItemChange& change) {
  CalendarItem saved = Save(
      [&](const std::string& bytes) { return ChangeInIcs(bytes, file_.Path(), after, change); });
  saved.occurrences = after.occurrences;
  saved.changed = after.changed;
  return saved;
}

void IcsCalendar::WriteCategory(std::string_view from, std::string_view to, Date now) {
  ++revision_;
  file_.Replace([&](const std::string& bytes) {
    return ReplaceCategoryInIcs(bytes, file_.Path(), {from, to}, now);
  });
}

void IcsCalendar::WriteDeletion(const CalendarItem& item) {
  Save([&](const std::string& bytes) { return DeleteFromIcs(bytes, file_.Path(), item.entryId); });
}

}  // namespace velkor
