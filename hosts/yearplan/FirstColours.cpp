// hosts/yearplan/FirstColours.cpp: the first colours as an unsaved item of the folder.
#include "hosts/yearplan/FirstColours.h"

#include <algorithm>
#include <utility>
#include <vector>

#include "calendar/CalendarFolder.h"
#include "categories/ColourList.h"
#include "hosts/yearplan/FirstCategoryTable.h"
#include "model/ColourRecord.h"

namespace velkor {

CategoryTable FirstColoursOf(const CalendarFolder& folder, std::string_view separator) {
  std::vector<std::string> texts;
  for (const auto& item : folder.AllItems()) {
    for (const std::string& category : item->fields.categories) {
      // What a colour list cannot hold is left to the last of its categories.
      if (category.find('|') == std::string::npos) texts.push_back(category);
    }
  }
  return MakeFirstCategoryTable(texts, separator);
}

void OfferFirstColours(CalendarFolder& folder, std::string_view titleName,
                       std::string_view separator) {
  const std::string subject = colour_record::SubjectOf(titleName);
  const auto& items = folder.AllItems();
  const bool hasRecord = std::any_of(items.begin(), items.end(), [&](const auto& item) {
    const std::string& name = item->fields.subject;
    return name == subject || name == colour_record::LegacySubject;
  });
  if (hasRecord) return;
  CalendarItem record;
  record.entryId = "first colours of " + std::string(titleName);
  record.fields.subject = subject;
  record.fields.body = ColourListText(FirstColoursOf(folder, separator).All());
  record.start = colour_record::HiddenInstant();
  record.end = record.start;
  folder.AddUnsaved(std::move(record));
}

}  // namespace velkor
