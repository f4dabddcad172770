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
  events.Insert({Named("third", "a", aMomentLater)});
  EXPECT_THAT(Subjects(events), ElementsAre("first"));
}

TEST(EventCollection, WhatArrivesStandsWhereALoadOfAllWouldHaveIt) {
  EventCollection events({Named("b", "b", At(2005, 4, 2)), Named("d", "d", At(2005, 4, 4)),
                          Named("d2", "d2", At(2005, 4, 4)), Named("d3", "d", At(2005, 4, 9))});
  events.Insert({Named("e", "e", At(2005, 4, 5)), Named("a", "a", At(2005, 4, 1)),
                 Named("with b", "c", At(2005, 4, 2)), Named("b again", "b", At(2005, 4, 2)),
                 Named("no id", "", At(2005, 4, 6))});
  EXPECT_THAT(Subjects(events), ElementsAre("a", "b", "with b", "d", "d2", "e", "d3"));
  // One that is replaced keeps its place where it starts as before; its other events go.
  events.Insert({Named("new d", "d", At(2005, 4, 4)), Named("later d", "d", At(2005, 4, 7))},
                {"d", "unknown"});
  EXPECT_THAT(Subjects(events), ElementsAre("a", "b", "with b", "new d", "d2", "e", "later d"));
}

TEST(EventCollection, RemovesEveryOccurrenceOfAnAppointment) {
  EventCollection events({Named("1", "a", At(2005, 4, 1)), Named("2", "A", At(2005, 4, 1)),
                          Named("3", "a", At(2005, 4, 8)), Named("4", "b", At(2005, 4, 8))});
  events.RemoveAppointment("a");
  events.RemoveAppointment("unknown");
  EXPECT_THAT(Subjects(events), ElementsAre("2", "4"));
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
