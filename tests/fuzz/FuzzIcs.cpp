// tests/fuzz/FuzzIcs.cpp: entry of the fuzzer for the iCalendar reader.
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

#include "calendar/ics/read/IcsAnswer.h"
#include "calendar/ics/read/IcsParser.h"
#include "calendar/ics/write/IcsEditor.h"
#include "values/Error.h"

namespace {

/// Small bounds, so that one input takes little time.
velkor::IcsLimits SmallLimits() {
  velkor::IcsLimits limits;
  limits.itemOccurrences = 1000;
  limits.occurrences = 5000;
  return limits;
}

/// What the calendar promises of every item.
void Check(const velkor::ParsedCalendar& calendar) {
  for (const velkor::CalendarItem& item : calendar.items) {
    if (item.entryId.empty() || !item.start.IsValid() || item.end < item.start) std::abort();
  }
}

/// Gives an appointment another subject, which must then stand in the text under its identifier;
/// an edit that is refused is an answer, too.
void Edit(std::string_view bytes, const velkor::CalendarItem& item) {
  velkor::CalendarItem after = item;
  velkor::ItemChange change;
  after.fields.subject = "Another, longer; subject\\";
  change.subject = after.fields.subject;
  try {
    const auto edit = velkor::ChangeInIcs(bytes, "fuzz.ics", after, change, SmallLimits());
    if (edit.item.fields.subject != after.fields.subject) std::abort();
    const auto less = velkor::DeleteFromIcs(edit.bytes, "fuzz.ics", item.entryId, SmallLimits());
    if (less.bytes.size() >= edit.bytes.size()) std::abort();
  } catch (const velkor::Error&) {
  }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size) {
  const std::string_view bytes(reinterpret_cast<const char*>(data), size);
  try {
    const velkor::DateWindow window{velkor::Date::FromYmd(2025, 1, 1),
                                    velkor::Date::FromYmd(2027, 12, 31)};
    const auto calendar = velkor::ParseIcs(bytes, "fuzz.ics", window, SmallLimits());
    Check(calendar);
    Check(velkor::DecodeAnswer(velkor::EncodeAnswer(calendar)));
    if (!calendar.items.empty()) Edit(bytes, calendar.items.back());
  } catch (const velkor::Error& error) {
    if (error.Source() == "Answer") std::abort();
  }
  try {
    Check(velkor::DecodeAnswer(bytes));
  } catch (const velkor::Error&) {
  }
  return 0;
}
