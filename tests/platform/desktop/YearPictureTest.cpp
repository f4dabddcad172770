// tests/platform/desktop/YearPictureTest.cpp: the face of a year as a raster image and as PDF.
#include "tests/view/YearPicture.h"

#include <QImage>
#include <QPainter>
#include <QProcess>
#include <QTemporaryDir>

#include "platform/desktop/PictureFile.h"
#include "platform/desktop/QtSurface.h"

namespace velkor {
namespace {

void ExpectColoursOf(const YearPicture& picture, const QImage& image) {
  picture.ExpectColours([&](int x, int y) {
    const QColor colour = image.pixelColor(x, y);
    return Colour::FromRgb(colour.red(), colour.green(), colour.blue());
  });
}

TEST(YearPicture, HasItsColoursAsARasterImage) {
  const YearPicture picture;
  QImage image(YearPicture::Width, YearPicture::Height, QImage::Format_RGB32);
  QPainter painter(&image);
  QtSurface surface(painter);
  picture.Draw(surface);
  ExpectColoursOf(picture, image);
}

TEST(YearPicture, HasItsColoursAsPdf) {
  const YearPicture picture;
  const QTemporaryDir folder;
  const QString pdf = folder.filePath("year.pdf");
  RenderToPdf(pdf.toStdString(), YearPicture::Size,
              [&](Surface& surface) { picture.Draw(surface); });
  const QString page = folder.filePath("page");
  if (QProcess::execute("pdftoppm",
                        {"-r", "96", "-png", "-singlefile", "-aaVector", "no", pdf, page}) != 0) {
    GTEST_SKIP() << "no PDF tools";
  }
  ExpectColoursOf(picture, QImage(page + ".png"));
}

}  // namespace
}  // namespace velkor
