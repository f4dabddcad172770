// tests/model/EventCollectionTest.cpp: keys, order and removal.
#include "model/EventCollection.h"

#include <gmock/gmock.h>

#include "platform/headless/FixedLocale.h"
#include "tests/model/SampleEvents.h"

namespace velkor {
namespace {

using testing::ElementsAre;

std::vector<std::string> Subjects(const EventCollection& events) {
  std::vector<std::string> subjects;
  for (const CalEvent& event : events) subjects.push_back(event.Subject);
  return subjects;
}

CalEvent Named(std::string subject, std::string id, Date start) {
  CalEvent event = SampleEvent(std::move(id), start, start);
  event.Subject = std::move(subject);
  return event;
}

TEST(EventCollection, KeepsTheOrderOfLoadingAndTheFirstOfEqualKeys) {
  const Date early = At(2005, 4, 1, 9);
  const Date late = At(2005, 4, 2, 9);
  const EventCollection events({Named("late", "a", late), Named("no id", "", early),
                                Named("early", "a", early), Named("late again", "a", late),
                                Named("other id", "b", late), Named("early again", "a", early)});
  EXPECT_THAT(Subjects(events), ElementsAre("late", "early", "other id"));
}

TEST(EventCollection, StartsThatReadAlikeAsTextAreOneKey) {
  const Date start = At(2005, 4, 1, 9);
  const Date aMomentLater(start.Days() + 0.2 / 86400);
  EventCollection events({Named("first", "a", start), Named("second", "a", aMomentLater)});
  EXPECT_THAT(Subjects(events), ElementsAre("first"));
  EXPECT_FALSE(events.Add(Named("third", "a", aMomentLater)));
}

TEST(EventCollection, AddsAfterALoadWhatHasAKeyOfItsOwn) {
  EventCollection events({Named("b", "b", At(2005, 4, 2)), Named("d", "d", At(2005, 4, 4))});
  EXPECT_TRUE(events.Add(Named("a", "a", At(2005, 4, 1))));
  EXPECT_TRUE(events.Add(Named("e", "e", At(2005, 4, 5))));
  EXPECT_TRUE(events.Add(Named("b later", "b", At(2005, 4, 3))));
  EXPECT_FALSE(events.Add(Named("b again", "b", At(2005, 4, 2))));
  EXPECT_FALSE(events.Add(Named("a again", "a", At(2005, 4, 1))));
  EXPECT_FALSE(events.Add(Named("no id", "", At(2005, 4, 6))));
  EXPECT_THAT(Subjects(events), ElementsAre("b", "d", "a", "e", "b later"));
}

TEST(EventCollection, RemovesEveryOccurrenceOfAnAppointmentAndTakesItAgain) {
  EventCollection events({Named("1", "a", At(2005, 4, 1)), Named("2", "A", At(2005, 4, 1)),
                          Named("3", "a", At(2005, 4, 8)), Named("4", "b", At(2005, 4, 8))});
  events.RemoveAppointment("a");
  EXPECT_THAT(Subjects(events), ElementsAre("2", "4"));
  events.RemoveAppointment("unknown");
  EXPECT_TRUE(events.Add(Named("5", "a", At(2005, 4, 8))));
  EXPECT_FALSE(events.Add(Named("6", "b", At(2005, 4, 8))));
  EXPECT_THAT(Subjects(events), ElementsAre("2", "4", "5"));
}

TEST(EventCollection, AKeyIsTheStartAsTextFollowedByTheIdentifier) {
  FixedLocale locale;
  const EventCollection events({Named("1", "ID", At(2005, 4, 1)),
                                Named("2", "ID", At(2005, 4, 1, 9)),
                                Named("3", "1ID", At(2005, 4, 1))});
  EXPECT_EQ(EventCollection::KeyOf(events[0], locale), "4/1/2005ID");
  EXPECT_EQ(EventCollection::KeyOf(events[1], locale), "4/1/2005 9:00:00 AMID");
  for (std::size_t i = 0; i < events.Count(); ++i) {
    EXPECT_EQ(events.Find(EventCollection::KeyOf(events[i], locale), locale), i);
  }
  EXPECT_EQ(events.Find("ID", locale), std::nullopt);
  EXPECT_EQ(events.Find("", locale), std::nullopt);
}

}  // namespace
}  // namespace velkor
