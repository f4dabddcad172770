// calendar/ics/write/IcsNewEvent.cpp: writes the text of an event that no file has yet.
#include "calendar/ics/write/IcsNewEvent.h"

#include "calendar/ics/write/IcsText.h"
#include "calendar/ics/write/IcsUtcTimes.h"

namespace velkor {

std::string NewEvent(const IcsDocument& document, const CalendarItem& item, bool reminder,
                     const std::string& uid, const std::string& lineEnd) {
  std::string text;
  const auto add = [&](std::string_view line) {
    text += FoldLine(EncodeText(line, document.Scan().encoding), lineEnd);
  };
  const auto addText = [&](const std::string& name, const std::string& value) {
    if (!value.empty()) add(name + ":" + value);
  };
  const auto addTime = [&](const std::string& name, Date local) {
    add(item.fields.allDay ? name + ";VALUE=DATE:" + DateValue(local.Seconds())
                           : name + ":" + UtcText(local, document));
  };
  const std::string now = UtcText(item.lastModified, document);
  add("BEGIN:VEVENT");
  add("UID:" + uid);
  add("DTSTAMP:" + now);
  add("LAST-MODIFIED:" + now);
  addTime("DTSTART", item.start);
  if (item.end != item.start) addTime("DTEND", item.end);
  addText("SUMMARY", TextValue(item.fields.subject));
  addText("LOCATION", TextValue(item.fields.location));
  addText("DESCRIPTION", TextValue(item.fields.body));
  addText("CATEGORIES", TextListValue(item.fields.categories));
  if (item.messageClass != CalendarItem{}.messageClass) {
    add("X-VELKOR-MESSAGE-CLASS:" + TextValue(item.messageClass));
  }
  if (reminder) {
    for (const std::string_view line : ReminderLines) add(line);
  }
  add("END:VEVENT");
  return text;
}

}  // namespace velkor
