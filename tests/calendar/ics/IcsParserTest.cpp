// tests/calendar/ics/IcsParserTest.cpp: the identifiers that a calendar's items get.
#include "calendar/ics/read/IcsParser.h"

#include <gtest/gtest.h>

#include <set>

#include "tests/calendar/ics/IcsCase.h"

namespace velkor {
namespace {

using Texts = std::vector<std::string>;

TEST(IcsParser, IdentifiersStayTheSameAndTellItemsApart) {
  const std::string text = Calendar(
      Event("UID:a\nSUMMARY:1\nDTSTART:20260101\n") +
      Event("UID:a\nSUMMARY:2\nDTSTART:20260102\n") +
      Event("UID:a\nSUMMARY:2\nDTSTART:20260102\n") + Event("SUMMARY:3\nDTSTART:20260103\n") +
      Event("SUMMARY:3\nDTSTART:20260103\n") + Event("UID:\nSUMMARY:4\nDTSTART:20260103\n"));
  const auto identifiers = [](const ParsedCalendar& calendar) {
    Texts ids;
    for (const CalendarItem& item : calendar.items) ids.push_back(item.entryId);
    return ids;
  };
  const Texts ids = identifiers(Parse(text));
  ASSERT_EQ(ids.size(), 6U);
  EXPECT_EQ(ids, identifiers(Parse(text)));
  EXPECT_EQ(std::set<std::string>(ids.begin(), ids.end()).size(), 6U);
  EXPECT_EQ(ids[0].find_first_not_of("0123456789abcdef"), std::string::npos);
  EXPECT_EQ(ids[0].size(), 32U);
  // The identifier of a UID stays when the event changes.
  EXPECT_EQ(ids[0], OnlyItem("UID:a\nSUMMARY:new\nDTSTART:20270101\n").entryId);
  // A change of an event that does not recur stands for it.
  const std::string change = "UID:a\nRECURRENCE-ID:20260201T100000\nDTSTART:20260202\n";
  EXPECT_EQ(identifiers(Parse(Calendar(Event("UID:a\nDTSTART:20260201T100000\n") + Event(change)))),
            Texts{ids[0]});
  EXPECT_EQ(ParseIcs(Calendar(""), "folder/Team Year.ICS", Year(2026)).name, "Team Year");
}

}  // namespace
}  // namespace velkor
