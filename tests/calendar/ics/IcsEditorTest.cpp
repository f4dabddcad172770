// tests/calendar/ics/IcsEditorTest.cpp: saves into the text of a file, byte for byte; single
// edits stand in tests/data/edits.txt.
#include "calendar/ics/write/IcsEditor.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <fstream>
#include <map>
#include <optional>
#include <random>

#include "calendar/ics/read/IcsValues.h"
#include "calendar/ics/write/IcsText.h"
#include "tests/calendar/ics/IcsCase.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

using testing::HasSubstr;
using testing::Not;

const Date Saved = Date::FromFields({2026, 2, 3, 12, 0, 0});
/// Newfoundland's clock is three and a half hours behind Greenwich's.
constexpr std::string_view SavedUtc = "20260203T153000Z";
const std::string Stamps =
    "DTSTAMP:" + std::string(SavedUtc) + "\nLAST-MODIFIED:" + std::string(SavedUtc) + "\n";

Date At(int month, int day, int hour = 0, int minute = 0) {
  return Date::FromFields({2026, month, day, hour, minute, 0});
}

CalendarItem ItemOf(const std::string& text, const std::string& subject) {
  for (CalendarItem& item : Parse(text).items) {
    if (item.fields.subject == subject) return item;
  }
  ADD_FAILURE() << "no item " << subject;
  return {};
}

IcsEdit Change(const std::string& text, const std::string& subject, const ItemChange& change) {
  CalendarItem after = WithChange(ItemOf(text, subject), change);
  after.lastModified = Saved;
  return ChangeInIcs(text, "team.ics", after, change);
}

ItemChange NewSubject(const std::string& subject) {
  ItemChange change;
  change.subject = subject;
  return change;
}

ItemChange NewTimes(Date start, Date end) {
  ItemChange change;
  change.start = start;
  change.end = end;
  return change;
}

/// What tests/data/edits.txt says of one edit, by its words: "before" and "after" are the lines
/// inside the calendar.
using Says = std::map<std::string, std::string>;

std::vector<Says> Edits() {
  std::vector<Says> all;
  std::string word;
  std::ifstream file(TEST_DATA "edits.txt");
  for (std::string line; std::getline(file, line);) {
    if (line.starts_with(' ')) {
      all.back()[word] += line.substr(1) + "\n";
    } else if (!line.empty()) {
      word = line.substr(0, line.find(' '));
      if (word == "#") all.emplace_back();
      all.back()[word] = line.substr(std::min(word.size() + 1, line.size()));
    }
  }
  return all;
}

ItemChange ChangeIn(const Says& says) {
  ItemChange change;
  const auto take = [&](const char* word, auto& value, const auto& read) {
    if (const auto found = says.find(word); found != says.end()) value = read(found->second);
  };
  const auto asText = [](const std::string& text) { return text; };
  const auto asBool = [](const std::string& text) { return text == "true"; };
  const auto asDate = [](const std::string& text) {
    return Date::FromSeconds(ReadTimeText(text).value_or(IcsTimeText{}).wall);
  };
  take("subject", change.subject, asText);
  take("start", change.start, asDate);
  take("end", change.end, asDate);
  take("allDay", change.allDay, asBool);
  take("reminder", change.reminder, asBool);
  return change;
}

/// The bytes after a change, which the file's next reading must find as it was made.
std::string Changed(const std::string& text, const std::string& subject, const ItemChange& change) {
  const IcsEdit edit = Change(text, subject, change);
  const CalendarItem after = ItemOf(edit.bytes, change.subject.value_or(subject));
  EXPECT_EQ(after.entryId, ItemOf(text, subject).entryId);
  EXPECT_EQ(after.contentMark, edit.item.contentMark) << "the next look would find a change";
  EXPECT_EQ(after.lastModified, Saved);
  if (change.start) {
    EXPECT_EQ(Words(after.start, after.end), Words(*change.start, *change.end));
  }
  return edit.bytes;
}

TEST(IcsEditor, EditsLeaveWhatStandsBesideThem) {
  int count = 0;
  for (const Says& says : Edits()) {
    SCOPED_TRACE(says.at("#"));
    const std::string text = Calendar(says.at("before"));
    std::string bytes;
    if (says.contains("change")) {
      bytes = Changed(text, says.at("change"), ChangeIn(says));
    } else if (says.contains("delete")) {
      bytes = DeleteFromIcs(text, "team.ics", ItemOf(text, says.at("delete")).entryId).bytes;
    } else {
      const std::vector<std::string> names = Split(says.at("category"), " to ");
      bytes = ReplaceCategoryInIcs(text, "team.ics", {names.at(0), names.at(1)}, Saved);
    }
    EXPECT_EQ(bytes, Calendar(says.at("after")));
    ++count;
  }
  EXPECT_GT(count, 20);
}

