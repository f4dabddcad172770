// tests/hosts/CommandLineTest.cpp: what the command line of yearplan means.
#include "hosts/yearplan/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace velkor {
namespace {

using testing::HasSubstr;

std::string WhatIsWrong(const std::vector<std::string>& arguments) {
  try {
    ParseCommandLine(arguments);
  } catch (const UsageError& error) {
    return error.what();
  }
  return {};
}

TEST(CommandLine, OptionsMayStandAnywhere) {
  const CommandLine line = ParseCommandLine(
      {"inspect", "--json", "--point", "1.5,2", "a.ics", "--first-month=7", "--no-all-events",
       "--no-subjects", "--title", "Räume", "--point", "-3,4", "--today", "2005-09-01"});
  EXPECT_EQ(line.command, Command::Inspect);
  EXPECT_EQ(line.calendar, "a.ics");
  EXPECT_EQ(line.firstMonth, 7);
  EXPECT_FALSE(line.grid.AllEvents);
  EXPECT_FALSE(line.grid.DisplaySubject);
  EXPECT_FALSE(line.grid.HideNonCategoryItems);
  EXPECT_EQ(line.titleName, "Räume");
  EXPECT_EQ(line.today, Date::FromYmd(2005, 9, 1));
  ASSERT_EQ(line.points.size(), 2U);
  EXPECT_EQ(line.points[0].x, 1.5);
  EXPECT_EQ(line.points[1].y, 4);
}

TEST(CommandLine, WhatMakesNoSenseIsNamed) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
      {{"refresh"}, "Which calendar"},
      {{"a.ics", "b.ics"}, "b.ics"},
      {{"render", "a.ics"}, "-o"},
      {{"refresh", "a.ics", "-o", "x.png"}, "render"},
      {{"inspect", "a.ics"}, "--json"},
      {{"inspect", "a.ics", "--cache", "c", "--json"}, "not both"},
      {{"a.ics", "--year", "99"}, "100 to 9999"},
      {{"a.ics", "--year", "9999", "--first-month", "2"}, "9999"},
      {{"a.ics", "--year", "20x6"}, "20x6"},
      {{"a.ics", "--first-month", "13"}, "1 to 12"},
      {{"a.ics", "--size", "800"}, "1920x1200"},
      {{"a.ics", "--size", "800x99999"}, "99999"},
      {{"a.ics", "--today", "2026-02-30"}, "--today"},
      {{"a.ics", "--bogus"}, "bogus"},
      {{"export", "a.ics"}, "-o"},
      {{"export", "a.ics", "-o", "x", "--from", "2025", "--to", "2024"}, "2025 lies after"},
      {{"export", "a.ics", "-o", "x", "--to", "99"}, "--to takes"},
      {{"export", "a.ics", "-o", "x", "--from", "9999", "--first-month", "2"}, "9999"},
      {{"export", "a.ics", "-o", "x", "--year", "2025"}, "--year"},
      {{"render", "a.ics", "-o", "x.png", "--from", "2025"}, "command export"},
      {{"categories", "a.ics", "--filter", "A"}, "--filter"},
      {{"categories", "a.ics", "paint", "A"}, "paint"},
      {{"categories", "a.ics", "rename", "A"}, "rename OLD NEW"},
      {{"categories", "a.ics", "list", "A"}, "list"},
      {{"categories", "a.ics", "new", ""}, "needs a name"},
      {{"categories", "a.ics", "recolour", "A", "#12345"}, "#12345"},
      {{"categories", "a.ics", "recolour", "A", "#12345G"}, "#12345G"},
      {{"categories", "a.ics", "recolour", "A", "#-12345"}, "#-12345"},
  };
  for (const auto& [arguments, words] : cases) {
    EXPECT_THAT(WhatIsWrong(arguments), HasSubstr(words));
  }
  EXPECT_EQ(WhatIsWrong({"a.ics", "--year", "9999"}), "");
  EXPECT_EQ(ParseCommandLine({"render", "--help"}).command, Command::Help);
  const CategoryTask task =
      ParseCommandLine({"categories", "a.ics", "recolour", "A", "#0a80FF"}).categoryTask;
  EXPECT_EQ(task.colour, Colour::FromRgb(0x0A, 0x80, 0xFF));
}

TEST(CommandLine, OneYearOfAnExportStandsForBoth) {
  const auto years = [](const std::vector<std::string>& options) {
    std::vector<std::string> arguments{"export", "a.ics", "-o", "a.xml"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    const CommandLine line = ParseCommandLine(arguments);
    return std::pair(line.fromYear.value_or(0), line.toYear.value_or(0));
  };
  EXPECT_EQ(years({}), std::pair(0, 0));
  EXPECT_EQ(years({"--from", "2024"}), std::pair(2024, 2024));
  EXPECT_EQ(years({"--to", "2025"}), std::pair(2025, 2025));
  EXPECT_EQ(years({"--from", "2024", "--to", "2025"}), std::pair(2024, 2025));
}

}  // namespace
}  // namespace velkor
