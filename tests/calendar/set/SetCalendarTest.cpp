// tests/calendar/set/SetCalendarTest.cpp: several calendars as one folder, each with its own
// trouble, and moves between them.
#include "calendar/set/SetCalendar.h"

#include <gmock/gmock.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>

#include "calendar/mirror/Outbox.h"
#include "calendar/set/LocalPlaces.h"
#include "tests/calendar/ics/CalendarFileCase.h"
#include "tests/platform/desktop/ChildProcess.h"
#include "values/Text.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::UnorderedElementsAre;
using Texts = std::vector<std::string>;
namespace fs = std::filesystem;

std::string Record(const std::string& title, const std::string& list) {
  return Event("UID:r" + title + "\nSUMMARY:Colours: " + title + "\nDESCRIPTION:" + list +
               "\nDTSTART:20110101T013000\n");
}

class SetCalendarCase : public CalendarFileCase {
 protected:
  SetCalendarCase() {
    setenv("XDG_CACHE_HOME", (folder_ + "/cache").c_str(), 1);
    setenv("XDG_DATA_HOME", (folder_ + "/data").c_str(), 1);
    WriteTo("anna.ics", Calendar("X-WR-CALNAME:Anna\n" + Named("a") + Record("", "red")));
    WriteTo("ben.ics", Calendar(Named("a") + Named("b") + Record("", "blue")));
    set_.path = folder_ + "/team.yearplan";
    anna_ = AddSource(set_, {.location = folder_ + "/anna.ics"});
    ben_ = AddSource(set_, {.location = folder_ + "/ben.ics"});
    SaveSet(set_);
  }