TEST(IcsEditor, EveryFieldComesBackAsItWasSet) {
  const std::string text =
      Calendar(Event("UID:1\nSUMMARY:a\nDTSTART:20260301\nLOCATION:Ghent\nDESCRIPTION:x\n"
                     "CATEGORIES:One,Two\nCATEGORIES:Three\n"));
  ItemChange change;
  change.location = "";
  change.body = "--LIST--\r\nOne, two|1\r\n\r\n\\n; ünïcödé " + std::string(200, 'w') + "\r\n";
  change.categories = {"Key Customer", "a,b", "Ünï;cödé"};
  const IcsEdit edit = Change(text, "a", change);
  const CalendarItem after = ItemOf(edit.bytes, "a");
  EXPECT_EQ(after.fields.body, *change.body);
  EXPECT_EQ(after.fields.categories, *change.categories);
  EXPECT_EQ(after.fields.location, "");
  EXPECT_THAT(edit.bytes, Not(HasSubstr("LOCATION")));
  for (std::size_t at = 0, end = 0; end != std::string::npos; at = end + 1) {
    end = edit.bytes.find('\n', at);
    EXPECT_LE(std::min(end, edit.bytes.size()) - at, 75U);
  }
}

TEST(IcsEditor, OddFilesKeepEveryOtherByte) {
  const std::string event =
      "BEGIN:VEVENT\nUID:1\nDTSTAMP:20250101T000000Z\nLAST-MODIFIED:20250101T000000Z\n"
      "DTSTART:20260301\nSUMMARY:Old\nEND:VEVENT\n";
  const std::string unended = event.substr(0, event.find("END:"));
  const std::string plain = Calendar(event);
  const std::string windows = Replace(plain, "\n", "\r\n");
  const std::string mixed = Replace(Replace(plain, "Old\n", "Old\r\r\n"), "1\nD", "1\r\nD");
  for (const std::string& text :
       {plain, windows, mixed, "\xEF\xBB\xBF" + windows, plain.substr(0, plain.size() - 1),
        "garbage\n\n" + plain + Calendar("BEGIN:X-ODD\nX:1\nEND:X-ODD\n") + "tail",
        Calendar("BEGIN:VTODO\nSUMMARY:todo\nEND:VTODO\n" + unended), event,
        unended.substr(0, unended.size() - 1), Calendar(event + std::string("\0\x01\n\n", 4)),
        Calendar(event + "BEGIN:VEVENT\nSUMMARY:Caf\xE9\nDTSTART:20260101\nEND:VEVENT\n")}) {
    const std::string expected = Replace(Replace(text, "20250101T000000Z", SavedUtc), "Old", "New");
    EXPECT_EQ(Change(text, "Old", NewSubject("New")).bytes, expected);
  }
  const IcsEdit added =
      Change("BEGIN:VEVENT\nSUMMARY:Old\nDTSTART:20260301", "Old", NewSubject("N"));
  EXPECT_EQ(ItemOf(added.bytes, "N").entryId, added.item.entryId);
}

TEST(IcsEditor, TextsOfAWindows1252FileAreWrittenInItWhereItCarriesThem) {
  const std::string other = Event("UID:1\nSUMMARY:Caf\xE9\nDTSTART:20260101\n");
  const std::string rest = "\nDTSTART:20260101\n";
  const std::string text = Calendar(other + Event("UID:2\nSUMMARY:b" + rest));
  for (const auto& [subject, written] : std::initializer_list<std::pair<const char*, const char*>>{
           {"Größe 5 €", "Gr\xF6\xDF\x65 5 \x80"}, {"a → b", "a → b"}, {"Ã©", "Ã©"}}) {
    const IcsEdit edit = Change(text, "b", NewSubject(subject));
    EXPECT_EQ(edit.bytes,
              Calendar(other + Event("UID:2\nSUMMARY:" + std::string(written) + rest + Stamps)));
    EXPECT_EQ(ItemOf(edit.bytes, subject).entryId, ItemOf(text, "b").entryId);
  }
}

