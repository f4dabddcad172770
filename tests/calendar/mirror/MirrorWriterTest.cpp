// tests/calendar/mirror/MirrorWriterTest.cpp: saving into a mirror as into a calendar file.
#include "calendar/mirror/MirrorWriter.h"

#include <gmock/gmock.h>

#include <sys/resource.h>
#include <csignal>

#include "tests/calendar/mirror/MirrorCase.h"
#include "tests/platform/desktop/ChildProcess.h"
#include "values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

class MirrorSaving : public MirrorCase {
 protected:
  ParsedCalendar Read() const { return ReadMirror(folder_, Year(2026)); }
  void Reload() { folder.Replace(Read().items, Year(2026)); }

  CalendarFolder folder{"Team", "team", 1};
  MirrorWriter toDisk_{mirror_, "Team", [this] { Reload(); }};
};

CalendarItem Item(const std::string& subject, Date start, Date end) {
  CalendarItem item;
  item.fields.subject = subject;
  item.start = start;
  item.end = end;
  return item;
}

TEST_F(MirrorSaving, AFolderSavesAsIntoAFile) {
  folder.SetWriter(&toDisk_);
  Reload();
  const auto saved = folder.SaveNew(Item("New", Moment(0), Moment(60)), true, Moment(0));
  folder.SaveChange(saved->entryId, {.categories = std::vector<std::string>{"Old"}}, Moment(1));
  EXPECT_TRUE(folder.ReplaceCategory("Old", "Other", Moment(2)));
  EXPECT_THAT(folder.Find(saved->entryId)->fields.categories, ElementsAre("Other"));
  EXPECT_THAT(outbox_.Prepare(saved->entryId)->bytes,
              testing::AllOf(HasSubstr("CATEGORIES:Other"), HasSubstr("BEGIN:VALARM")));
  const auto hold = folder.Hold();
  folder.Delete(saved->entryId);
  EXPECT_THAT(Read().items, IsEmpty());
  EXPECT_THROW(folder.SaveChange(saved->entryId, {.subject = "x"}, Moment(3)), Error);
}

TEST_F(MirrorSaving, AnotherProgramsDeletionAndARuleOfTheServerAreTold) {
  mirror_.Put("/c/a.ics", "1", ObjectOf("a", "SUMMARY:One\nDTSTART:20260301\n"));
  CalendarItem item = Read().items.at(0);
  mirror_.Remove("/c/a.ics");
  const auto change = [&] { toDisk_.WriteChange(item, {.subject = "One"}); };
  EXPECT_THAT(FaultOf(change), HasSubstr("no longer in the calendar Team"));
  mirror_.SetState({.displayName = "Team", .readOnly = true});
  EXPECT_THAT(FaultOf(change), HasSubstr("can only be read"));
  EXPECT_THROW(toDisk_.WriteNew(item, false), Error);
  EXPECT_THROW(toDisk_.WriteCategory("a", "b", Moment(0)), Error);
  EXPECT_THROW(toDisk_.TakeWhole(ObjectOf("b", "DTSTART:20260301\n"), Moment(0)), Error);
  EXPECT_THAT(mirror_.Files().Names("pending"), IsEmpty());
}

TEST_F(MirrorSaving, ACategoryIsReplacedInChangedOccurrencesToo) {
  const std::string series =
      Event("UID:a\nDTSTART:20260301\nRRULE:FREQ=DAILY;COUNT=3\nCATEGORIES:Old,Kept\n") +
      Event("UID:a\nRECURRENCE-ID;VALUE=DATE:20260302\nDTSTART:20260302\nCATEGORIES:Old\n");
  mirror_.Put("/c/a.ics", "1", Calendar(series));
  mirror_.Put("/c/b.ics", "1", ObjectOf("b", "DTSTART:20260301\nCATEGORIES:Kept\n"));
  toDisk_.WriteCategory("Old", "New", Moment(0));
  EXPECT_THAT(mirror_.Files().Names("pending"), ElementsAre(EntryIdOfUid("a")));
  // Somebody else adds a category meanwhile.
  std::string theirs = Calendar(series);
  theirs.replace(theirs.find("Old,Kept"), 8, "Old,Kept,Theirs");
  mirror_.Put("/c/a.ics", "2", theirs);
  const std::string sent = outbox_.Prepare(EntryIdOfUid("a"))->bytes;
  EXPECT_THAT(sent, testing::AllOf(HasSubstr("New,Kept,Theirs"), HasSubstr("CATEGORIES:New"),
                                   Not(HasSubstr("Old"))));
  EXPECT_THAT(outbox_.Notes(), IsEmpty());
}

TEST_F(MirrorSaving, ACategoryWhoseReplacementWasStoppedWaitsInAllObjects) {
  mirror_.Put("/c/a.ics", "1", ObjectOf("a", "DTSTART:20260301\nCATEGORIES:Old\n"));
  Overwrite("category.json", "{\"from\":\"Old\",\"to\":\"New\",\"time\":1767312000}");
  EXPECT_THAT(outbox_.Waiting(), ElementsAre(EntryIdOfUid("a")));
  EXPECT_THAT(Read().items.at(0).fields.categories, ElementsAre("New"));
}

