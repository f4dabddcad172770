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

  const PrintTask task = ParseCommandLine({"print",
                                           "a.ics",
                                           "--pages",
                                           "--first-month",
                                           "7",
                                           "--paper",
                                           "letter",
                                           "--portrait",
                                           "--months",
                                           "oct-3",
                                           "--margins",
                                           "1, 2.5,3,0",
                                           "--subjects",
                                           "--multiline",
                                           "--no-legend-repeat",
                                           "--min-bands",
                                           "0",
                                           "--min-band-height",
                                           "10",
                                           "--legend-width",
                                           "50"})
                             .printTask;
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

TEST(CommandLine, PrintOptionsThatMakeNoSenseAreNamed) {
  const std::pair<std::vector<std::string>, const char*> wrong[] = {
      {{}, "--pages"},
      {{"-o", "a.pdf", "--pages"}, "either -o"},
      {{"--pages", "--landscape", "--portrait"}, "not both"},
      {{"--pages", "--multiline", "--no-subjects"}, "--no-subjects"},
      {{"--pages", "--paper", "A"}, "Tabloid"},
      {{"--pages", "--months", "Oct-Mar"}, "from January to December"},
      {{"--pages", "--months", "1-2-3"}, "1-2-3"},
      {{"--pages", "--months", ""}, "--months"},
      {{"--pages", "--months", "Ja"}, "Ja"},
      {{"--pages", "--months", "13"}, "13"},
      {{"--pages", "--margins", "1,2"}, "20,15,20,15"},
      {{"--pages", "--margins", "1,,2,3"}, "1,,2,3"},
      {{"--pages", "--margins", "-1"}, "-1"},
      {{"--pages", "--legend-width", "nan"}, "nan"},
      {{"--pages", "--min-bands", "32767"}, "32767"},
      {{"--pages", "--min-band-height", "1e9"}, "1e9"},
      {{"--pages", "--size", "800x600"}, "--size"},
  };
  for (const auto& [options, words] : wrong) {
    std::vector<std::string> arguments{"print", "a.ics"};
    arguments.insert(arguments.end(), options.begin(), options.end());
    EXPECT_THAT(WhatIsWrong(arguments), HasSubstr(words));
  }
  EXPECT_THAT(WhatIsWrong({"render", "a.ics", "-o", "a.png", "--paper", "A4"}),
              HasSubstr("--paper belongs to the command print"));
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