TEST(IcsEditor, WhatASaveWouldLoseIsRefused) {
  const auto utf16 = [](std::string_view ascii) {
    std::string bytes("\xFF\xFE");
    for (const char c : ascii) bytes.append({c, '\0'});
    return bytes;
  };
  const std::string whole = utf16(Calendar(Event("UID:1\nSUMMARY:a\nDTSTART:20260101\n")));
  EXPECT_THAT(Change(whole, "a", NewSubject("b")).bytes, HasSubstr(utf16("SUMMARY:b").substr(2)));
  // Half a pair of surrogates, and half a character.
  for (const std::string& tail : {std::string("\x00\xD8", 2), std::string("\n")}) {
    EXPECT_THAT(FaultOf([&] { Change(whole + tail, "a", NewSubject("b")); }),
                HasSubstr("broken UTF-16"));
  }
  const std::string cancels = Calendar("METHOD:CANCEL\n");
  EXPECT_THAT(FaultOf([&] { AddToIcs(cancels, "team.ics", {}, false, "new"); }),
              HasSubstr("METHOD:CANCEL"));
}

/// The system's clock in another zone.
class Zone {
 public:
  explicit Zone(const char* name) {
    if (const char* before = std::getenv("TZ")) before_ = before;
    Set(name);
  }
  ~Zone() { Set(before_ ? before_->c_str() : nullptr); }
  Zone(const Zone&) = delete;
  Zone& operator=(const Zone&) = delete;

 private:
  static void Set(const char* name) {
    name ? ::setenv("TZ", name, 1) : ::unsetenv("TZ");
    ::tzset();
  }
  std::optional<std::string> before_;
};

TEST(IcsEditor, TimesThatTheClockSkipsAndDaysThatItShortens) {
  const Zone zone("Europe/Berlin");
  const auto span = [](const std::string& times, Date start, Date end) {
    const IcsEdit edit =
        Change(Calendar(Event("UID:1\nSUMMARY:a\n" + times)), "a", NewTimes(start, end));
    const CalendarItem after = ItemOf(edit.bytes, "a");
    EXPECT_EQ(after.contentMark, edit.item.contentMark);
    return Words(after.start, after.end);
  };
  const std::string floating = "DTSTART:20260301T090000\nDURATION:PT1H\n";
  const std::string utc = "DTSTART:20260301T090000Z\nDURATION:PT1H\n";
  EXPECT_EQ(span(floating, At(3, 29, 2, 30), At(3, 29, 4)), "2026-03-29 02:30 to 2026-03-29 04:00");
  EXPECT_EQ(span(utc, At(3, 29, 2, 30), At(3, 29, 4)), "2026-03-29 03:30 to 2026-03-29 04:00");
  EXPECT_EQ(span(floating, At(3, 28, 9), At(3, 29, 9)), "2026-03-28 09:00 to 2026-03-29 09:00");
  EXPECT_EQ(span(utc, At(3, 28, 9), At(3, 29, 9)), "2026-03-28 09:00 to 2026-03-29 09:00");
  EXPECT_EQ(span("DTSTART:20260301T080000Z\nDURATION:P1D\n", At(10, 24, 9), At(10, 25, 8)),
            "2026-10-24 09:00 to 2026-10-25 08:00");
  EXPECT_EQ(span("DTSTART:20260301T080000Z\nDURATION:P1D\n", At(3, 28, 9), At(3, 29, 10)),
            "2026-03-28 09:00 to 2026-03-29 10:00");
  EXPECT_THAT(FaultOf([&] { span(utc, At(3, 29, 2, 30), At(3, 29, 3)); }),
              HasSubstr("nothing was saved"))
      << "the end would be moved";
}

TEST(IcsEditor, RecurringAppointmentsKeepTheirTimes) {
  const std::string text =
      Calendar(Event("UID:1\nSUMMARY:a\nDTSTART:20260101\nRRULE:FREQ=WEEKLY;COUNT=3\n"));
  EXPECT_THROW(Change(text, "a", NewTimes(At(2, 1), At(2, 2))), Error);
  CalendarItem stale = ItemOf(text, "a");
  stale.recurring = false;
  EXPECT_THROW(ChangeInIcs(text, "team.ics", stale, NewTimes(At(2, 1), At(2, 2))), Error);
}