TEST_F(MirrorSaving, AWholeAppointmentIsTakenOverByteForByte) {
  const std::string whole =
      ObjectOf("a",
               "SUMMARY:One\nX-A;B=\"c;d\":e\\,f\nDTSTART;TZID=X:20260301T100000\n"
               "DTEND;TZID=X:20260301T110000\nATTENDEE;PARTSTAT=ACCEPTED:mailto:a@example.org\n");
  const CalendarItem taken = toDisk_.TakeWhole(whole, Moment(0));
  EXPECT_EQ(taken.entryId, EntryIdOfUid("a"));
  EXPECT_EQ(outbox_.Prepare(taken.entryId)->bytes, whole);
  EXPECT_EQ(toDisk_.WholeOf(taken.entryId), whole);
  EXPECT_EQ(toDisk_.TakeWhole(whole, Moment(0)).entryId, taken.entryId);
  EXPECT_THAT(FaultOf([&] {
                toDisk_.TakeWhole(ObjectOf("a", "SUMMARY:Other\nDTSTART:20260301\n"), Moment(0));
              }),
              HasSubstr("already"));
  EXPECT_THAT(FaultOf([&] { toDisk_.TakeWhole("x", Moment(0)); }), HasSubstr("no appointment"));
  const CalendarItem without = toDisk_.TakeWhole(Calendar(Event("DTSTART:20260301\n")), Moment(0));
  EXPECT_THAT(toDisk_.WholeOf(without.entryId), HasSubstr("UID:"));
}

TEST_F(MirrorSaving, AMomentIsASecondOnTheServerAndReadsAsTheMoment) {
  const Date moment = Moment(90);
  const CalendarItem saved = toDisk_.WriteNew(Item("Record", moment, moment), false);
  const auto expectMoment = [&](Date at) {
    EXPECT_EQ(Read().items.at(0).start, at);
    EXPECT_EQ(Read().items.at(0).end, at);
  };
  EXPECT_THAT(outbox_.Prepare(saved.entryId)->bytes, HasSubstr("DTEND:20260102T013001Z\r\n"));
  expectMoment(moment);
  ItemChange change{.start = Moment(95), .end = Moment(95), .allDay = false};
  CalendarItem after = WithChange(Read().items.at(0), change);
  toDisk_.WriteChange(after, change);
  expectMoment(Moment(95));
  EXPECT_THAT(toDisk_.WholeOf(saved.entryId), HasSubstr("DTEND:20260102T013501Z\r\n"));
  change.end = Moment(100);
  toDisk_.WriteChange(WithChange(after, change), change);
  EXPECT_EQ(Read().items.at(0).end, Moment(100));
  // Nobody else's second is a moment; somebody's moment that is moved here is a second there.
  mirror_.Put("/c/b.ics", "1", ObjectOf("b", "DTSTART:20260102T000000Z\nDTEND:20260102T000001Z\n"));
  const CalendarItem second = Read().items.at(Read().items[0].entryId == saved.entryId ? 1 : 0);
  EXPECT_EQ(second.end.Seconds() - second.start.Seconds(), 1);
  const auto moved = toDisk_.TakeWhole(
      ObjectOf("c", "DTSTART:20260102T000000Z\nDURATION:PT0S\nRRULE:FREQ=DAILY\n"), Moment(0));
  EXPECT_THAT(toDisk_.WholeOf(moved.entryId), HasSubstr("DTEND:20260102T000001Z"));
}

TEST_F(MirrorSaving, AFullDiskIsToldAndNothingIsLost) {
  mirror_.Put("/c/a.ics", "1", ObjectOf("a", "SUMMARY:One\nDTSTART:20260301\n"));
  const CalendarItem shown = Read().items.at(0);
  const CalendarItem kept = toDisk_.WriteNew(Item("Kept", Moment(0), Moment(60)), false);
  ChildProcess child([&] {
    std::signal(SIGXFSZ, SIG_IGN);
    const rlimit few{200, 200};
    setrlimit(RLIMIT_FSIZE, &few);
    int faults = 0;
    const auto expectFault = [&](const std::function<void()>& save) {
      if (FaultOf(save).find("could not be saved: ") == std::string::npos) ++faults;
    };
    expectFault([&] { toDisk_.WriteNew(kept, false); });
    expectFault([&] { toDisk_.WriteChange(kept, {.subject = "Lost"}); });
    expectFault([&] { toDisk_.WriteDeletion(shown); });
    expectFault([&] { mirror_.Put("/c/a.ics", "2", std::string(1000, 'x')); });
    expectFault([&] { mirror_.SetState({.syncToken = std::string(1000, 'x')}); });
    return faults;
  });
  EXPECT_EQ(child.Wait(), 0);
  EXPECT_THAT(Read().items, SizeIs(2));
  EXPECT_THAT(Read().diagnostics, IsEmpty());
  EXPECT_EQ(mirror_.State(), MirrorState());
  EXPECT_FALSE(std::filesystem::exists(PathOf(".work")));
  toDisk_.WriteDeletion(kept);
  EXPECT_THAT(Read().items, SizeIs(1));
}

}  // namespace
}  // namespace velkor
