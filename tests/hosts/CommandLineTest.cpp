// tests/hosts/CommandLineTest.cpp: what the command line of yearplan means.
#include "hosts/yearplan/commands/CommandLine.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <fstream>

#include "values/Text.h"

namespace velkor {
namespace {

using testing::HasSubstr;

/// What is said against the words of a line; a blank at its end stands for an empty last one.
std::string WhatIsWrong(const std::string& line) {
  try {
    ParseCommandLine(Split(line, " "));
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
  EXPECT_EQ(line.properties.FirstMonth, 7);
  EXPECT_FALSE(line.properties.AllEvents);
  EXPECT_FALSE(line.properties.DisplaySubject);
  EXPECT_FALSE(line.properties.HideNonCategoryItems);
  EXPECT_EQ(line.properties.TitleName, "Räume");
  EXPECT_EQ(line.today, Date::FromYmd(2005, 9, 1));
  ASSERT_EQ(line.points.size(), 2U);
  EXPECT_EQ(line.points[0].x, 1.5);
  EXPECT_EQ(line.points[1].y, 4);
}

TEST(CommandLine, PrintsAYearOnLandscapeA4UnlessToldOtherwise) {
  const PrintTask plain = ParseCommandLine({"print", "a.ics", "-o", "a.pdf"}).printTask;
  const PrintOptionSet defaults;
  EXPECT_EQ(plain.paper, device_mode::PaperA4);
  EXPECT_EQ(plain.orientation, device_mode::Landscape);
  EXPECT_EQ(plain.options.LeftMargin, defaults.LeftMargin);
  EXPECT_EQ(plain.options.LegendWidth, defaults.LegendWidth);
  EXPECT_EQ(plain.options.MinBands, defaults.MinBands);
  EXPECT_EQ(plain.options.MinBandHeight, defaults.MinBandHeight);
  EXPECT_EQ(plain.options.EndMonth, 12);

  std::vector<std::string> words = Split(
      "print a.ics --pages --first-month 7 --paper letter --portrait --months oct-3 --subjects "
      "--multiline --no-legend-repeat --min-bands 0 --min-band-height 10 --legend-width 50 "
      "--margins",
      " ");
  words.emplace_back("1, 2.5,3,0");
  const PrintTask task = ParseCommandLine(words).printTask;
  EXPECT_TRUE(task.pages);
  EXPECT_EQ(task.paper, device_mode::PaperLetter);
  EXPECT_EQ(task.orientation, device_mode::Portrait);
  EXPECT_EQ(task.options.StartMonth, 10);
  EXPECT_EQ(task.options.EndMonth, 3);
  EXPECT_EQ(task.options.LeftMargin, 57);
  EXPECT_EQ(task.options.TopMargin, 142);
  EXPECT_EQ(task.options.RightMargin, 170);
  EXPECT_EQ(task.options.BottomMargin, 0);
  EXPECT_TRUE(task.options.VisibleText);
  EXPECT_EQ(task.options.PrintFormat, print_formats::Multiline);
  EXPECT_FALSE(task.options.ReprintLegend);
  EXPECT_EQ(task.options.MinBands, 1);
  EXPECT_FLOAT_EQ(task.options.MinBandHeight, 567);
  EXPECT_EQ(task.options.LegendWidth, 2835);
}

TEST(CommandLine, WhatMakesNoSenseIsNamed) {
  std::ifstream file(TEST_DATA "command-lines.txt");
  int lines = 0;
  for (std::string line, words; std::getline(file, line, '|') && std::getline(file, words);) {
    EXPECT_THAT(WhatIsWrong(line), HasSubstr(words)) << line;
    ++lines;
  }
  EXPECT_GT(lines, 50);
  EXPECT_EQ(WhatIsWrong("a.ics --year 9999"), "");
  EXPECT_EQ(ParseCommandLine({"render", "--help"}).command, Command::Help);
  const CategoryTask task =
      ParseCommandLine({"categories", "a.ics", "recolour", "A", "#0a80FF"}).categoryTask;
  EXPECT_EQ(task.colour, Colour::FromRgb(0x0A, 0x80, 0xFF));
}

TEST(CommandLine, OneYearOfAnExportStandsForBoth) {
  const auto years = [](const std::string& options) {
    const CommandLine line = ParseCommandLine(Split("export a.ics -o a.xml" + options, " "));
    return std::pair(line.fromYear.value_or(0), line.toYear.value_or(0));
  };
  EXPECT_EQ(years(""), std::pair(0, 0));
  EXPECT_EQ(years(" --from 2024"), std::pair(2024, 2024));
  EXPECT_EQ(years(" --to 2025"), std::pair(2025, 2025));
  EXPECT_EQ(years(" --from 2024 --to 2025"), std::pair(2024, 2025));
}

}  // namespace
}  // namespace velkor