TEST(IcsEditor, EventsThatShareAUidByMistakeDoNotLoseEachOther) {
  const std::string text = Calendar(Event("UID:1\nSEQUENCE:0\nSUMMARY:a\nDTSTART:20260301\n") +
                                    Event("UID:1\nSEQUENCE:0\nSUMMARY:a\nDTSTART:20260401\n") +
                                    Event("UID:1\nSEQUENCE:1\nSUMMARY:c\nDTSTART:20260501\n"));
  const std::string second = Parse(text).items.at(1).entryId;
  CalendarItem after = Parse(text).items[1];
  after.start = At(6, 1);
  after.end = At(6, 2);
  after.lastModified = Saved;
  const IcsEdit edit = ChangeInIcs(text, "team.ics", after, NewTimes(after.start, after.end));
  ASSERT_EQ(Parse(edit.bytes).items.size(), 3U);
  EXPECT_EQ(Parse(edit.bytes).items[1].entryId, second);
  const auto deleted = DeleteFromIcs(edit.bytes, "team.ics", Parse(edit.bytes).items[0].entryId);
  EXPECT_TRUE(deleted.movesOthers);
  EXPECT_EQ(Parse(deleted.bytes).items.size(), 2U);

  ItemChange same = NewSubject("c");
  after = WithChange(Parse(text).items[1], same);
  after.lastModified = Saved;
  EXPECT_THAT(FaultOf([&] { ChangeInIcs(text, "team.ics", after, same); }),
              HasSubstr("shares its UID"));
}

CalendarItem NewItem() {
  CalendarItem item;
  item.fields = {"Trip, long", {"Leave", "a,b"}, "Ghent", "one\r\ntwo", true};
  item.messageClass = "IPM.Appointment.Leave";
  item.start = At(7, 1);
  item.end = At(7, 3);
  item.lastModified = Saved;
  return item;
}

TEST(IcsEditor, ANewAppointmentStandsAtTheEndOfTheLastCalendar) {
  const std::string old = Event("UID:1\nSUMMARY:a\nDTSTART:20260301\n");
  const std::string added =
      "BEGIN:VEVENT\nUID:new\n" + Stamps +
      "DTSTART;VALUE=DATE:20260701\nDTEND;VALUE=DATE:20260703\nSUMMARY:Trip\\, long\n"
      "LOCATION:Ghent\nDESCRIPTION:one\\ntwo\nCATEGORIES:Leave,a\\,b\n"
      "X-VELKOR-MESSAGE-CLASS:IPM.Appointment.Leave\nEND:VEVENT\n";
  const std::string end = "END:VCALENDAR\n";
  const std::string text = Calendar("") + Calendar(old);
  const auto add = [](const std::string& to) {
    return AddToIcs(to, "team.ics", NewItem(), false, "new");
  };
  EXPECT_EQ(add(text + "tail\n").bytes,
            text.substr(0, text.size() - end.size()) + added + end + "tail\n");
  EXPECT_EQ(add(Replace(text, "\n", "\r\n")).bytes,
            Replace(text.substr(0, text.size() - end.size()) + added + end, "\n", "\r\n"));
  const std::string open = "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:1\nSUMMARY:a\nDTSTART:20260301";
  EXPECT_EQ(add(open).bytes, open + "\n" + added);
  EXPECT_EQ(Parse(add(open).bytes).items.size(), 2U);
  EXPECT_FALSE(add(text).movesOthers);
  EXPECT_TRUE(add(open).movesOthers);
  EXPECT_TRUE(add(Calendar("BEGIN:VEVENT\nSUMMARY:a\nDTSTART:20260301\n")).movesOthers);

  const CalendarItem item = ItemOf(add(text).bytes, "Trip, long");
  EXPECT_EQ(item.entryId, add(text).item.entryId);
  EXPECT_EQ(item.contentMark, add(text).item.contentMark);
  EXPECT_EQ(item.fields, NewItem().fields);
  EXPECT_EQ(item.messageClass, "IPM.Appointment.Leave");
  EXPECT_EQ(Words(item.start, item.end), "2026-07-01 00:00 to 2026-07-03 00:00");
  EXPECT_THROW(add("no calendar at all"), Error);
  EXPECT_THROW(add(""), Error);
}

TEST(IcsEditor, AnAppointmentWithoutLengthIsWrittenWithoutAnEnd) {
  CalendarItem item = NewItem();
  item.fields.allDay = false;
  item.start = item.end = Date::FromFields({2011, 1, 1, 1, 30, 0});
  const IcsEdit edit = AddToIcs(Calendar(""), "team.ics", item, true, "new");
  EXPECT_THAT(edit.bytes, Not(HasSubstr("DTEND")));
  EXPECT_THAT(edit.bytes, HasSubstr("BEGIN:VALARM"));
  EXPECT_EQ(ItemOf(edit.bytes, "Trip, long").start, item.start);
  EXPECT_EQ(ItemOf(edit.bytes, "Trip, long").end, item.start);
}

