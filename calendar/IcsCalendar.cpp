// calendar/IcsCalendar.cpp: which state of the file is in memory, and saving into the file.
#include "calendar/IcsCalendar.h"

#include <QFileInfo>
#include <QUuid>
#include <utility>

#include "calendar/IcsEditor.h"
#include "calendar/ShortHash.h"
#include "support/values/Error.h"

namespace velkor {

std::string StoreIdOfIcsFile(const std::string& path) {
  return QFileInfo(QString::fromStdString(path)).absoluteFilePath().toStdString();
}

IcsCalendar::IcsCalendar(const std::string& path, const DateWindow& window,
                         const IcsReaderOptions& options)
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
  ParsedCalendar calendar = ReadIcsFile(file_.Path(), window, options_);
  known_ = mark;
  failed_.reset();
  diagnostics_ = std::move(calendar.diagnostics);
  return std::move(calendar.items);
}

bool IcsCalendar::CheckForChanges() {
  const std::optional<FileMark> mark = file_.Mark();
  if (mark && mark == known_) {
    failed_.reset();
    return false;
  }
  if (failed_ && *failed_ == mark) return false;
  const DateWindow window = *folder_->Loaded();
  std::vector<CalendarItem> items;
  try {
    items = Read(window);
  } catch (const Error&) {
    failed_.emplace(mark);
    throw;
  }
  folder_->Replace(std::move(items), window);
  return true;
}

/// @param saved  what the save wrote; null for a deletion
void IcsCalendar::Adopt(const CalendarFile::Replacement& replacement, CalendarItem* saved) {
  if (known_ == replacement.before) {
    known_ = replacement.after;
    return;
  }
  // Another program's change went in between, perhaps of this very item: the next look compares
  // the item in full.
  known_.reset();
  if (saved) saved->contentMark.clear();
}

CalendarItem IcsCalendar::WriteNew(const CalendarItem& item, bool reminder) {
  const std::string uid = QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
  CalendarItem saved;
  const auto replacement = file_.Replace([&](const std::string& bytes) {
    IcsEdit edit = AddToIcs(bytes, file_.Path(), item, reminder, uid);
    saved = std::move(edit.item);
    return std::move(edit.bytes);
  });
  Adopt(replacement, &saved);
  return saved;
}

CalendarItem IcsCalendar::WriteChange(const CalendarItem& after, const ItemChange& change) {
  CalendarItem saved;
  const auto replacement = file_.Replace([&](const std::string& bytes) {
    IcsEdit edit = ChangeInIcs(bytes, file_.Path(), after, change);
    saved = std::move(edit.item);
    return std::move(edit.bytes);
  });
  saved.occurrences = after.occurrences;
  saved.changed = after.changed;
  Adopt(replacement, &saved);
  return saved;
}

void IcsCalendar::WriteDeletion(const CalendarItem& item) {
  bool movesOthers = false;
  const auto replacement = file_.Replace([&](const std::string& bytes) {
    IcsEdit edit = DeleteFromIcs(bytes, file_.Path(), item.entryId);
    movesOthers = edit.movesOthers;
    return std::move(edit.bytes);
  });
  Adopt(replacement, nullptr);
  if (movesOthers) known_.reset();
}

}  // namespace velkor
