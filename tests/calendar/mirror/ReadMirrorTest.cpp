// tests/calendar/mirror/ReadMirrorTest.cpp: what is shown of the objects of a mirror, whatever they
// hold.
#include "calendar/mirror/ReadMirror.h"

#include <gmock/gmock.h>

#include "calendar/ics/file/ShortHash.h"
#include "tests/calendar/mirror/MirrorCase.h"
#include "tests/platform/desktop/ChildProcess.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::SizeIs;
using testing::UnorderedElementsAre;

class MirrorReading : public MirrorCase {
 protected:
  void Put(const std::string& name, const std::string& object) {
    mirror_.Put("/c/" + name, "1", object);
  }
  static std::vector<std::string> SubjectsOf(const ParsedCalendar& calendar) {
    std::vector<std::string> subjects;
    for (const CalendarItem& item : calendar.items) subjects.push_back(item.fields.subject);
    return subjects;
  }
};

TEST_F(MirrorReading, AFolderThatIsNotThereIsAnEmptyCalendar) {
  const ParsedCalendar calendar = ReadMirror(folder_, Year(2026));
  EXPECT_THAT(calendar.items, IsEmpty());
  EXPECT_THAT(calendar.diagnostics, IsEmpty());
  EXPECT_FALSE(std::filesystem::exists(folder_));
}

TEST_F(MirrorReading, AnObjectThatIsAtFaultHarmsNoOther) {
  mirror_.SetState({.displayName = "Team", .syncToken = "t"});
  Put("a", ObjectOf("a", "SUMMARY:A\nDTSTART:20260301\n"));
  Put("same", ObjectOf("a", "SUMMARY:Same UID\nDTSTART:20260302\n"));
  Put("none", "<html>Please log in</html>");
  Put("task", Calendar("BEGIN:VTODO\nUID:t\nEND:VTODO\n"));
  Put("cut", ObjectOf("c", "SUMMARY:Cut\nDTSTART:20260303\n").substr(0, 60));
  const std::string damaged = mirror_.Put("/c/d", "1", ObjectOf("d", "DTSTART:20260304\n")).name;
  Overwrite("objects/" + damaged, "{\"href\":7}\n");
  Put("large", ObjectOf("large", "DTSTART:20260305\nDESCRIPTION:" + std::string(100'000, 'x')));
  Overwrite("objects/README", "no object");

  IcsLimits limits;
  limits.fileSize = 50'000;
  // What stands before an object may be long, too.
  std::filesystem::resize_file(PathOf("objects/" + EntryIdOfUid("large")), 2'000'000);
  const ParsedCalendar calendar = ReadMirror(folder_, Year(2026), limits);
  EXPECT_EQ(calendar.name, "Team");
  EXPECT_THAT(SubjectsOf(calendar), UnorderedElementsAre("A", "Same UID"));
  EXPECT_THAT(
      ReportsOf(calendar),
      testing::IsSupersetOf({HasSubstr(ShortHash("/c/none") + ": the object is no calendar"),
                             HasSubstr("there is no DTSTART"),
                             HasSubstr(damaged + ": the object is damaged on this disk"),
                             HasSubstr("the object is larger than")}));
  EXPECT_EQ(mirror_.State().syncToken, "");
}

TEST_F(MirrorReading, FurtherAppointmentsOfAnObjectAreShownForReadingOnly) {
  Put("a", Calendar(Event("UID:b\nSUMMARY:Other\nDTSTART:20260301\nRECURRENCE-ID:20260301\n") +
                    Event("UID:a\nSUMMARY:Main\nDTSTART:20260302\n")));
  const auto items = ReadMirror(folder_, Year(2026)).items;
  ASSERT_THAT(items, SizeIs(2));
  for (const CalendarItem& item : items) {
    const bool isMain = item.fields.subject == "Main";
    EXPECT_EQ(item.entryId.size(), isMain ? 32u : 65u);
    if (isMain) {
      writer_.WriteDeletion(item);
    } else {
      EXPECT_THAT(FaultOf([&] { writer_.WriteDeletion(item); }), HasSubstr("one of several"));
    }
  }
}

TEST_F(MirrorReading, BoundsHoldOverAllObjects) {
  const std::string daily = "DTSTART:20260101\nRRULE:FREQ=DAILY\n";
  for (const std::string uid : {"a", "b", "c"}) Put(uid, ObjectOf(uid, "SUMMARY:Daily\n" + daily));
  IcsLimits limits;
  limits.occurrences = 800;
  limits.components = 2;
  ParsedCalendar calendar = ReadMirror(folder_, Year(2026), limits);
  EXPECT_THAT(calendar.items, SizeIs(2));
  EXPECT_THAT(ReportsOf(calendar), ElementsAre(HasSubstr("more than 2 objects")));
  limits.components = 3;
  calendar = ReadMirror(folder_, Year(2026), limits);
  std::size_t occurrences = 0;
  for (const CalendarItem& item : calendar.items) occurrences += item.occurrences.size();
  EXPECT_EQ(occurrences, 800u);
  EXPECT_THAT(ReportsOf(calendar), ElementsAre(HasSubstr("more than 800 in a year")));
}

TEST_F(MirrorReading, AZoneThatSeveralObjectsDefineIsReadOnce) {
  const std::string zone =
      "BEGIN:VTIMEZONE\nTZID:Here\nBEGIN:STANDARD\nRRULE:FREQ=SECONDLY\nTZOFFSETTO:+0100\n"
      "END:STANDARD\nEND:VTIMEZONE\n";
  for (const std::string uid : {"a", "b", "c"}) {
    Put(uid, Calendar(zone + Event("UID:" + uid + "\nDTSTART;TZID=Here:20260301T100000\n")));
  }
  EXPECT_THAT(ReportsOf(ReadMirror(folder_, Year(2026))),
              ElementsAre(HasSubstr("no zone's rule"), HasSubstr("\"Here\" is not known")));
}

TEST_F(MirrorReading, TwoProgramsThatEditOneAppointmentKeepEachOthersFields) {
  Put("a", ObjectOf("a", "SUMMARY:s\nLOCATION:l\nDTSTART:20260301\n"));
  const auto edit = [&](const std::function<ItemChange(const std::string&)>& changeTo) {
    return [this, changeTo] {
      Mirror own(folder_, std::chrono::seconds(20));
      MirrorWriter writer(own, "Team");
      for (int i = 0; i < 40; ++i) {
        const ItemChange change = changeTo(std::to_string(i));
        const CalendarItem item = ReadMirror(folder_, Year(2026)).items.at(0);
        CalendarItem after = WithChange(item, change);
        after.lastModified = Moment(i);
        writer.WriteChange(after, change);
      }
      return 0;
    };
  };
  ChildProcess one(edit([](const std::string& text) { return ItemChange{.subject = text}; }));
  ChildProcess other(edit([](const std::string& text) { return ItemChange{.location = text}; }));
  EXPECT_EQ(one.Wait(), 0);
  EXPECT_EQ(other.Wait(), 0);
  const CalendarItem item = ReadMirror(folder_, Year(2026)).items.at(0);
  EXPECT_EQ(item.fields.subject + item.fields.location, "3939");
  EXPECT_THAT(outbox_.Notes(), IsEmpty());
}

}  // namespace
}  // namespace velkor