TEST(IcsEditor, TextsThatNoReadingWouldGiveBackAreRefused) {
  const std::string text = Calendar(Event("UID:1\nSUMMARY:a\nDTSTART:20260301\n"));
  ItemChange change;
  change.body = std::string((std::size_t{1} << 20) + 10, 'x');
  EXPECT_THROW(Change(text, "a", change), Error);
  CalendarItem gone = ItemOf(text, "a");
  EXPECT_THROW(ChangeInIcs(Calendar(""), "team.ics", gone, NewSubject("b")), Error);
  EXPECT_THROW(DeleteFromIcs(Calendar(""), "team.ics", gone.entryId), Error);
}

/// An event of properties that odd files hold, in any order.
std::string OddEvent(std::mt19937& random) {
  const auto pick = [&](const std::vector<std::string>& from) {
    return from[random() % from.size()];
  };
  std::vector<std::string> lines{
      pick({"UID:1\n", "UID:2\n", "UID:3\n", ""}),
      pick({"SUMMARY:a\n", "SUMMARY;X=1:b\n", "SUM\n MARY:c\n"}),
      pick({"DTSTART:20260301\n", "DTSTART;TZID=Europe/Berlin:20260301T090000\n",
            "DTSTART:20260301T120000Z\n", "DTSTART;TZID=Nowhere:20260402T120000\n"}),
      pick({"", "DTEND:20260305\n", "DTEND:20260305T140000Z\n", "DURATION:PT1H\n", "DTEND:x\n"})};
  for (std::size_t more = random() % 4; more > 0; --more) {
    lines.push_back(
        pick({"SEQUENCE:0\n", "SEQUENCE:2\n", "RRULE:FREQ=WEEKLY;COUNT=3\n", "no property\n",
              "RECURRENCE-ID:20260308T120000Z\n", "STATUS:CANCELLED\n", "CATEGORIES:x,y\n",
              "BEGIN:VALARM\nSUMMARY:q\nEND:VALARM\n", "BEGIN:VALARM\n", "SUMMARY:again\n",
              "X-VELKOR-ENTRY-ID:0123456789abcdef0123456789abcdef\n", "DESCRIPTION:x\n  y\n"}));
  }
  std::shuffle(lines.begin(), lines.end(), random);
  std::string text = "BEGIN:VEVENT\n";
  for (const std::string& line : lines) text += line;
  return text + (random() % 10 == 0 ? "" : "END:VEVENT\n");
}

TEST(IcsEditor, InOddFilesASaveChangesItsOwnAppointmentAlone) {
  std::mt19937 random(26);  // NOLINT: the same files in every run
  int saves = 0;
  for (int round = 0; round < 300; ++round) {
    std::string events;
    for (std::size_t count = random() % 5 + 1; count > 0; --count) events += OddEvent(random);
    const std::string text = Calendar(events);
    const std::vector<CalendarItem> before = Parse(text).items;
    for (const CalendarItem& item : before) {
      ItemChange change = NewSubject(round % 3 == 0 ? "a" : "new, text");
      if (round % 2 == 0) change.start = change.end = At(8, 1, 12);
      if (round % 5 < 2) change.reminder = round % 5 == 0;
      IcsEdit edit;
      try {
        CalendarItem after = WithChange(item, change);
        after.lastModified = Saved;
        edit = ChangeInIcs(text, "team.ics", after, change);
      } catch (const Error&) {
        continue;
      }
      ++saves;
      const std::vector<CalendarItem> items = Parse(edit.bytes).items;
      ASSERT_EQ(items.size(), before.size()) << text << "became\n" << edit.bytes;
      for (std::size_t i = 0; i < items.size(); ++i) {
        ASSERT_EQ(items[i].entryId, before[i].entryId) << text << "became\n" << edit.bytes;
        const CalendarItem& wanted = items[i].entryId == item.entryId ? edit.item : before[i];
        ASSERT_TRUE(SameContent(items[i], wanted)) << text << "became\n" << edit.bytes;
      }
    }
  }
  EXPECT_GT(saves, 300);
}

}  // namespace
}  // namespace velkor
