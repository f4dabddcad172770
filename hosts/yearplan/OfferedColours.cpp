// hosts/yearplan/OfferedColours.cpp: the first colours of a calendar as an unsaved item of its
// folder.
#include "hosts/yearplan/OfferedColours.h"

#include <string>
#include <utility>

#include "calendar/CalendarFolder.h"
#include "categories/FirstColours.h"
#include "model/ColourRecord.h"
#include "platform/Outlook.h"

namespace velkor {

std::unique_ptr<OutlookFolder> DefaultCalendarOf(OutlookApplication& outlook) {
  return outlook.GetNamespace("MAPI")->GetDefaultFolder(outlook::FolderCalendar);
}

void OfferFirstColours(CalendarFolder& folder, OutlookApplication& outlook, LocaleApi& locale,
                       std::string_view titleName, std::string_view separator) {
  auto list = FirstColourList(*DefaultCalendarOf(outlook), locale, titleName, separator);
  if (!list) return;
  CalendarItem record;
  record.entryId = "first colours of " + std::string(titleName);
  record.fields.subject = colour_record::SubjectOf(titleName);
  record.fields.body = std::move(*list);
  record.start = colour_record::HiddenInstant();
  record.end = record.start;
  folder.AddUnsaved(std::move(record));
}

}  // namespace velkor
