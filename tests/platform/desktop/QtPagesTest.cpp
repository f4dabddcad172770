// tests/platform/desktop/QtPagesTest.cpp: pictures of pages, by the pixels of their copies.
#include "platform/desktop/QtPages.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

#include "platform/desktop/KeptPage.h"
#include "platform/headless/RecordingSurface.h"
#include "tests/platform/SurfaceScene.h"

namespace velkor {
namespace {

constexpr Extent A4{16838, 11906};
constexpr Colour Green = Colour::FromRgb(0, 128, 0);

/// A copy of the whole picture into a screen of this many pixels.
QImage Copy(OffscreenPicture& picture, int width, int height, double ratio = 1) {
  QImage screen(static_cast<int>(std::lround(width * ratio)),
                static_cast<int>(std::lround(height * ratio)), QImage::Format_RGB32);
  screen.setDevicePixelRatio(ratio);
  screen.fill(Qt::red);
  QPainter painter(&screen);
  const auto pixel = static_cast<float>(TwipsPerPixel / ratio);
  QtSurface surface(painter, {pixel, pixel}, 1 / ratio);
  picture.CopyTo(surface, {0, 0, width * TwipsPerPixel, height * TwipsPerPixel});
  return screen;
}

/// Of a row or column of pixels, how many differ from white.
int Ink(const QImage& image, QPoint from, QPoint step) {
  int ink = 0;
  for (QPoint at = from; image.rect().contains(at); at += step) {
    ink += image.pixel(at) != qRgb(255, 255, 255) ? 1 : 0;
  }
  return ink;
}

TEST(QtPagePicture, CoversItsRectangleAtEveryScaleWithColoursAsDrawn) {
  QtPagePicture picture(A4);
  picture.Drawing().Fill({8400, 6000, A4.width, A4.height}, Green);
  picture.Drawing().Line({3000, 0}, {3000, A4.height}, colours::Black, 1);
  for (const double ratio : {1.0, 1.5, 2.0}) {
    for (const int width : {400, 800, 1122, 3500}) {
      const QImage copy = Copy(picture, width, width * 7 / 10, ratio);
      const int w = copy.width();
      const int h = copy.height();
      SCOPED_TRACE(std::to_string(w) + " at " + std::to_string(ratio));
      EXPECT_EQ(copy.pixel(0, 0), qRgb(255, 255, 255));
      EXPECT_EQ(copy.pixel(w - 1, h - 1), qRgb(0, 128, 0));
      EXPECT_EQ(copy.pixel(w * 6 / 10, h * 6 / 10), qRgb(0, 128, 0));
      EXPECT_GE(Ink(copy, {0, 2}, {1, 0}), 1);
      EXPECT_LE(Ink(copy, {0, 2}, {1, 0}), std::max(2, w / 1000 + 1)) << "the line is a thin one";
    }
  }
}

TEST(QtPagePicture, ANewCopyShowsWhatWasDrawnSinceTheLastOne) {
  QtPagePicture picture(A4);
  Surface& drawing = picture.Drawing();
  EXPECT_EQ(Copy(picture, 800, 560).pixel(400, 280), qRgb(255, 255, 255));
  drawing.Fill({0, 0, A4.width, A4.height}, Green);
  EXPECT_EQ(Copy(picture, 800, 560).pixel(400, 280), qRgb(0, 128, 0));
  const QImage before = Copy(picture, 800, 560);
  drawing.Text({0, 0, A4.width, A4.height}, "Year", {.face = "Arial", .size = 20}, colours::Black,
               text_flags::NoPrefix);
  EXPECT_NE(Copy(picture, 800, 560), before);
}

TEST(QtPagePicture, ThinLinesOfLargeSheetsAreThere) {
  // An E size sheet has more pixels than are kept.
  constexpr Extent Sheet{34 * 1440, 44 * 1440};
  QtPagePicture picture(Sheet);
  constexpr int Lines = 50;
  for (int i = 0; i < Lines; ++i) {
    const Twips at = 500 + i * 903;
    picture.Drawing().Line({at, 0}, {at, Sheet.height}, colours::Black, 1);
    picture.Drawing().Line({0, at}, {Sheet.width, at}, colours::Black, 1);
  }
  const QImage copy = Copy(picture, 3264, 4224);
  EXPECT_GE(Ink(copy, {0, 3}, {1, 0}), Lines);
  EXPECT_GE(Ink(copy, {3, 0}, {0, 1}), Lines);
}

TEST(QtPagePicture, PagesThatAreNoneMakeSmallPictures) {
  const double nan = std::numeric_limits<double>::quiet_NaN();
  for (const Extent page :
       {Extent{}, Extent{-5, 1e300}, Extent{nan, nan}, Extent{1e300, 1e300}, Extent{1e9, 1}}) {
    QtPagePicture picture(page);
    picture.Drawing().Fill({-1e300, -1e300, 1e300, 1e300}, Green);
    EXPECT_EQ(Copy(picture, 20, 20).pixel(10, 10), qRgb(0, 128, 0)) << page.width;
  }
}

TEST(KeptPage, IsDrawnLaterByTheSameCalls) {
  RecordingSurface direct;
  RecordingSurface later;
  KeptPage kept;
  scene::Draw(kept);
  kept.DrawOn(later);
  scene::Draw(direct);
  EXPECT_EQ(later.Log(), direct.Log());
}

}  // namespace
}  // namespace velkor
