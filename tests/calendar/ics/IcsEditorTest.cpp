// tests/calendar/ics/IcsEditorTest.cpp: saves into the text of a file, byte for byte.
#include "calendar/ics/write/IcsEditor.h"

#include <gmock/gmock.h>

#include <algorithm>
#include <cstdlib>
#include <ctime>
#include <optional>
#include <random>

#include "calendar/ics/write/IcsText.h"
#include "tests/calendar/ics/IcsCase.h"
#include "values/Error.h"
#include "values/Text.h"

namespace velkor {
namespace {

using testing::AllOf;
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

TEST(IcsEditor, OnlyThePropertiesThatChangedAreWrittenAnew) {
  const std::string head =
      "BEGIN:VEVENT\nUID:1\nX-OWN;P=\"a:b\":kept \n  folded\nsummary;LANGUAGE=en:Old\n  text\n";
  const std::string rest =
      "DTSTART:20260301\nno property at all\nATTENDEE;CN=\"Ann\":mailto:ann@example.org\n";
  const std::string alarm =
      "BEGIN:VALARM\nACTION:DISPLAY\nSUMMARY:not mine\nTRIGGER:-PT5M\nEND:VALARM\n";
  const std::string others = Event("UID:2\nSUMMARY:Other\nDTSTART:20260101\n");
  const std::string text =
      Calendar(others + head + rest + alarm + "END:VEVENT\n" + "X-STRAY:1\n" + others);
  const std::string expected =
      Calendar(others +
               "BEGIN:VEVENT\nUID:1\nX-OWN;P=\"a:b\":kept \n  folded\nsummary;LANGUAGE=en:New\\, "
               "bright\\; C:\\\\x\n" +
               rest + Stamps + alarm + "END:VEVENT\n" + "X-STRAY:1\n" + others);
  const IcsEdit edit = Change(text, "Old text", NewSubject("New, bright; C:\\x"));
  EXPECT_EQ(edit.bytes, expected);
  const CalendarItem after = ItemOf(edit.bytes, "New, bright; C:\\x");
  EXPECT_EQ(after.entryId, ItemOf(text, "Old text").entryId);
  EXPECT_EQ(after.contentMark, edit.item.contentMark) << "the next look would find a change";
  EXPECT_EQ(after.lastModified, Saved);
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

TEST(IcsEditor, ACategoryIsReplacedWhereverItIsCarriedAndNowhereElse) {
  const std::string before =
      "BEGIN:VCALENDAR\nBEGIN:VEVENT\nUID:1\nDTSTART;VALUE=DATE:20260105\n"
      "RRULE:FREQ=WEEKLY;COUNT=4\nCATEGORIES:Home\nSUMMARY:Work\nEND:VEVENT\n"
      "BEGIN:VEVENT\nUID:1\nRECURRENCE-ID;VALUE=DATE:20260112\nDTSTART;VALUE=DATE:20260113\n"
      "CATEGORIES;X-A=1:Home,Work\nCATEGORIES:Workshop\nEND:VEVENT\n"
      "BEGIN:VEVENT\nDTSTART;VALUE=DATE:19990101\nCATEGORIES:Job,Work\nEND:VEVENT\n"
      "BEGIN:VEVENT\nDTSTART:20260101\nCATEGORIES;QUOTED-PRINTABLE:x=3D41,Work\nEND:VEVENT\n"
      "END:VCALENDAR\n";
  const std::string after = ReplaceCategoryInIcs(before, "team.ics", {"Work", "Job"}, Saved);
  EXPECT_THAT(after, AllOf(HasSubstr("CATEGORIES:Home\nSUMMARY:Work\nEND:VEVENT\n"),
                           HasSubstr("CATEGORIES;X-A=1:Home,Job,Workshop\n" + Stamps),
                           HasSubstr("CATEGORIES:Job\n" + Stamps),
                           HasSubstr("CATEGORIES:x=41,Job\n" + Stamps)));
  const auto ids = [](const std::string& text) {
    std::vector<std::string> all;
    for (const CalendarItem& item : Parse(text).items) all.push_back(item.entryId);
    return all;
  };
  EXPECT_EQ(ids(after), ids(before));
  EXPECT_EQ(ReplaceCategoryInIcs(before, "team.ics", {"work", "Job"}, Saved), before);
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

/// The lines of the only event that begin with "DT", "DUR" or "SEQ" after a change of its times.
std::string TimesAfter(const std::string& lines, Date start, Date end,
                       std::optional<bool> allDay = {}) {
  const std::string text = Calendar(
      "BEGIN:VTIMEZONE\nTZID:Mars\nBEGIN:STANDARD\nDTSTART:19700101T000000\n"
      "TZOFFSETFROM:+0530\nTZOFFSETTO:+0530\nEND:STANDARD\nEND:VTIMEZONE\n" +
      Event("UID:1\nSUMMARY:a\n" + lines));
  ItemChange change = NewTimes(start, end);
  change.allDay = allDay;
  const IcsEdit edit = Change(text, "a", change);
  const CalendarItem after = ItemOf(edit.bytes, "a");
  EXPECT_EQ(Words(after.start, after.end), Words(start, end)) << edit.bytes;
  EXPECT_EQ(after.fields.allDay, allDay.value_or(ItemOf(text, "a").fields.allDay));
  std::string times;
  const std::size_t event = edit.bytes.find("SUMMARY");
  for (const std::string& line : Split(edit.bytes.substr(event), "\n")) {
    const bool isTime = line.starts_with("DTSTART") || line.starts_with("DTEND") ||
                        line.starts_with("DUR") || line.starts_with("SEQ");
    if (isTime) times += line + "\n";
  }
  return times;
}

TEST(IcsEditor, TimesKeepTheirFormAndTheirZone) {
  const Date start = At(7, 1, 9);
  const Date end = At(7, 1, 10, 30);
  EXPECT_EQ(TimesAfter("DTSTART;TZID=Europe/Berlin:20260301T090000\nDTEND;TZID=\"Europe/"
                       "Berlin\":20260301T100000\nSEQUENCE:4\n",
                       start, end),
            "DTSTART;TZID=Europe/Berlin:20260701T133000\n"
            "DTEND;TZID=\"Europe/Berlin\":20260701T150000\nSEQUENCE:5\n");
  EXPECT_EQ(TimesAfter("DTSTART;X-P=1;TZID=Mars:20260301T090000\nDURATION:PT1H\n", start, end),
            "DTSTART;X-P=1;TZID=Mars:20260701T170000\nDURATION:PT1H30M\nSEQUENCE:1\n");
  EXPECT_EQ(TimesAfter("DTSTART:20260301T090000\nDTEND:20260301T100000Z\n", start, end),
            "DTSTART:20260701T090000\nDTEND:20260701T130000Z\nSEQUENCE:1\n");
  EXPECT_EQ(TimesAfter("DTSTART;TZID=Nowhere:20260301T090000\n", start, end),
            "DTSTART:20260701T113000Z\nDTEND:20260701T130000Z\nSEQUENCE:1\n");
  EXPECT_EQ(TimesAfter("DTSTART:20260701T090000\nDTEND:20260701T100000\n", start, start),
            "DTSTART:20260701T090000\nSEQUENCE:1\n");
  EXPECT_EQ(TimesAfter("DTSTART:20260301T090000\nDURATION:PT90M\n", start, end),
            "DTSTART:20260701T090000\nDURATION:PT90M\nSEQUENCE:1\n");
}

TEST(IcsEditor, AllDayAppointmentsAreDates) {
  EXPECT_EQ(TimesAfter("DTSTART;VALUE=DATE:20260301\n", At(7, 1), At(7, 2)),
            "DTSTART;VALUE=DATE:20260701\nDTEND;VALUE=DATE:20260702\nSEQUENCE:1\n");
  EXPECT_EQ(TimesAfter("DTSTART;VALUE=DATE:20260301\nDURATION:P1W\n", At(7, 1), At(7, 4)),
            "DTSTART;VALUE=DATE:20260701\nDURATION:P3D\nSEQUENCE:1\n");
  EXPECT_EQ(TimesAfter("DTSTART;TZID=Mars:20260301T090000\nDTEND;TZID=Mars:20260301T100000\n",
                       At(7, 1), At(7, 2), true),
            "DTSTART;VALUE=DATE:20260701\nDTEND;VALUE=DATE:20260702\nSEQUENCE:1\n");
  EXPECT_EQ(TimesAfter("DTSTART;VALUE=DATE:20260301\nX-MICROSOFT-CDO-ALLDAYEVENT:TRUE\n",
                       At(7, 1, 8), At(7, 1, 9), false),
            "DTSTART:20260701T103000Z\nDTEND:20260701T113000Z\nSEQUENCE:1\n");
}

TEST(IcsEditor, RemindersAreTouchedOnlyWhenTheyWereSet) {
  const std::string alarm = "BEGIN:VALARM\nACTION:AUDIO\nTRIGGER:-PT5M\nEND:VALARM\n";
  const std::string text = Calendar(Event("UID:1\nSUMMARY:a\nDTSTART:20260301\n" + alarm));
  EXPECT_THAT(Change(text, "a", NewSubject("b")).bytes, HasSubstr(alarm));
  ItemChange change;
  change.reminder = true;
  EXPECT_THAT(Change(text, "a", change).bytes, HasSubstr(alarm));
  change.reminder = false;
  const std::string without = Change(text, "a", change).bytes;
  EXPECT_THAT(without, Not(HasSubstr("VALARM")));
  change.reminder = true;
  EXPECT_THAT(Change(without, "a", change).bytes, HasSubstr("END:VALARM\nEND:VEVENT\n"));
}

TEST(IcsEditor, AReminderThatEndsNowhereGoesWithoutItsEvent) {
  const std::string open = "UID:1\nSUMMARY:a\nDTSTART:20260301\nBEGIN:VALARM\n";
  const std::string tail = "DESCRIPTION:x\nEND:VALARM\nEND:VEVENT\n";
  const std::string text = Calendar(Event(open) + tail);
  ItemChange change;
  change.reminder = false;
  const IcsEdit edit = Change(text, "a", change);
  EXPECT_EQ(ItemOf(edit.bytes, "a").fields.body, "") << edit.bytes;
  EXPECT_EQ(ItemOf(edit.bytes, "a").contentMark, edit.item.contentMark);
  EXPECT_THAT(edit.bytes, Not(HasSubstr("BEGIN:VALARM")));
  EXPECT_THAT(edit.bytes, HasSubstr("END:VEVENT\n" + tail)) << edit.bytes;
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

TEST(IcsEditor, RecurringAppointmentsKeepTheirTimesAndTheirExceptions) {
  const std::string moved =
      Event("UID:1\nRECURRENCE-ID:20260108T090000\nSUMMARY:Moved\nDTSTART:20260109T090000\n");
  const std::string other = Event("UID:2\nSUMMARY:Other\nDTSTART:20260109T090000\n");
  const std::string text = Calendar(
      moved + other +
      Event("UID:1\nSUMMARY:Weekly\nDTSTART:20260101T090000\nRRULE:FREQ=WEEKLY;COUNT=3\n"));
  const CalendarItem weekly = ItemOf(text, "Weekly");
  const IcsEdit edit = Change(text, "Weekly", NewSubject("Standup"));
  EXPECT_EQ(StartsOf(ItemOf(edit.bytes, "Standup")), StartsOf(weekly));
  EXPECT_THAT(edit.bytes, HasSubstr(moved));
  EXPECT_THAT(edit.bytes, Not(HasSubstr("SEQUENCE")));
  EXPECT_THROW(Change(text, "Weekly", NewTimes(At(2, 1), At(2, 2))), Error);
  CalendarItem stale = weekly;
  stale.recurring = false;
  EXPECT_THROW(ChangeInIcs(text, "team.ics", stale, NewTimes(At(2, 1), At(2, 2))), Error);
  EXPECT_EQ(DeleteFromIcs(text, "team.ics", weekly.entryId).bytes, Calendar(other));
}

TEST(IcsEditor, DeletingTakesOlderRevisionsAlong) {
  const std::string older = Event("UID:1\nSEQUENCE:0\nSUMMARY:a\nDTSTART:20260301\n");
  const std::string newer = Event("UID:1\nSEQUENCE:1\nSUMMARY:b\nDTSTART:20260301\n");
  const std::string text = Calendar(older + newer);
  EXPECT_EQ(DeleteFromIcs(text, "team.ics", ItemOf(text, "b").entryId).bytes, Calendar(""));
  const IcsEdit edit = Change(text, "b", NewTimes(At(5, 1), At(5, 2)));
  EXPECT_EQ(Parse(edit.bytes).items.size(), 1U) << "the older revision is shown again";
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
