// tests/platform/SurfaceTest.cpp: pixels of the surface of each face: colours, text, clipping.
#include "platform/Surface.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <vector>

#include "tests/platform/Face.h"
#include "tests/platform/SurfaceScene.h"

namespace velkor {
namespace {

using namespace text_flags;

constexpr int Width = 200;
constexpr int Height = 220;
constexpr TextFlags Wrapped = WordBreak | NoPrefix | EditControl;

/// The last column and row with ink on white; -1 for none.
struct Ink {
  int left = Width;
  int top = Height;
  int right = -1;
  int bottom = -1;
  std::vector<std::int32_t> pixels;
};

/// What is inked by one text in a rectangle at the upper left corner of a white picture.
Ink Drawn(std::string_view text, TextFlags flags, int width = Width, int height = 30,
          const Font& font = {"", 12}) {
  const auto canvas = MakeCanvas(Width, Height);
  canvas->Drawing().Fill(scene::InPixels(0, 0, Width, Height), colours::White);
  canvas->Drawing().Text(scene::InPixels(0, 0, width, height), text, font, colours::Black, flags);
  Ink ink;
  for (int y = 0; y < Height; ++y) {
    for (int x = 0; x < Width; ++x) {
      ink.pixels.push_back(canvas->At(x, y).value);
      if (canvas->At(x, y) == colours::White) continue;
      ink.left = std::min(ink.left, x);
      ink.top = std::min(ink.top, y);
      ink.right = std::max(ink.right, x);
      ink.bottom = std::max(ink.bottom, y);
    }
  }
  return ink;
}

TEST(Surface, PutsColoursWhereEverySurfaceDoes) {
  const auto canvas = MakeCanvas(scene::Width, scene::Height);
  scene::Draw(canvas->Drawing());
  const auto at = [&](int x, int y) { return canvas->At(x, y); };
  scene::ExpectColours(at);
  scene::ExpectClippedText(at);
}

TEST(Surface, LongTextEndsInAnEllipsisAndShortTextDoesNot) {
  EXPECT_EQ(Drawn("Meeting", NoPrefix | WordEllipsis).pixels, Drawn("Meeting", NoPrefix).pixels);
  for (const char* text :
       {"A meeting that takes far too long", "Ein Ölwechsel für alle Fälle, öööö",
        "会議が長すぎて終わらない日が続く。", "Встреча, которая не кончается"}) {
    const Ink cut = Drawn(text, NoPrefix | WordEllipsis, 80);
    EXPECT_NE(cut.pixels, Drawn(text, NoPrefix, 80).pixels) << text;
    EXPECT_GT(cut.right, 40) << text;
    EXPECT_LT(cut.right, 80) << text;
  }
  EXPECT_LT(Drawn("Meeting", WordEllipsis, 5, 30, {"", 20}).right, 5) << "no room for an ellipsis";
}

TEST(Surface, AlignsTextAndShowsAmpersandsOnlyWithoutPrefixes) {
  EXPECT_LT(Drawn("lll", NoPrefix).left, 4);
  EXPECT_GT(Drawn("lll", Right | NoPrefix).right, 190);
  const Ink centred = Drawn("lll", Centre | NoPrefix);
  EXPECT_NEAR(centred.left, Width - centred.right, 6);
  EXPECT_GT(Drawn("x", SingleLine | VerticalCentre, Width, 90).top, Drawn("x", Left).top + 20);
  // A face may underline the letter after the prefix.
  EXPECT_NEAR(Drawn("R&D", Left).right, Drawn("RD", NoPrefix).right, 2);
  EXPECT_GT(Drawn("R&D", NoPrefix).right, Drawn("R&D", Left).right) << "a character, no prefix";
  EXPECT_EQ(Drawn("R&&D", Left).pixels, Drawn("R&D", NoPrefix).pixels);
}

TEST(Surface, MeasuresWhatItDraws) {
  const auto canvas = MakeCanvas(10, 10);
  Surface& surface = canvas->Drawing();
  const Extent one = surface.Measure("Mwi", {"", 12});
  EXPECT_NEAR(surface.Measure("MwiMwi", {"", 12}).width, 2 * one.width, 15);
  EXPECT_EQ(surface.Measure("MwiMwi", {"", 12}).height, one.height);
  EXPECT_NEAR(Drawn("Mwi", NoPrefix).right + 1, one.width / TwipsPerPixel, 4);
  EXPECT_GT(surface.Measure("0", {"", 7}).height, surface.Measure("0", {"", 6}).height);
  EXPECT_EQ(surface.Measure("", {"", 7}).width, 0);
}

TEST(Surface, BreaksLinesWhereThereIsNoRoomAndMeasuresThem) {
  constexpr int Room = 100;
  const Font font{"", 12};
  const auto canvas = MakeCanvas(10, 10);
  Surface& surface = canvas->Drawing();
  const Twips height = surface.Measure("H", font).height;
  const auto measured = [&](std::string_view text) {
    return surface.MeasureLines(text, font, Room * TwipsPerPixel, Wrapped);
  };
  constexpr std::string_view Lines = "HH HH HH HHHHHHHHHHHHHHHH\rH\r\nH\nH\r";
  const struct {
    std::string_view text;
    int lines;
    const char* why;
  } cases[] = {{"H", 1, "one"},
               {"H\r", 1, "a line end that ends the text"},
               {"H\r\rH", 3, "an empty line"},
               {"H\rH\r\nH\nH", 4, "each kind of line end"},
               {"HH HH HH HH HH HH", 2, "words"},
               {"HH HHHHHHHH", 2, "a word without room beside another"}};
  for (const auto& each : cases) {
    EXPECT_EQ(measured(each.text).height / height, each.lines) << each.why;
  }
  EXPECT_GE(measured("HHHHHHHHHHHHHHHH").height / height, 2) << "a word wider than the line";
  EXPECT_LE(measured(Lines).width, Room * TwipsPerPixel);

  const auto rows = [&](int room, TextFlags flags = Wrapped) {
    return Drawn(Lines, flags, Room, room).bottom + 1;
  };
  const int line = static_cast<int>(height / TwipsPerPixel);
  const int all = static_cast<int>(measured(Lines).height / height);
  EXPECT_GT(rows(200), (all - 1) * line);
  EXPECT_LE(rows(200), all * line);
  EXPECT_LE(rows(3 * line - 3), 2 * line) << "two lines and most of the third";
  EXPECT_GT(rows(line - 3), 0) << "a first line that is visible in part";
  EXPECT_LE(rows(3 * line - 3), rows(3 * line - 3, WordBreak | NoPrefix)) << "a last line in part";
}

TEST(Surface, LeavesOutWhatCannotBeDrawn) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  const auto canvas = MakeCanvas(20, 20);
  Surface& surface = canvas->Drawing();
  surface.Fill({-1e300, -1e300, 1e300, 1e300}, scene::Sand);
  surface.Fill({300, 300, 0, 0}, scene::Red);
  surface.LeaveView();
  surface.Text({0, 0, 300, 300}, "\xFF\xC3 \x01", {"No such face", nan}, scene::Red, 0);
  surface.Text({0, 0, nan, 300}, std::string(70000, 'x'), {"", 1e9}, scene::Red, 0);
  EXPECT_EQ(canvas->At(19, 19), scene::Sand);
}

}  // namespace
}  // namespace velkor
