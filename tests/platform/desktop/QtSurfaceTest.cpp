// tests/platform/desktop/QtSurfaceTest.cpp: the raster surface as a canvas, and where texts are
// cut.
#include "platform/desktop/QtSurface.h"

#include <gtest/gtest.h>

#include <QImage>

#include "tests/platform/Face.h"

namespace velkor {
namespace {

class QtCanvas : public Canvas {
 public:
  QtCanvas(int width, int height) : image_(width, height, QImage::Format_RGB32) {
    image_.fill(Qt::white);
  }
  Surface& Drawing() override { return surface_; }
  Colour At(int x, int y) const override {
    const QRgb pixel = image_.pixel(x, y);
    return Colour::FromRgb(qRed(pixel), qGreen(pixel), qBlue(pixel));
  }

 private:
  QImage image_;
  QPainter painter_{&image_};
  QtSurface surface_{painter_, {}, 1};
};

TEST(QtFont, CutsATextBeforeTheFirstCharacterWithoutRoom) {
  const QtFont font({"", 12}, 20.0 / 15);
  const QString all = QStringLiteral("A meeting that takes far too long");
  const QString cut = font.WithEllipsis(all, 100);
  EXPECT_TRUE(cut.endsWith(QChar(0x2026)));
  EXPECT_LE(font.Width(cut), 100);
  EXPECT_GT(font.Width(all.left(cut.size()) + QChar(0x2026)), 100);
  EXPECT_EQ(font.WithEllipsis(all, font.Width(all) + 0.01), all);
}

}  // namespace

std::unique_ptr<Canvas> MakeCanvas(int width, int height) {
  return std::make_unique<QtCanvas>(width, height);
}

}  // namespace velkor