  std::unique_ptr<SetCalendar> Open(const WorkerOptions& worker = {}) const {
    SetCalendarOptions options;
    options.worker = worker;
    options.dataFolder = folder_ + "/data/outlookvelkor";
    options.isRecord = [](std::string_view subject) { return subject.starts_with("Colours: "); };
    return std::make_unique<SetCalendar>(set_.path, Year(2026), options);
  }
  void Change(const std::string& id, const std::function<void(SetSource&)>& edit) const {
    UpdateSet(set_.path, [&](CalendarSet& set) { edit(*FindSource(set, id)); });
  }
  /// "ID subject" with the letter of the source.
  Texts Shown(SetCalendar& calendar) const {
    Texts shown;
    for (const auto& item : calendar.Folder().AllItems()) {
      const SetSource* const source = calendar.SourceOf(item->entryId);
      const std::string from = source == nullptr ? "?" : source->id == anna_ ? "A" : "B";
      const bool isRecord = item->fields.subject.starts_with("Colours");
      shown.push_back(from + " " + (isRecord ? item->fields.body : item->fields.subject));
    }
    return shown;
  }
  static std::string IdOf(SetCalendar& calendar, const std::string& sourceId,
                          const std::string& subject) {
    for (const auto& item : calendar.Folder().AllItems()) {
      const bool isThere = item->entryId.starts_with(sourceId);
      if (isThere && item->fields.subject == subject) return item->entryId;
    }
    ADD_FAILURE() << subject << " is not in " << sourceId;
    return {};
  }
  static void Rename(SetCalendar& calendar, const std::string& id, const std::string& subject) {
    ItemChange change;
    change.subject = subject;
    calendar.Folder().SaveChange(id, change, Date::FromYmd(2026, 2, 3));
  }
  std::string TextOf(const std::string& name) const {
    std::ifstream file(folder_ + "/" + name, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
  }
  static std::string TroubleOf(const SetCalendar& calendar, const std::string& id) {
    for (const PlaceState& state : calendar.PlaceStates()) {
      if (state.id == id) return state.trouble;
    }
    return "no such calendar";
  }

  CalendarSet set_;
  std::string anna_;
  std::string ben_;
};

TEST_F(SetCalendarCase, OneFolderOfAllThatAreShownWithTheColoursOfOne) {
  const auto calendar = Open();
  EXPECT_THAT(Shown(*calendar), ElementsAre("A a", "A red", "B a", "B b"));
  EXPECT_EQ(calendar->PlaceStates()[0].name, "Anna");
  const std::string same = IdOf(*calendar, anna_, "a").substr(8);
  EXPECT_EQ(IdOf(*calendar, ben_, "a").substr(8), same) << "the same appointment in both";

  Change(anna_, [](SetSource& source) { source.shown = false; });
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_THAT(Shown(*calendar), ElementsAre("A red", "B a", "B b")) << "the colours stay";
  EXPECT_EQ(calendar->DefaultForNew(), ben_);
  UpdateSet(set_.path, [&](CalendarSet& set) { set.defaultSource = ben_; });
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_THAT(Shown(*calendar), ElementsAre("B a", "B b", "B blue"));
  Change(anna_, [](SetSource& source) { source.shown = true; });
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_THAT(Shown(*calendar), ElementsAre("A a", "B a", "B b", "B blue"));
  EXPECT_FALSE(calendar->CheckForChanges());
}

TEST_F(SetCalendarCase, WhatIsSavedGoesToItsOwnCalendarAndIsNoNews) {
  const auto calendar = Open();
  const auto other = Open();
  Rename(*calendar, IdOf(*calendar, ben_, "a"), "A2");
  EXPECT_THAT(TextOf("ben.ics"), HasSubstr("SUMMARY:A2"));
  EXPECT_THAT(TextOf("anna.ics"), HasSubstr("SUMMARY:a\n"));
  CalendarItem item;
  item.fields.subject = "new";
  item.start = item.end = Date::FromYmd(2026, 5, 1);
  calendar->Folder().SaveNew(item, false, item.start);
  calendar->ChooseForNew(ben_);
  item.fields.subject = "for ben";
  calendar->Folder().SaveNew(item, false, item.start);
  item.fields.subject = "for the default again";
  calendar->Folder().SaveNew(item, false, item.start);
  EXPECT_FALSE(calendar->CheckForChanges());
  EXPECT_TRUE(other->CheckForChanges());
  EXPECT_THAT(Shown(*other),
              UnorderedElementsAre("A a", "A red", "A new", "A for the default again", "B A2",
                                   "B b", "B for ben"));
  calendar->Folder().Delete(IdOf(*calendar, ben_, "for ben"));
  calendar->Folder().ReplaceCategory("x", "y", item.start);
  EXPECT_THAT(TextOf("ben.ics"), Not(HasSubstr("for ben")));
}

TEST_F(SetCalendarCase, ACalendarThatFailsKeepsItsItemsAndHidesNoOthers) {
  const auto calendar = Open();
  const std::string good = TextOf("ben.ics");
  for (const std::string state : {"", "garbage", "gone"}) {
    if (state == "gone") {
      fs::remove(folder_ + "/ben.ics");
    } else {
      WriteTo("ben.ics", state);
    }
    WriteTo("anna.ics", Calendar(Named("a " + state)));
    EXPECT_TRUE(calendar->CheckForChanges());
    EXPECT_THAT(Shown(*calendar), ElementsAre("A a " + state, "B a", "B b"));
    EXPECT_THAT(TroubleOf(*calendar, ben_), HasSubstr("ben.ics"));
    EXPECT_EQ(TroubleOf(*calendar, anna_), "");
    EXPECT_FALSE(calendar->CheckForChanges()) << "told once";
    EXPECT_THAT(FaultOf([&] { Rename(*calendar, IdOf(*calendar, ben_, "b"), "x"); }),
                HasSubstr("ben.ics"));
    const auto late = Open();
    EXPECT_THAT(Shown(*late), ElementsAre("A a " + state, "B a", "B b")) << "the last good copy";
    EXPECT_THAT(TroubleOf(*late, ben_), HasSubstr("ben.ics"));
  }
  WriteTo("ben.ics", good);
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_EQ(TroubleOf(*calendar, ben_), "");
  Rename(*calendar, IdOf(*calendar, ben_, "b"), "c");

  WriteTo("huge.ics", Calendar(""));
  fs::resize_file(folder_ + "/huge.ics", std::uintmax_t{65} << 20);
  const std::string pipe = folder_ + "/pipe";
  ASSERT_EQ(mkfifo(pipe.c_str(), 0600), 0);
  UpdateSet(set_.path, [&](CalendarSet& set) {
    for (const char* name : {"huge.ics", "pipe", "none.ics"}) {
      AddSource(set, {.location = folder_ + "/" + name});
    }
    AddSource(set, {.kind = SourceKind::Address, .location = "https://example.org/x.ics"});
    SetSource again = set.sources[0];
    again.id = "00000000";
    set.sources.push_back(again);
  });
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_EQ(Shown(*calendar).size(), 3U);
  Texts troubles;
  for (const PlaceState& state : calendar->PlaceStates()) troubles.push_back(state.trouble);
  EXPECT_THAT(troubles, ElementsAre("", "", HasSubstr("64 MiB"), HasSubstr("no ordinary file"),
                                    HasSubstr("does not exist"), HasSubstr("not been fetched yet"),
                                    HasSubstr("in the set already")));
}

TEST_F(SetCalendarCase, TheCacheOfAYearKeepsWhatCannotBeReadNow) {
  const auto refresh = [&] {
    WorkerProcess worker({"year", "2026", "1", folder_ + "/cache.tmp", folder_ + "/work.tmp",
                          FolderIdOf(set_.path), set_.path},
                         {});
    worker.Wait();
    return worker.Answer();
  };
  const auto events = [&] {
    std::string bytes = TextOf("cache.tmp");
    return std::pair(Split(bytes, anna_).size() - 1, Split(bytes, ben_).size() - 1);
  };
  EXPECT_THAT(refresh(), testing::StartsWith("1 0 "));
  EXPECT_THAT(events(), testing::Pair(1, 2));
  fs::remove(folder_ + "/ben.ics");
  WriteTo("anna.ics", Calendar(Named("a") + Named("more")));
  refresh();
  EXPECT_THAT(events(), testing::Pair(2, 2)) << "the last good copy";
  fs::remove_all(folder_ + "/cache");
  const std::string before = TextOf("cache.tmp");
  refresh();
  EXPECT_EQ(TextOf("cache.tmp"), before) << "what the cache had";
  Change(ben_, [](SetSource& source) { source.shown = false; });
  refresh();
  EXPECT_THAT(events(), testing::Pair(2, 0));
  WriteTo("team.yearplan", "{");
  EXPECT_THAT(refresh(), HasSubstr("no valid JSON"));
  EXPECT_THAT(events(), testing::Pair(2, 0));
}

TEST_F(SetCalendarCase, ASetThatIsDamagedOrGoneWhileOpenLeavesAllAsItWas) {
  const auto calendar = Open();
  const std::string good = TextOf("team.yearplan");
  const Texts before = Shown(*calendar);
  for (const std::string bad : {"{", "{\"yearplan\": 2}", "gone"}) {
    if (bad == "gone") {
      fs::remove(set_.path);
    } else {
      WriteTo("team.yearplan", bad);
    }
    EXPECT_THAT(FaultOf([&] { calendar->CheckForChanges(); }), HasSubstr("team.yearplan"));
    EXPECT_FALSE(calendar->CheckForChanges()) << "told once";
    EXPECT_EQ(Shown(*calendar), before);
    EXPECT_THROW(Open(), Error);
  }
  WriteTo("team.yearplan", good);
  calendar->CheckForChanges();
  EXPECT_EQ(Shown(*calendar), before);
  EXPECT_NO_THROW(Open());
}

TEST_F(SetCalendarCase, HundredsOfCalendarsAreReadAndFollowed) {
  UpdateSet(set_.path, [&](CalendarSet& set) {
    for (int i = 0; i < 300; ++i) {
      const std::string name = "c" + std::to_string(i);
      if (i % 3 != 0) WriteTo(name + ".ics", Calendar(Named(name)));
      AddSource(set, {.location = folder_ + "/" + name + ".ics"});
    }
  });
  const auto calendar = Open();
  EXPECT_EQ(Shown(*calendar).size(), 204U);
  WriteTo("c7.ics", Calendar(Named("c7") + Named("seven")));
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_EQ(Shown(*calendar).size(), 205U);
}

TEST_F(SetCalendarCase, ACalendarThatTakesTooLongOrTooMuchIsGivenUpAndThoseAfterItAreRead) {
  std::string events;
  for (int i = 0; i < 250'000; ++i) events += "BEGIN:VEVENT\nDTSTART:20260101\nEND:VEVENT\n";
  WriteTo("slow.ics", Calendar(events));
  std::string slow;
  UpdateSet(set_.path, [&](CalendarSet& set) {
    slow = AddSource(set, {.location = folder_ + "/slow.ics"});
    std::rotate(set.sources.begin(), set.sources.end() - 1, set.sources.end());
  });
  const Texts others{"A a", "B a", "B b"};
  const auto inTime = Open({.program = {}, .timeLimit = std::chrono::milliseconds(1000)});
  EXPECT_THAT(TroubleOf(*inTime, slow), HasSubstr("slow.ics could not be read: "));
  EXPECT_EQ(Shown(*inTime), others);
#ifndef __SANITIZE_ADDRESS__
  const auto small = Open({.program = {}, .memoryLimit = std::size_t{200} << 20});
  EXPECT_THAT(TroubleOf(*small, slow), HasSubstr("memory"));
  EXPECT_EQ(Shown(*small), others);
#endif
}

TEST_F(SetCalendarCase, BackgroundCalendarsGiveDaysOffAndNoItems) {
  WriteTo("ben.ics",
          Calendar(Event("UID:1\nSUMMARY:Feast\nDTSTART;VALUE=DATE:20260503\nRRULE:FREQ=YEARLY\n") +
                   Event("UID:2\nSUMMARY:Summer\nDTSTART;VALUE=DATE:20260720\n"
                         "DTEND;VALUE=DATE:20260830\n") +
                   Event("UID:3\nSUMMARY:Bell\nDTSTART:20260720T080000\nDTEND:20260720T090000\n")));
  Change(ben_, [](SetSource& source) { source.background = true; });
  const auto calendar = Open();
  EXPECT_THAT(Shown(*calendar), ElementsAre("A a", "A red"));
  const std::vector<DayOff> days = calendar->DaysOff();
  ASSERT_EQ(days.size(), 12U) << "eleven feasts from 2026 on and one summer";
  EXPECT_EQ(days[10], (DayOff{Date::FromYmd(2036, 5, 3), Date::FromYmd(2036, 5, 3), "Feast"}));
  EXPECT_EQ(days[11], (DayOff{Date::FromYmd(2026, 7, 20), Date::FromYmd(2026, 8, 29), "Summer"}));
}

/// A series with a change, an older revision, a zone, an alarm, an attachment and unknown lines.
std::string Rich() {
  return "BEGIN:VTIMEZONE\nTZID:Own\nBEGIN:STANDARD\nDTSTART:19700101T000000\nTZOFFSETFROM:+0545\n"
         "TZOFFSETTO:+0545\nEND:STANDARD\nEND:VTIMEZONE\n" +
         Event(
             "UID:rich\nSUMMARY:Größe\n , folded\nDTSTART;TZID=Own:20260105T090000\n"
             "DTEND;TZID=Own:20260105T100000\nRRULE:FREQ=WEEKLY;COUNT=5\nX-OTHER;P=\"q;r\":1\n"
             "ATTACH;VALUE=BINARY;ENCODING=BASE64:QUJD\nBEGIN:VALARM\nACTION:AUDIO\n"
             "TRIGGER:-PT5M\nX-SOUND:bell\nEND:VALARM\n") +
         Event(
             "UID:rich\nRECURRENCE-ID;TZID=Own:20260112T090000\nSUMMARY:moved once\n"
             "DTSTART;TZID=Own:20260113T090000\nDTEND;TZID=Own:20260113T100000\n");
}

TEST_F(SetCalendarCase, AMoveKeepsEveryPropertyByteForByte) {
  const std::string others = Named("b");
  WriteTo("anna.ics", Calendar(Named("a")));
  WriteTo("ben.ics", Calendar(others + Rich()));
  const auto calendar = Open();
  const std::string there =
      calendar->Move(IdOf(*calendar, ben_, "Größe, folded"), anna_, Date::FromYmd(2026, 1, 1));
  EXPECT_EQ(TextOf("anna.ics"), Calendar(Named("a") + Rich()));
  EXPECT_THAT(TextOf("ben.ics"), Not(HasSubstr("UID:rich")));
  EXPECT_THAT(TextOf("ben.ics"), HasSubstr(others));
  const auto moved = calendar->Folder().Find(there);
  ASSERT_NE(moved, nullptr);
  EXPECT_EQ(moved->occurrences.size(), 5U);
  EXPECT_EQ(moved->changed.size(), 1U);
  const Texts before = Shown(*calendar);
  calendar->CheckForChanges();
  EXPECT_THAT(Shown(*calendar), testing::UnorderedElementsAreArray(before));
  calendar->Move(there, ben_, Date::FromYmd(2026, 1, 1));
  EXPECT_THAT(Shown(*calendar), ElementsAre("A a", "B b", "B Größe, folded"));
}

TEST_F(SetCalendarCase, AMoveTakesOnTheFormOfTheOtherFile) {
  std::string windows = Calendar(Named("w") + Event("UID:x\nSUMMARY:x\nLOCATION:Caf\xE9\n"
                                                    "DTSTART:20260301\n"));
  windows = Replace(windows, "\n", "\r\n");
  WriteTo("anna.ics", windows);
  WriteTo("ben.ics", Calendar(Event("UID:g\nSUMMARY:Größe\nDTSTART:20260301\n")));
  const auto calendar = Open();
  const Date now = Date::FromYmd(2026, 1, 1);
  calendar->Move(IdOf(*calendar, ben_, "Größe"), anna_, now);
  EXPECT_THAT(TextOf("anna.ics"), HasSubstr("SUMMARY:Gr\xF6\xDF"
                                            "e\r\nDTSTART"));
  calendar->Move(IdOf(*calendar, anna_, "x"), ben_, now);
  EXPECT_THAT(TextOf("ben.ics"), HasSubstr("LOCATION:Café\nDTSTART"));
}

TEST_F(SetCalendarCase, AMoveThatCannotBeMadeLosesNothing) {
  const Date now = Date::FromYmd(2026, 1, 1);
  const auto refuses = [&](const std::string& subject, const std::string& why) {
    const auto calendar = Open();
    const std::string anna = TextOf("anna.ics");
    const std::string ben = TextOf("ben.ics");
    const std::string id = IdOf(*calendar, ben_, subject);
    EXPECT_THAT(FaultOf([&] { calendar->Move(id, anna_, now); }), HasSubstr(why));
    EXPECT_EQ(TextOf("anna.ics"), anna);
    EXPECT_EQ(TextOf("ben.ics"), ben);
  };
  WriteTo("anna.ics", Calendar(Replace(Named("b"), "SUMMARY:b", "SUMMARY:other")));
  refuses("b", "has another version of the appointment \"b\" already");
  WriteTo("anna.ics", "BEGIN:VCALENDAR\nMETHOD:CANCEL\nEND:VCALENDAR\n");
  refuses("b", "METHOD:CANCEL");
  WriteTo("anna.ics",
          Calendar(Replace(Rich().substr(0, Rich().find("BEGIN:VEVENT")), "0545", "0100")));
  WriteTo("ben.ics", Calendar(Rich()));
  refuses("Größe, folded", "cannot be written into the calendar file");
  chmod((folder_ + "/anna.ics").c_str(), 0444);
  refuses("Größe, folded", "write-protected");
  chmod((folder_ + "/anna.ics").c_str(), 0644);

  // As a kill between the two steps leaves it: moved again, it is there once.
  WriteTo("anna.ics", Calendar(Rich()));
  const auto calendar = Open();
  calendar->Move(IdOf(*calendar, ben_, "Größe, folded"), anna_, now);
  EXPECT_EQ(TextOf("anna.ics"), Calendar(Rich()));
  EXPECT_THAT(TextOf("ben.ics"), Not(HasSubstr("UID:rich")));
}

TEST_F(SetCalendarCase, AMoveThatIsKilledLeavesTheAppointmentAtLeastOnce) {
  for (int round = 0; round < 20; ++round) {
    WriteTo("anna.ics", Calendar(Named("a")));
    WriteTo("ben.ics", Calendar(Rich()));
    ChildProcess child([&] {
      const auto calendar = Open();
      WriteTo("opened", "");
      calendar->Move(IdOf(*calendar, ben_, "Größe, folded"), anna_, Date::FromYmd(2026, 1, 1));
      return 0;
    });
    while (!fs::exists(folder_ + "/opened")) usleep(200);
    usleep(static_cast<useconds_t>(round * 400));
    child.Kill();
    fs::remove(folder_ + "/opened");
    const auto has = [&](const char* name) {
      return TextOf(name).find(Rich().substr(Rich().find("BEGIN:VEVENT"))) != std::string::npos;
    };
    EXPECT_TRUE(has("anna.ics") || has("ben.ics")) << round;
    const auto calendar = Open();
    if (has("ben.ics")) {
      calendar->Move(IdOf(*calendar, ben_, "Größe, folded"), anna_, Date::FromYmd(2026, 1, 1));
    }
    EXPECT_THAT(Shown(*calendar), ElementsAre("A a", "A Größe, folded"));
  }
}

/// A set with a file and a calendar on a server, which has been fetched.
class ServerCase : public SetCalendarCase {
 protected:
  ServerCase() {
    UpdateSet(set_.path, [&](CalendarSet& set) {
      set.sources.pop_back();
      ben_ = AddSource(
          set, {.kind = SourceKind::Server, .location = "https://example.org/ben/", .user = "ben"});
      place_ = LocalPlaceOf(set.sources.back(), folder_ + "/data/outlookvelkor");
    });
  }
  void Fetch(const std::string& uid, const std::string& events) const {
    Mirror(place_).Put("/ben/" + uid + ".ics", "\"1\"", Calendar(events));
  }
  std::size_t Waiting() const {
    Mirror mirror(place_);
    return Outbox(mirror).Waiting().size();
  }

  std::string place_;
};

TEST_F(ServerCase, IsReadAndSavedIntoAndTellsOfWhatWaits) {
  const auto calendar = Open();
  EXPECT_THAT(TroubleOf(*calendar, ben_), HasSubstr("has not been fetched yet"));
  Fetch("b", Named("b"));
  MirrorState state;
  state.displayName = "Ben";
  state.synchronised = 1'700'000'000;
  Mirror(place_).SetState(state);
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_THAT(Shown(*calendar), ElementsAre("A a", "A red", "B b"));
  EXPECT_EQ(calendar->PlaceStates()[1].name, "Ben");
  EXPECT_EQ(calendar->PlaceStates()[1].synchronised, state.synchronised);
  EXPECT_EQ(TroubleOf(*calendar, ben_), "");

  Rename(*calendar, IdOf(*calendar, ben_, "b"), "b2");
  EXPECT_FALSE(calendar->CheckForChanges()) << "its own save is no news";
  EXPECT_THAT(calendar->WaitingToBeSent(), ElementsAre(ben_));
  EXPECT_EQ(calendar->PlaceStates()[1].waiting, 1U);
  EXPECT_THAT(Shown(*Open()), ElementsAre("A a", "A red", "B b2"));
  Fetch("c", Named("c"));
  EXPECT_TRUE(calendar->CheckForChanges());
  EXPECT_THAT(Shown(*calendar), UnorderedElementsAre("A a", "A red", "B b2", "B c"));

  state.readOnly = true;
  state.trouble = "The server was not reached.";
  state.offline = true;
  Mirror(place_).SetState(state);
  EXPECT_TRUE(calendar->PlaceStates()[1].readOnly);
  EXPECT_TRUE(calendar->PlaceStates()[1].offline);
  EXPECT_EQ(TroubleOf(*calendar, ben_), state.trouble);
  EXPECT_THAT(FaultOf([&] { Rename(*calendar, IdOf(*calendar, ben_, "b2"), "x"); }),
              HasSubstr("can only be read"));
}

TEST_F(ServerCase, MovesToAndFromAServerKeepEveryProperty) {
  WriteTo("anna.ics", Calendar(Rich()));
  Fetch("b", Named("b"));
  const auto calendar = Open();
  const Date now = Date::FromYmd(2026, 1, 1);
  const std::string there = calendar->Move(IdOf(*calendar, anna_, "Größe, folded"), ben_, now);
  EXPECT_THAT(TextOf("anna.ics"), Not(HasSubstr("UID:rich")));
  ASSERT_NE(calendar->Folder().Find(there), nullptr);
  EXPECT_EQ(calendar->Folder().Find(there)->occurrences.size(), 5U);
  EXPECT_EQ(Waiting(), 1U);
  WriteTo("anna.ics", Calendar(Rich()));
  calendar->CheckForChanges();
  calendar->Move(IdOf(*calendar, anna_, "Größe, folded"), ben_, now);
  EXPECT_THAT(TextOf("anna.ics"), Not(HasSubstr("UID:rich"))) << "as after a kill in between";

  const std::string back = calendar->Move(there, anna_, now);
  EXPECT_EQ(Waiting(), 0U);
  const std::string text = Replace(TextOf("anna.ics"), "\r\n", "\n");
  EXPECT_THAT(text, HasSubstr(Rich().substr(Rich().find("BEGIN:VEVENT"))));
  EXPECT_EQ(calendar->Folder().Find(back)->changed.size(), 1U);
  calendar->Move(IdOf(*calendar, ben_, "b"), anna_, now);
  EXPECT_THAT(Shown(*Open()), UnorderedElementsAre("A Größe, folded", "A b"));
  EXPECT_EQ(Waiting(), 1U) << "the deletion";
}

TEST_F(SetCalendarCase, CalendarsOfOneFolderAreHeldTogether) {
  const auto calendar = Open();
  const auto hold = calendar->Folder().Hold();
  Rename(*calendar, IdOf(*calendar, ben_, "b"), "held");
  Rename(*calendar, IdOf(*calendar, anna_, "a"), "too");
  CalendarFile other(folder_ + "/anna.ics", {.patience = std::chrono::milliseconds(50)});
  EXPECT_THAT(FaultOf([&] { other.Replace([](const std::string& b) { return b + "x"; }); }),
              HasSubstr("another program holds it"));
}

}  // namespace
}  // namespace velkor
