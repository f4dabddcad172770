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

TEST(CommandLine, ACalendarAloneIsOpenedWithEverythingShown) {
  const CommandLine line = ParseCommandLine({"team.ics"});
  EXPECT_EQ(line.command, Command::Open);
  EXPECT_EQ(line.calendar, "team.ics");
  EXPECT_TRUE(line.grid.AllEvents);
  EXPECT_TRUE(line.grid.DisplaySubject);
  EXPECT_FALSE(line.grid.HideNonCategoryItems);
  EXPECT_EQ(line.titleName, "Default");
  EXPECT_FALSE(line.year.has_value());
}

TEST(CommandLine, OptionsMayStandAnywhere) {
  const CommandLine line = ParseCommandLine(
      {"render", "--year", "2005", "a.ics", "-o", "a.png", "--first-month=7", "--no-all-events",
       "--no-subjects", "--hide-non-category", "--title", "Räume", "--filter", "A, B",
       "--match-all", "--size", "800x600", "--today", "2005-09-01"});
  EXPECT_EQ(line.command, Command::Render);
  EXPECT_EQ(line.calendar, "a.ics");
  EXPECT_EQ(line.output, "a.png");
  EXPECT_EQ(line.year, 2005);
  EXPECT_EQ(line.firstMonth, 7);
  EXPECT_FALSE(line.grid.AllEvents);
  EXPECT_FALSE(line.grid.DisplaySubject);
  EXPECT_TRUE(line.grid.HideNonCategoryItems);
  EXPECT_EQ(line.titleName, "Räume");
  EXPECT_EQ(line.filter, "A, B");
  EXPECT_TRUE(line.matchAll);
  EXPECT_EQ(line.width, 800);
  EXPECT_EQ(line.height, 600);
  EXPECT_EQ(line.today, Date::FromYmd(2005, 9, 1));
}

TEST(CommandLine, InspectTakesACacheFileAndPoints) {
  const CommandLine line = ParseCommandLine(
      {"inspect", "--cache", "x.tmp", "--json", "--point", "1.5,2", "--point", "-3,4"});
  EXPECT_EQ(line.cacheFile, "x.tmp");
  EXPECT_EQ(line.calendar, "");
  ASSERT_EQ(line.points.size(), 2U);
  EXPECT_EQ(line.points[0].x, 1.5);
  EXPECT_EQ(line.points[1].x, -3);
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
      {{"--pages", "--multiline"}, "--subjects"},
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
  EXPECT_THAT(WhatIsWrong({"refresh"}), HasSubstr("Which calendar"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "b.ics"}), HasSubstr("b.ics"));
  EXPECT_THAT(WhatIsWrong({"render", "a.ics"}), HasSubstr("-o"));
  EXPECT_THAT(WhatIsWrong({"refresh", "a.ics", "-o", "x.png"}), HasSubstr("render"));
  EXPECT_THAT(WhatIsWrong({"inspect", "a.ics"}), HasSubstr("--json"));
  EXPECT_THAT(WhatIsWrong({"inspect", "a.ics", "--cache", "c", "--json"}), HasSubstr("not both"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "--year", "99"}), HasSubstr("100 to 9999"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "--year", "9999", "--first-month", "2"}), HasSubstr("9999"));
  EXPECT_EQ(WhatIsWrong({"a.ics", "--year", "9999"}), "");
  EXPECT_THAT(WhatIsWrong({"a.ics", "--year", "20x6"}), HasSubstr("20x6"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "--first-month", "13"}), HasSubstr("1 to 12"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "--size", "800"}), HasSubstr("1920x1200"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "--size", "800x99999"}), HasSubstr("99999"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "--today", "2026-02-30"}), HasSubstr("--today"));
  EXPECT_THAT(WhatIsWrong({"a.ics", "--bogus"}), HasSubstr("bogus"));
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

TEST(CommandLine, WrongUseOfExportAndCategoriesIsNamed) {
  const std::pair<std::vector<std::string>, const char*> cases[] = {
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
  const CategoryTask task =
      ParseCommandLine({"categories", "a.ics", "recolour", "A", "#0a80FF"}).categoryTask;
  EXPECT_EQ(task.colour, Colour::FromRgb(0x0A, 0x80, 0xFF));
}

TEST(CommandLine, HelpNamesEveryCommandAndExitCode) {
  const std::string help = HelpText();
  for (const char* word : {"render", "refresh", "inspect", "export", "categories", "--first-month",
                           "--from", "Exit codes"}) {
    EXPECT_THAT(help, HasSubstr(word));
  }
  EXPECT_EQ(help.find("Usage: yearplan ["), 0U);
  EXPECT_EQ(ParseCommandLine({"render", "--help"}).command, Command::Help);
  EXPECT_EQ(ParseCommandLine({"--version"}).command, Command::Version);
}

}  // namespace
}  // namespace velkor
