// tests/platform/desktop/YearPictureTest.cpp: the face of a year as a raster image.
#include "tests/view/YearPicture.h"

#include <QImage>
#include <QPainter>

#include "platform/desktop/QtSurface.h"

namespace velkor {
namespace {

TEST(YearPicture, HasItsColoursAsARasterImage) {
  const YearPicture picture;
  QImage image(YearPicture::Width, YearPicture::Height, QImage::Format_RGB32);
  QPainter painter(&image);
  QtSurface surface(painter);
  picture.Draw(surface);
  picture.ExpectColours([&](int x, int y) {
    const QColor colour = image.pixelColor(x, y);
    return Colour::FromRgb(colour.red(), colour.green(), colour.blue());
  });
}

}  // namespace
}  // namespace velkor
