// tests/calendar/mirror/OutboxTest.cpp: what becomes of edits beside what others do.
#include "calendar/mirror/Outbox.h"

#include <gmock/gmock.h>

#include "tests/calendar/mirror/MirrorCase.h"
#include "values/Error.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

/// One appointment that both sides have, on a server that keeps what it is sent.
class OutboxEdits : public MirrorCase {
 protected:
  OutboxEdits() { Theirs(Lines("One", "Here"), "1"); }

  static std::string Lines(const std::string& subject, const std::string& place,
                           const std::string& more = "") {
    return "DTSTART:20260301T100000Z\nDTEND:20260301T110000Z\nSUMMARY:" + subject +
           "\nLOCATION:" + place + "\nX-OTHER;A=b:kept\n" + more;
  }
  /// The 12:00 of LastModified is minute 720.
  static std::string LastModified(const std::string& time = "120000") {
    return "LAST-MODIFIED:20260102T" + time + "Z\n";
  }
  void Theirs(const std::string& lines, const std::string& etag) {
    mirror_.Put(Href, etag, ObjectOf("a", lines));
  }
  void Change(const ItemChange& change, int minute = 0) {
    const auto items = ReadMirror(folder_, Year(2026)).items;
    CalendarItem after = WithChange(items.at(0), change);
    after.lastModified = Moment(minute);
    writer_.WriteChange(after, change);
  }
  /// "subject, place, categories" of all that is shown.
  std::vector<std::string> Shown() const {
    std::vector<std::string> all;
    for (const CalendarItem& item : ReadMirror(folder_, Year(2026)).items) {
      std::string text = item.fields.subject + ", " + item.fields.location;
      for (const std::string& name : item.fields.categories) text += ", " + name;
      all.push_back(text);
    }
    return all;
  }
  /// "subject: mine over theirs".
  std::vector<std::string> Notes() const {
    std::vector<std::string> all;
    for (const MirrorNote& note : outbox_.Notes()) {
      all.push_back(note.field + ": " + note.kept + " over " + note.other +
                    (note.mineKept ? " (mine)" : " (theirs)"));
    }
    return all;
  }
  void Accept(const Outgoing& sent, const std::string& etag) {
    const std::string href = sent.kind == EditKind::Create ? "/c/" + sent.href : sent.href;
    outbox_.Sent(sent, href, etag, sent.bytes);
  }

  static constexpr const char* Href = "/c/a.ics";
  const std::string id_ = EntryIdOfUid("a");
};

TEST_F(OutboxEdits, AreShownAtOnceAndSentWithTheMarkOfWhatTheyChange) {
  Change({.subject = "Mine"});
  EXPECT_THAT(Shown(), ElementsAre("Mine, Here"));
  EXPECT_THAT(outbox_.Waiting(), ElementsAre(id_));
  const Outgoing sent = *outbox_.Prepare(id_);
  EXPECT_EQ(sent.kind, EditKind::Change);
  EXPECT_EQ(sent.href, Href);
  EXPECT_EQ(sent.etag, "1");
  EXPECT_THAT(sent.bytes, HasSubstr("SUMMARY:Mine\nLOCATION:Here\nX-OTHER;A=b:kept\n"));
  Accept(sent, "2");
  EXPECT_THAT(outbox_.Waiting(), IsEmpty());
  EXPECT_THAT(Shown(), ElementsAre("Mine, Here"));
  EXPECT_EQ(mirror_.Object(id_)->key.etag, "2");
}

