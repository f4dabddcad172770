// tests/platform/windows/GdiSurfaceTest.cpp: pixels of the GDI surface, ellipsis and metrics.
#include "platform/windows/drawing/GdiSurface.h"

#include <gtest/gtest.h>

#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/system/Wide.h"
#include "tests/platform/SurfaceScene.h"

namespace velkor {
namespace {

constexpr int LineWidth = 200;
constexpr int LineHeight = 30;

/// The columns that have ink after drawing one line of text on white.
std::vector<bool> InkOf(std::string_view text, TextFlags flags, int width = LineWidth) {
  const DibSection picture(LineWidth, LineHeight);
  GdiSurface surface(picture.Dc());
  surface.Fill(scene::InPixels(0, 0, LineWidth, LineHeight), colours::White);
  surface.Text(scene::InPixels(0, 0, width, LineHeight), text, {"", 12}, colours::Black, flags);
  std::vector<bool> columns(LineWidth);
  for (int x = 0; x < LineWidth; ++x) {
    for (int y = 0; y < LineHeight; ++y) {
      if (picture.At(x, y) != colours::White) columns[std::size_t(x)] = true;
    }
  }
  return columns;
}

int FirstInk(const std::vector<bool>& columns) {
  return static_cast<int>(std::find(columns.begin(), columns.end(), true) - columns.begin());
}

int LastInk(const std::vector<bool>& columns) {
  return static_cast<int>(columns.rend() - std::find(columns.rbegin(), columns.rend(), true)) - 1;
}

TEST(GdiSurface, PutsColoursWhereEverySurfaceDoes) {
  const DibSection picture(scene::Width, scene::Height);
  GdiSurface surface(picture.Dc());
  scene::Draw(surface);
  const auto at = [&](int x, int y) { return picture.At(x, y); };
  scene::ExpectColours(at);
  scene::ExpectClippedText(at);
}

TEST(GdiSurface, LeavesTheDeviceContextAsItWas) {
  const DibSection picture(scene::Width, scene::Height);
  const HGDIOBJ font = ::GetCurrentObject(picture.Dc(), OBJ_FONT);
  const COLORREF background = ::GetBkColor(picture.Dc());
  {
    GdiSurface surface(picture.Dc());
    scene::Draw(surface);
  }
  EXPECT_EQ(::GetCurrentObject(picture.Dc(), OBJ_FONT), font);
  EXPECT_EQ(::GetBkColor(picture.Dc()), background);
  EXPECT_EQ(::GetBkMode(picture.Dc()), OPAQUE);
}

TEST(GdiSurface, LongTextEndsInAnEllipsisAndShortTextDoesNot) {
  constexpr TextFlags Cut = text_flags::NoPrefix | text_flags::WordEllipsis;
  EXPECT_EQ(InkOf("Meeting", Cut), InkOf("Meeting", text_flags::NoPrefix));
  const auto cut = InkOf("A meeting that takes far too long", Cut, 100);
  const auto whole = InkOf("A meeting that takes far too long", text_flags::NoPrefix, 100);
  EXPECT_NE(cut, whole);
  EXPECT_GT(LastInk(cut), 60);
  EXPECT_LT(LastInk(cut), 100);
  EXPECT_LT(LastInk(whole), 100);
}

TEST(GdiSurface, DrawsWhatDrawTextDrawsInEveryScriptAndCharacterSet) {
  constexpr int Russian = 204;
  constexpr TextFlags Plain = text_flags::NoPrefix;
  // The Russian code page has nothing of a text, some of it, or all. The last is underlined.
  for (const auto& [text, charset, flags] : {std::tuple("\u00DCn\u00ED", Russian, Plain),
                                             {"\u0414\u0430 \u00FC", Russian, Plain},
                                             {"\u0414\u0430", Russian, Plain},
                                             {"\u00DCn\u00ED", 0, Plain},
                                             {"\u0414\u0430", 0, Plain},
                                             {"R&D", 0, text_flags::WordEllipsis}}) {
    const DibSection picture(LineWidth, 2 * LineHeight);
    GdiSurface surface(picture.Dc());
    const Font font{.face = "DejaVu Sans", .size = 12, .charset = charset};
    surface.Text(scene::InPixels(0, 0, LineWidth, LineHeight), text, font, colours::White, flags);
    const std::wstring wide = ToWide(text);
    RECT below{0, LineHeight, LineWidth, 2 * LineHeight};
    ::DrawTextW(picture.Dc(), wide.c_str(), -1, &below, flags);
    bool drawn = false;
    for (int y = 0; y < LineHeight; ++y) {
      for (int x = 0; x < LineWidth; ++x) {
        ASSERT_EQ(picture.At(x, y), picture.At(x, y + LineHeight)) << text << ' ' << charset;
        drawn = drawn || picture.At(x, y) == colours::White;
      }
    }
    EXPECT_TRUE(drawn);
  }
}

TEST(GdiSurface, AlignsTextAndShowsAmpersandsOnlyWithoutPrefixes) {
  scene::ExpectAlignedText([](std::string_view text, TextFlags flags) {
    const auto columns = InkOf(text, flags);
    return std::pair(FirstInk(columns), LastInk(columns));
  });
}

TEST(GdiSurface, MeasuresWhatItDraws) {
  const DibSection picture(10, 10);
  GdiSurface surface(picture.Dc());
  EXPECT_NEAR(LastInk(InkOf("Mwi", text_flags::NoPrefix)) + 1,
              surface.Measure("Mwi", {"", 12}).width / 15, 4);
  EXPECT_GT(surface.Measure("0", {"", 7}).height, surface.Measure("0", {"", 6}).height);
  EXPECT_EQ(surface.Measure("", {"", 7}).width, 0);
}

TEST(GdiSurface, BreaksLinesAndMeasuresThem) {
  const DibSection picture(100, 220);
  GdiSurface surface(picture.Dc());
  scene::ExpectLines(surface, [&](int height) {
    surface.Fill(scene::InPixels(0, 0, 100, 220), colours::White);
    surface.Text(scene::InPixels(0, 0, 100, height), scene::Lines, {"", 12}, colours::Black,
                 scene::Wrapped);
    for (int y = 219; y >= 0; --y) {
      for (int x = 0; x < 100; ++x) {
        if (picture.At(x, y) != colours::White) return y + 1;
      }
    }
    return 0;
  });
}

TEST(GdiSurface, LeavesOutWhatCannotBeDrawn) {
  const DibSection picture(20, 20);
  GdiSurface surface(picture.Dc());
  scene::DrawNonsense(surface);
  EXPECT_EQ(picture.At(19, 19), scene::Sand);
}

}  // namespace
}  // namespace velkor
