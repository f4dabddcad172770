// tools/ColourCalendar.cpp: a calendar in memory with a colour store over it.
#include "tools/ColourCalendar.h"

#include <utility>

#include "categories/ColourRecords.h"
#include "model/ColourRecord.h"

namespace velkor {

void ColourCalendar::Add(const std::string& subject, const std::string& body) {
  CalendarItem item;
  item.entryId = "record " + std::to_string(folder_.AllItems().size());
  item.fields.subject = subject;
  item.fields.body = body;
  item.start = item.end = colour_record::HiddenInstant();
  folder_.Add(std::move(item));
}

std::string ColourCalendar::BodyOf(std::string_view title) {
  const auto folder = OpenFolder();
  const auto item = ColourRecords(*folder, seams.locale).FindItem(colour_record::SubjectOf(title));
  return item ? item->Body() : std::string();
}

std::unique_ptr<OutlookFolder> ColourCalendar::OpenFolder() {
  return outlook_.GetNamespace("MAPI")->GetFolderFromID(folder_.EntryID(), store_.StoreID());
}

}  // namespace velkor