TEST_F(OutboxEdits, OfTwoPeopleAreBothKeptAndOfOneFieldTheLaterValue) {
  struct Case {
    ItemChange mine;
    int minute;
    std::string theirs;
    std::int64_t clockAhead;
    std::vector<std::string> shown;
    std::vector<std::string> notes;
  };
  const std::string theirs = Lines("Theirs", "Here", LastModified());
  const Case cases[] = {
      {{.location = "There"}, 0, theirs, 0, {"Theirs, There"}, {}},
      {{.subject = "Mine"}, 721, theirs, 0, {"Mine, Here"}, {"subject: Mine over Theirs (mine)"}},
      {{.subject = "Mine"},
       719,
       theirs,
       0,
       {"Theirs, Here"},
       {"subject: Theirs over Mine (theirs)"}},
      {{.subject = "Mine"}, 719, theirs, 90, {"Mine, Here"}, {"subject: Mine over Theirs (mine)"}},
      {{.subject = "Theirs"}, 0, theirs, 0, {"Theirs, Here"}, {}},
      {{.subject = "Mine", .location = "There"},
       0,
       theirs,
       0,
       {"Theirs, There"},
       {"subject: Theirs over Mine (theirs)"}},
      {{.start = Moment(600), .end = Moment(660), .allDay = false},
       9000,
       Lines("One", "Here", "RRULE:FREQ=DAILY;COUNT=2\n" + LastModified()),
       0,
       {"One, Here"},
       {"time: 2026-03-01 20:00 to 2026-03-01 21:00 over 2026-01-02 20:00 to 2026-01-02 21:00 "
        "(theirs)"}},
  };
  int etag = 10;
  for (const Case& one : cases) {
    Theirs(Lines("One", "Here"), std::to_string(++etag));
    Change(one.mine, one.minute);
    Theirs(one.theirs, std::to_string(++etag));
    if (const auto sent = outbox_.Prepare(id_, one.clockAhead)) {
      EXPECT_EQ(sent->etag, std::to_string(etag));
      EXPECT_THAT(sent->bytes, HasSubstr("X-OTHER;A=b:kept"));
      Accept(*sent, std::to_string(++etag));
    }
    std::vector<std::string> notes = Notes();
    if (!one.notes.empty() && one.notes[0].starts_with("time")) {
      // The times are those of the clock on the wall.
      for (std::string& note : notes) note = note.substr(0, 4) + note.substr(note.rfind(" ("));
      EXPECT_THAT(notes, ElementsAre("time (theirs)"));
    } else {
      EXPECT_EQ(notes, one.notes);
    }
    EXPECT_EQ(Shown(), one.shown) << one.theirs;
    EXPECT_THAT(outbox_.Waiting(), IsEmpty());
    for (const MirrorNote& note : outbox_.Notes()) outbox_.Dismiss(note.id);
  }
}

TEST_F(OutboxEdits, AValueThatGaveWayIsTakenBack) {
  Change({.subject = "Mine"}, 719);
  Theirs(Lines("Theirs", "Here", LastModified()), "2");
  EXPECT_FALSE(outbox_.Prepare(id_));
  outbox_.TakeBack(outbox_.Notes().at(0).id, Moment(800));
  EXPECT_THAT(outbox_.Notes(), IsEmpty());
  EXPECT_THAT(Shown(), ElementsAre("Mine, Here"));
  EXPECT_EQ(outbox_.Prepare(id_)->etag, "2");
  EXPECT_THROW(outbox_.TakeBack("0", Moment(0)), Error);
}

TEST_F(OutboxEdits, WhatWasSentButNotNotedIsNobodyElsesChange) {
  Change({.subject = "First"}, 1);
  const Outgoing sent = *outbox_.Prepare(id_);
  // The server has it, the program was killed, and the user goes on.
  Change({.subject = "Second"}, 2);
  mirror_.Put(Href, "2", sent.bytes);
  const Outgoing next = *outbox_.Prepare(id_);
  EXPECT_EQ(next.etag, "2");
  EXPECT_THAT(next.bytes, HasSubstr("SUMMARY:Second"));
  mirror_.Put(Href, "3", next.bytes);
  EXPECT_FALSE(outbox_.Prepare(id_));
  EXPECT_THAT(Notes(), IsEmpty());
  EXPECT_THAT(outbox_.Waiting(), IsEmpty());
}

