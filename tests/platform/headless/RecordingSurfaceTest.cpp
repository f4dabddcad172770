// tests/platform/headless/RecordingSurfaceTest.cpp: what the log says, and where colours lie.
#include "platform/headless/RecordingSurface.h"

#include <gmock/gmock.h>

#include "tests/platform/SurfaceScene.h"

namespace velkor {
namespace {

using testing::ElementsAre;

TEST(RecordingSurface, LogsEachCallInOneLineWithTrimmedNumbers) {
  RecordingSurface surface;
  surface.Fill({0, -0.0001, 330.5, 480.25}, Colour::FromRgb(0xEE, 0xE8, 0xAA));
  surface.Outline({15, 15, 30, 30}, Colour::FromRgb(255, 0, 0), 2);
  surface.Line({0, 1.0 / 3}, {10, 20}, colours::Black, 1);
  surface.Text({0, 0, 300, 150}, "say \"é\"\n", {"Arial", 7.5, charsets::Ansi, true},
               colours::White, text_flags::NoPrefix | text_flags::WordEllipsis);
  surface.Text({0, 0, 1, 1}, "", {}, Colour{0x12000000}, text_flags::Left);
  EXPECT_THAT(surface.Log(),
              ElementsAre("fill 0 0 330.5 480.25 #EEE8AA", "outline 15 15 30 30 #FF0000 pen 2",
                          "line 0 0.333 10 20 #000000 pen 1",
                          "text 0 0 300 150 \"say \\\"é\\\"\\x0A\" #FFFFFF font \"Arial\" 7.5 bold "
                          "charset 0 flags 0x40800",
                          "text 0 0 1 1 \"\" #000000 font 8 flags 0x0"));
}

TEST(RecordingSurface, PositionsCountFromTheSurfacesOwnOriginInEveryView) {
  RecordingSurface surface;
  {
    const ViewScope outer(surface, {100, 100, 1000, 1000}, {100, 40});
    const ViewScope inner(surface, {0, 0, 50, 50}, {5, -5});
    surface.Fill({1, 2, 3, 4}, colours::Black);
    EXPECT_EQ(surface.Depth(), 2U);
  }
  EXPECT_THAT(surface.Calls("fill"), ElementsAre("fill 106 37 108 39 #000000"));
  EXPECT_THAT(surface.Calls("view"), ElementsAre("view 100 100 1000 1000 origin 100 40",
                                                 "view 100 40 150 90 origin 105 35"));
  EXPECT_EQ(surface.Calls("leave").size(), 2U);
}

// A character of 10 points is 100 twips wide, a line 240 high.
TEST(RecordingSurface, MeasuresTheLinesOfWrappedText) {
  const struct {
    std::string_view text;
    Twips width, height;
  } cases[] = {
      {"", 0, 0},
      {"one two three", 700, 2 * 240},
      {"one  two   ", 800, 240},
      {"one      three", 500, 2 * 240},
      {"a abcdefghijklmnopqrst b", 800, 4 * 240},
      {"éééééééééé", 800, 2 * 240},
      {"\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF\xFF", 800, 2 * 240},
      {"a\r\rb\r\n\n", 100, 4 * 240},
      {"a&&b", 300, 240},
  };
  RecordingSurface surface;
  for (const auto& [text, width, height] : cases) {
    const Extent lines = surface.MeasureLines(text, {"", 10}, 850, text_flags::WordBreak);
    EXPECT_EQ(lines.width, width) << text;
    EXPECT_EQ(lines.height, height) << text;
  }
  EXPECT_EQ(surface.MeasureLines("abc", {"", 10}, -5, text_flags::WordBreak).height, 3 * 240);
}

TEST(RecordingSurface, PutsColoursWhereEverySurfaceDoes) {
  RecordingSurface surface;
  scene::Draw(surface);
  scene::ExpectColours([&](int x, int y) {
    return surface.ColourAt({(x + 0.5) * 15, (y + 0.5) * 15}).value_or(Colour{});
  });
}

}  // namespace
}  // namespace velkor
