// calendar/ics/IcsFileWriter.cpp: edits of the file's text, and the states between which they lie.
#include "calendar/ics/IcsFileWriter.h"

#include <QUuid>
#include <utility>

#include "calendar/ics/write/IcsWhole.h"

namespace velkor {
namespace {

std::string TextOf(const FileMark& mark) {
  std::string text;
  for (const auto number :
       {static_cast<std::int64_t>(mark.device), static_cast<std::int64_t>(mark.file), mark.size,
        mark.modified, mark.changed}) {
    text.append(std::to_string(number)).append(" ");
  }
  return text;
}

}  // namespace

PlaceMark IcsFileWriter::Mark() const {
  const auto mark = file_.Mark();
  return mark ? PlaceMark(TextOf(*mark)) : std::nullopt;
}

CalendarItem IcsFileWriter::Save(const std::function<IcsEdit(const std::string& bytes)>& edit) {
  IcsEdit made;
  const auto replacement = file_.Replace([&](const std::string& bytes) {
    made = edit(bytes);
    return std::move(made.bytes);
  });
  lastSave_ = {TextOf(replacement.before),
               made.movesOthers ? PlaceMark() : TextOf(replacement.after)};
  return std::move(made.item);
}

CalendarItem IcsFileWriter::WriteNew(const CalendarItem& item, bool reminder) {
  const std::string uid = QUuid::createUuid().toString(QUuid::WithoutBraces).toStdString();
  return Save(
      [&](const std::string& bytes) { return AddToIcs(bytes, file_.Path(), item, reminder, uid); });
}

CalendarItem IcsFileWriter::WriteChange(const CalendarItem& after, const ItemChange& change) {
  CalendarItem saved = Save(
      [&](const std::string& bytes) { return ChangeInIcs(bytes, file_.Path(), after, change); });
  saved.occurrences = after.occurrences;
  saved.changed = after.changed;
  return saved;
}

void IcsFileWriter::WriteCategory(std::string_view from, std::string_view to, Date now) {
  lastSave_ = {};
  file_.Replace([&](const std::string& bytes) {
    return ReplaceCategoryInIcs(bytes, file_.Path(), {from, to}, now);
  });
}

void IcsFileWriter::WriteDeletion(const CalendarItem& item) {
  Save([&](const std::string& bytes) { return DeleteFromIcs(bytes, file_.Path(), item.entryId); });
}

std::string IcsFileWriter::WholeOf(const std::string& entryId) {
  return WholeFromIcs(file_.Read(), file_.Path(), entryId);
}

CalendarItem IcsFileWriter::TakeWhole(std::string_view whole, Date /*now*/) {
  return Save([&](const std::string& bytes) { return AddWholeToIcs(bytes, file_.Path(), whole); });
}

}  // namespace velkor