TEST_F(OutboxEdits, WhatTheUserDoesWhileAnEditIsSentGoesOnWaiting) {
  Change({.subject = "First"});
  const Outgoing first = *outbox_.Prepare(id_);
  Change({.subject = "Second", .location = "There"});
  Accept(first, "2");
  EXPECT_THAT(Shown(), ElementsAre("Second, There"));
  const Outgoing second = *outbox_.Prepare(id_);
  EXPECT_EQ(second.etag, "2");
  outbox_.Refuse(first, "no longer asked");
  EXPECT_THAT(outbox_.Refused(), IsEmpty());
  writer_.WriteDeletion(ReadMirror(folder_, Year(2026)).items.at(0));
  Accept(second, "3");
  const Outgoing third = *outbox_.Prepare(id_);
  EXPECT_EQ(third.kind, EditKind::Delete);
  EXPECT_EQ(third.etag, "3");
  // Moved back while the deletion is sent.
  writer_.TakeWhole(ObjectOf("a", Lines("Back", "Here")), Moment(5));
  Accept(third, "");
  EXPECT_THAT(Shown(), ElementsAre("Back, Here"));
  EXPECT_EQ(outbox_.Prepare(id_)->kind, EditKind::Create);
}

TEST_F(OutboxEdits, DeletionAgainstChangeAsks) {
  struct Case {
    bool deletedHere;
    bool keepMine;
    std::vector<std::string> shownBefore;
    std::vector<std::string> shownAfter;
    std::optional<EditKind> sent;
  };
  const Case cases[] = {
      {false, true, {"Mine, Here"}, {"Mine, Here"}, EditKind::Create},
      {false, false, {"Mine, Here"}, {}, std::nullopt},
      {true, true, {}, {}, EditKind::Delete},
      {true, false, {}, {"Theirs, Here"}, std::nullopt},
  };
  for (const Case& one : cases) {
    DropEdit(mirror_, id_);
    Theirs(Lines("One", "Here"), "1");
    if (one.deletedHere) {
      writer_.WriteDeletion(ReadMirror(folder_, Year(2026)).items.at(0));
      Theirs(Lines("Theirs", "Here"), "2");
    } else {
      Change({.subject = "Mine"});
      mirror_.Remove(Href);
    }
    EXPECT_FALSE(outbox_.Prepare(id_));
    EXPECT_THAT(outbox_.Waiting(), IsEmpty());
    EXPECT_EQ(Shown(), one.shownBefore);
    const auto questions = outbox_.Questions();
    ASSERT_THAT(questions, SizeIs(1));
    EXPECT_EQ(questions[0].kind, one.deletedHere ? MirrorQuestion::Kind::ChangedThere
                                                 : MirrorQuestion::Kind::DeletedThere);
    EXPECT_EQ(questions[0].subject, one.deletedHere ? "Theirs" : "Mine");
    outbox_.Answer(questions[0].id, one.keepMine);
    EXPECT_THAT(outbox_.Questions(), IsEmpty());
    EXPECT_EQ(Shown(), one.shownAfter);
    const auto sent = outbox_.Prepare(id_);
    EXPECT_EQ(sent ? std::optional(sent->kind) : std::nullopt, one.sent);
    if (one.sent == EditKind::Delete) {
      EXPECT_EQ(sent.value_or(Outgoing{}).etag, "2");
    }
    outbox_.Answer(questions[0].id, !one.keepMine);
  }
}

TEST_F(OutboxEdits, ADeletionAsksNothingWhereOnlyOurOwnChangeWasSent) {
  Change({.subject = "Mine"});
  const Outgoing sent = *outbox_.Prepare(id_);
  writer_.WriteDeletion(ReadMirror(folder_, Year(2026)).items.at(0));
  mirror_.Put(Href, "2", sent.bytes);
  EXPECT_EQ(outbox_.Prepare(id_)->etag, "2");
  mirror_.Remove(Href);
  EXPECT_FALSE(outbox_.Prepare(id_));
  EXPECT_THAT(mirror_.Files().Names("pending"), IsEmpty());
}

