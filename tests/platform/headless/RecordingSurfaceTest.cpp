// tests/platform/headless/RecordingSurfaceTest.cpp: lines that are measured, and where colours lie.
#include "platform/headless/RecordingSurface.h"

#include <gtest/gtest.h>

#include "tests/platform/SurfaceScene.h"

namespace velkor {
namespace {

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
