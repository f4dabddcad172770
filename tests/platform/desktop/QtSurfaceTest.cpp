// tests/platform/desktop/QtSurfaceTest.cpp: pixels of the raster surface, ellipsis and clipping.
#include "platform/desktop/QtSurface.h"

#include <gtest/gtest.h>

#include <QImage>

#include "tests/platform/SurfaceScene.h"

namespace velkor {
namespace {

QImage Drawn(int width, int height, double scale, const std::function<void(Surface&)>& draw) {
  QImage image(static_cast<int>(width * scale), static_cast<int>(height * scale),
               QImage::Format_RGB32);
  image.fill(Qt::white);
  QPainter painter(&image);
  QtSurface surface(painter, {}, scale);
  draw(surface);
  return image;
}

Colour At(const QImage& image, int x, int y) {
  const QRgb pixel = image.pixel(x, y);
  return Colour::FromRgb(qRed(pixel), qGreen(pixel), qBlue(pixel));
}

/// Last column with ink, -1 for none.
int LastInk(const QImage& image) {
  for (int x = image.width() - 1; x >= 0; --x) {
    for (int y = 0; y < image.height(); ++y) {
      if (At(image, x, y) != colours::White) return x;
    }
  }
  return -1;
}

int FirstInk(const QImage& image) {
  return image.width() - 1 - LastInk(image.mirrored(true, false));
}

QImage Line(std::string_view text, TextFlags flags, int width = 200, const Font& font = {"", 12}) {
  return Drawn(width, 30, 1, [&](Surface& surface) {
    surface.Text(scene::InPixels(0, 0, width, 30), text, font, colours::Black, flags);
  });
}

TEST(QtSurface, PutsColoursWhereEverySurfaceDoes) {
  const QImage image = Drawn(scene::Width, scene::Height, 1, scene::Draw);
  const auto at = [&](int x, int y) { return At(image, x, y); };
  scene::ExpectColours(at);
  scene::ExpectClippedText(at);
}

TEST(QtSurface, LongTextEndsInAnEllipsisAndShortTextDoesNot) {
  constexpr TextFlags Cut = text_flags::NoPrefix | text_flags::WordEllipsis;
  const QImage shortText = Line("Meeting", Cut);
  EXPECT_EQ(shortText, Line("Meeting", text_flags::NoPrefix));
  for (const char* text :
       {"A meeting that takes far too long", "Ein Ölwechsel für alle Fälle, öööö",
        "会議が長すぎて終わらない日が続く。", "Встреча, которая не кончается"}) {
    const QImage cut = Line(text, Cut, 80);
    EXPECT_NE(cut, Line(text, text_flags::NoPrefix, 80)) << text;
    EXPECT_GT(LastInk(cut), 40) << text;
  }
  const QtFont font({"", 12}, 20.0 / 15);
  const QString all = QStringLiteral("A meeting that takes far too long");
  const QString cut = font.WithEllipsis(all, 100);
  EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
  EXPECT_LE(font.Width(cut), 100);
  EXPECT_GT(font.Width(all.left(cut.size()) + QChar(0x2026)), 100);
  EXPECT_EQ(font.WithEllipsis(all, font.Width(all) + 0.01), all);
}

TEST(QtSurface, AnEllipsisThatIsTooWideEndsAtItsRectangle) {
  const QImage image = Drawn(100, 30, 1, [](Surface& surface) {
    for (const char* text : {"Meeting", "\xE4\xBC\x9A\xE8\xAD\xB0"}) {
      surface.Text(scene::InPixels(10, 0, 15, 30), text, {"", 20}, colours::Black,
                   text_flags::WordEllipsis);
    }
  });
  EXPECT_LT(LastInk(image), 15);
}

TEST(QtSurface, AlignsTextAndShowsAmpersandsOnlyWithoutPrefixes) {
  scene::ExpectAlignedText([](std::string_view text, TextFlags flags) {
    const QImage image = Line(text, flags);
    return std::pair(FirstInk(image), LastInk(image));
  });
  const QImage high = Line("x", text_flags::Left).transformed(QTransform().rotate(90));
  const QImage middle = Line("x", text_flags::SingleLine | text_flags::VerticalCentre)
                            .transformed(QTransform().rotate(90));
  EXPECT_LT(LastInk(middle), LastInk(high));
  EXPECT_EQ(Line("R&&D", text_flags::Left), Line("R&D", text_flags::NoPrefix));
}

TEST(QtSurface, MeasuresWhatItDraws) {
  Drawn(10, 10, 1, [](Surface& surface) {
    const Extent one = surface.Measure("Mwi", {"", 12});
    EXPECT_EQ(surface.Measure("MwiMwi", {"", 12}).height, one.height);
    EXPECT_NEAR(surface.Measure("MwiMwi", {"", 12}).width, 2 * one.width, 15);
    EXPECT_NEAR(LastInk(Line("Mwi", text_flags::NoPrefix)) + 1, one.width / 15, 2);
    EXPECT_GT(surface.Measure("0", {"", 7}).height, surface.Measure("0", {"", 6}).height);
    EXPECT_EQ(surface.Measure("", {"", 7}).width, 0);
  });
}

TEST(QtSurface, BreaksLinesAndMeasuresThem) {
  const auto inkedRows = [](TextFlags flags, int height) {
    const QImage image = Drawn(100, 220, 1, [&](Surface& surface) {
      surface.Text(scene::InPixels(0, 0, 100, height), scene::Lines, {"", 12}, colours::Black,
                   flags);
    });
    return LastInk(image.transformed(QTransform().rotate(-90))) + 1;
  };
  Drawn(10, 10, 1, [&](Surface& measuring) {
    scene::ExpectLines(measuring, [&](int height) { return inkedRows(scene::Wrapped, height); });
  });
  const int whole = inkedRows(scene::Wrapped, 50);
  const int cut = inkedRows(scene::Wrapped & ~text_flags::EditControl, 50);
  EXPECT_LT(whole, cut) << "a last line that is visible in part";
  EXPECT_LE(cut, 50);
}

TEST(QtSurface, LeavesOutWhatCannotBeDrawn) {
  const QImage image = Drawn(20, 20, 1, scene::DrawNonsense);
  EXPECT_EQ(At(image, 19, 19), scene::Sand);
}

}  // namespace
}  // namespace velkor
