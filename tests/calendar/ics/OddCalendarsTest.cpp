// tests/calendar/ics/OddCalendarsTest.cpp: the calendars of tests/data/calendars, each beside what
// it shows on the clock of St. John's (UTC-3:30, in summer UTC-2:30) and what is said of it.
#include <gtest/gtest.h>

#include <filesystem>
#include <fstream>
#include <iterator>

#include "calendar/ics/read/IcsPlainText.h"
#include "calendar/ics/write/IcsEditor.h"
#include "tests/calendar/ics/IcsCase.h"
#include "values/Text.h"

namespace velkor {
namespace {

namespace fs = std::filesystem;

std::string ReadFile(const fs::path& path) {
  std::ifstream file(path, std::ios::binary);
  return {std::istreambuf_iterator<char>(file), {}};
}

std::string Words(const AppointmentFields& fields) {
  std::string text = fields.allDay ? " all day: " : ": ";
  text += fields.subject;
  for (const std::string& name : fields.categories) text += " [" + name + "]";
  if (!fields.location.empty()) text += " @" + fields.location;
  if (!fields.body.empty()) text += " | " + Replace(fields.body, "\r\n", "\\n");
  return text + "\n";
}

/// The name, a line for each occurrence, and a line for each report.
std::string Inspect(std::string_view bytes, const std::string& name) {
  const ParsedCalendar calendar = ParseIcs(bytes, name, Year(2026));
  std::string text = calendar.name + "\n";
  for (const CalendarItem& item : calendar.items) {
    if (!item.recurring) text += Words(item.start, item.end) + Words(item.fields);
    for (const CalendarOccurrence& one : item.occurrences) {
      const auto changed = static_cast<std::size_t>(one.changed);
      text += Words(one.start, one.end) +
              (one.changed < 0 ? Words(item.fields) : "*" + Words(item.changed.at(changed)));
    }
  }
  for (const std::string& report : ReportsOf(calendar)) text += report + "\n";
  return text;
}

/// Calls check(bytes, path) for each calendar.
template <typename Check>
void ForEachCalendar(const Check& check) {
  int count = 0;
  for (const auto& entry : fs::directory_iterator(TEST_DATA "calendars")) {
    if (entry.path().extension() != ".ics") continue;
    SCOPED_TRACE(entry.path().filename().string());
    check(ReadFile(entry.path()), entry.path());
    ++count;
  }
  EXPECT_GT(count, 10);
}

TEST(OddCalendars, ShowWhatStandsBesideThem) {
  ForEachCalendar([](const std::string& bytes, fs::path path) {
    const std::string shown = Inspect(bytes, path.filename().string());
    EXPECT_EQ(shown, ReadFile(path.replace_extension(".txt")));
  });
}

/// The part of the old text that a save has replaced.
std::string_view ReplacedPart(std::string_view before, std::string_view after) {
  while (!before.empty() && !after.empty() && before.front() == after.front()) {
    before.remove_prefix(1);
    after.remove_prefix(1);
  }
  while (!before.empty() && !after.empty() && before.back() == after.back()) {
    before.remove_suffix(1);
    after.remove_suffix(1);
  }
  return before;
}

TEST(OddCalendars, KeepEveryOtherByteWhenAnAppointmentIsRenamed) {
  ForEachCalendar([](const std::string& bytes, const fs::path& path) {
    const std::string name = path.filename().string();
    for (const CalendarItem& item : ParseIcs(bytes, name, Year(2026)).items) {
      ItemChange change;
      change.subject = "Närmare målet, 5 €; \\n " + item.fields.subject;
      CalendarItem after = WithChange(item, change);
      after.lastModified = Date::FromYmd(2026, 1, 1);
      const IcsEdit edit = ChangeInIcs(bytes, name, after, change);

      const IcsPlainText before(bytes, name);
      const IcsPlainText now(edit.bytes, name);
      EXPECT_EQ(before.WithText(std::string(now.Text())), edit.bytes);
      const std::string_view replaced = ReplacedPart(before.Text(), now.Text());
      EXPECT_EQ(replaced.find("BEGIN:VEVENT"), std::string_view::npos) << replaced;

      const auto items = ParseIcs(edit.bytes, name, Year(2026)).items;
      const auto same = std::find_if(items.begin(), items.end(), [&](const CalendarItem& one) {
        return one.entryId == item.entryId;
      });
      ASSERT_NE(same, items.end()) << item.fields.subject;
      EXPECT_EQ(same->fields, after.fields);
      EXPECT_EQ(same->occurrences, item.occurrences);
    }
  });
}

}  // namespace
}  // namespace velkor