TEST_F(OutboxEdits, ACreationIsTakenBackOnTheServerOnlyWhereItMayBe) {
  mirror_.Remove(Href);
  for (const bool offered : {false, true}) {
    const CalendarItem made = writer_.TakeWhole(ObjectOf("new", Lines("New", "Here")), Moment(1));
    if (offered) {
      EXPECT_EQ(outbox_.Prepare(made.entryId)->href, made.entryId + ".ics");
    }
    writer_.WriteDeletion(made);
    EXPECT_THAT(Shown(), IsEmpty());
    const auto sent = outbox_.Prepare(made.entryId);
    ASSERT_EQ(sent.has_value(), offered);
    if (!offered) continue;
    // Made for certain, then deleted by its own mark.
    EXPECT_EQ(sent->kind, EditKind::Create);
    Accept(*sent, "1");
    EXPECT_THAT(Shown(), IsEmpty());
    const Outgoing deletion = *outbox_.Prepare(made.entryId);
    EXPECT_EQ(deletion.etag, "1");
    Accept(deletion, "");
    EXPECT_THAT(outbox_.Waiting(), IsEmpty());
    EXPECT_THAT(mirror_.Objects(), IsEmpty());
  }
}

TEST_F(OutboxEdits, RefusedForGoodAreKeptAndShownNoMore) {
  Change({.subject = "Mine"});
  outbox_.Refuse(*outbox_.Prepare(id_), "The server keeps no such appointments.");
  EXPECT_THAT(Shown(), ElementsAre("One, Here"));
  EXPECT_THAT(outbox_.Waiting(), IsEmpty());
  const RefusedEdit refused = outbox_.Refused().at(0);
  EXPECT_EQ(refused.subject, "Mine");
  EXPECT_EQ(refused.reason, "The server keeps no such appointments.");
  EXPECT_FALSE(refused.told);
  outbox_.MarkTold(refused.id);
  EXPECT_TRUE(outbox_.Refused().at(0).told);
  const std::string path = folder_ + "/export.ics";
  outbox_.ExportRefused(refused.id, path);
  EXPECT_EQ(ParseIcsFile(path, Year(2026)).items.at(0).fields.subject, "Mine");
  outbox_.DropRefused(refused.id);
  EXPECT_THAT(outbox_.Refused(), IsEmpty());
  EXPECT_THAT(FaultOf([&] { outbox_.ExportRefused(refused.id, path); }), HasSubstr("no longer"));

  // What cannot be applied any more, and what cannot be read.
  Change({.subject = "Mine"});
  mirror_.Put(Href, "9", "<html>");
  EXPECT_FALSE(outbox_.Prepare(id_));
  Theirs(Lines("One", "Here"), "10");
  Change({.subject = "Mine"});
  Overwrite("pending/" + id_, "{\"kind\":\"change\",\"before\":7,\"after\":1}\nab");
  EXPECT_THAT(ReportsOf(ReadMirror(folder_, Year(2026))),
              ElementsAre(HasSubstr("waits to be sent of the object cannot be read")));
  EXPECT_FALSE(outbox_.Prepare(id_));
  EXPECT_THAT(outbox_.Refused(), SizeIs(2));
  EXPECT_THAT(Shown(), ElementsAre("One, Here"));
}

TEST_F(OutboxEdits, ADamagedObjectIsNoDeletedOne) {
  Change({.subject = "Mine"});
  Overwrite("objects/" + id_, "");
  EXPECT_THAT(outbox_.Questions(), IsEmpty());
  EXPECT_FALSE(outbox_.Prepare(id_));
  EXPECT_THAT(Shown(), ElementsAre("Mine, Here"));
  Theirs(Lines("One", "There"), "2");
  EXPECT_THAT(Shown(), ElementsAre("Mine, There"));
}

}  // namespace
}  // namespace velkor
