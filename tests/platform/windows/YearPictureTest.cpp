// tests/platform/windows/YearPictureTest.cpp: the face of a year drawn by GDI into a bitmap.
#include "tests/view/YearPicture.h"

#include "platform/windows/DibSection.h"
#include "platform/windows/GdiSurface.h"

namespace velkor {
namespace {

TEST(YearPicture, HasItsColoursInABitmap) {
  const YearPicture picture;
  const DibSection bitmap(YearPicture::Width, YearPicture::Height);
  GdiSurface surface(bitmap.Dc());
  picture.Draw(surface);
  picture.ExpectColours([&](int x, int y) { return bitmap.At(x, y); });
}

}  // namespace
}  // namespace velkor
