// tests/calendar/mirror/MirrorTest.cpp: the objects of a mirror, their names, and what damage does.
#include "calendar/mirror/Mirror.h"

#include <gmock/gmock.h>

#include "calendar/ics/file/ShortHash.h"
#include "tests/calendar/mirror/MirrorCase.h"

namespace velkor {
namespace {

using testing::ElementsAre;
using testing::IsEmpty;
using testing::UnorderedElementsAre;

using MirrorObjects = MirrorCase;

const std::string Plain = "DTSTART:20260301\nSUMMARY:One\n";

TEST_F(MirrorObjects, AreKnownByTheirUidAndASecondOneOfAUidByItsPlace) {
  const std::string id = EntryIdOfUid("a");
  EXPECT_EQ(mirror_.Put("/c/1.ics", "\"1\"", ObjectOf("a", Plain)).name, id);
  EXPECT_EQ(mirror_.Put("/c/2.ics", "\"2\"", ObjectOf("a", Plain)).name, ShortHash("/c/2.ics"));
  EXPECT_EQ(mirror_.Put("/c/3.ics", "\"3\"", "<html>").name, ShortHash("/c/3.ics"));

  Mirror other(folder_);
  const ObjectKey first{id, "/c/1.ics", "\"1\""};
  EXPECT_THAT(other.Objects(),
              UnorderedElementsAre(first, ObjectKey{ShortHash("/c/2.ics"), "/c/2.ics", "\"2\""},
                                   ObjectKey{ShortHash("/c/3.ics"), "/c/3.ics", "\"3\""}));
  EXPECT_EQ(other.Object(ShortHash("/c/3.ics"))->bytes, "<html>");

  // A place keeps its name, whatever lies there by now.
  EXPECT_EQ(other.Put("/c/1.ics", "\"4\"", ObjectOf("b", Plain)).name, id);
  EXPECT_EQ(mirror_.Object(id)->key.etag, "\"4\"");
  other.Remove("/c/1.ics");
  other.Remove("/c/none.ics");
  EXPECT_FALSE(mirror_.Object(id));
  EXPECT_EQ(other.Put("/c/5.ics", "\"5\"", ObjectOf("a", Plain)).name, id);
}

TEST_F(MirrorObjects, EveryChangeGivesAnotherRevision) {
  std::string last = mirror_.Revision();
  const auto isNew = [&] { return std::exchange(last, mirror_.Revision()) != last; };
  for (int i = 0; i < 20; ++i) {
    mirror_.Put("/c/1.ics", std::to_string(i), ObjectOf("a", Plain));
    EXPECT_TRUE(isNew());
  }
  mirror_.SetState({.displayName = "Team", .trouble = "offline"});
  EXPECT_FALSE(isNew());
  mirror_.Remove("/c/1.ics");
  EXPECT_TRUE(isNew());
}

TEST_F(MirrorObjects, OneThatIsDamagedIsFetchedAnew) {
  const std::string id = EntryIdOfUid("a");
  const MirrorState known{.displayName = "Team", .syncToken = "t1", .ctag = "c1"};
  const std::string object = ObjectOf("a", Plain);
  mirror_.Put("/c/1.ics", "\"1\"", object);
  const std::string whole = Contents("objects/" + id);
  for (const std::string& damaged :
       {std::string(), whole.substr(0, whole.size() - 1), whole + "x", "{\"href\":" + whole,
        std::string(200'000, '['), std::string("null\n"), whole.substr(0, 20)}) {
    mirror_.SetState(known);
    Overwrite("objects/" + id, damaged);
    EXPECT_TRUE(mirror_.IsDamaged(id));
    EXPECT_FALSE(mirror_.Object(id));
    EXPECT_THAT(mirror_.Objects(), IsEmpty());
    EXPECT_EQ(mirror_.State(), MirrorState{.displayName = "Team"});
  }
  EXPECT_EQ(Mirror(folder_).Put("/c/1.ics", "\"1\"", object).name, id);
  EXPECT_FALSE(mirror_.IsDamaged(id));
}

TEST_F(MirrorObjects, NoNameLeadsOutOfTheFolder) {
  mirror_.SetState({.displayName = "Team"});
  for (const std::string name : {"../state.json", "", ".", "..", "A", "a/b"}) {
    EXPECT_FALSE(mirror_.Object(name)) << name;
    EXPECT_FALSE(mirror_.IsDamaged(name)) << name;
  }
}

TEST_F(MirrorObjects, AStateThatIsNoneIsTheOneOfAMirrorThatWasNeverSynchronised) {
  for (const std::string text : {"", "[]", "{\"name\":7,\"readOnly\":\"yes\"}", "{\"name\":"}) {
    mirror_.SetState({.displayName = "Team", .readOnly = true, .synchronised = 5});
    Overwrite("state.json", text);
    EXPECT_EQ(mirror_.State(), MirrorState()) << text;
  }
}

TEST_F(MirrorObjects, WhileOneProgramWritesOrSynchronisesAnotherDoesNot) {
  Mirror other(folder_, std::chrono::milliseconds(30));
  auto lock = mirror_.Files().Lock();
  EXPECT_THAT(FaultOf([&] { other.Put("/c/1.ics", "1", "x"); }),
              testing::HasSubstr("another program holds it"));
  mirror_.Put("/c/1.ics", "1", "x");
  lock.reset();
  other.Put("/c/1.ics", "2", "x");

  auto turn = mirror_.TryTurn();
  EXPECT_TRUE(turn);
  EXPECT_FALSE(other.TryTurn());
  other.Put("/c/1.ics", "3", "x");
  turn.reset();
  EXPECT_TRUE(other.TryTurn());
}

}  // namespace
}  // namespace velkor
