// tests/view/YearPictureTest.cpp: the face of a year on the recording surface.
#include "tests/view/YearPicture.h"

#include "platform/headless/RecordingSurface.h"

namespace velkor {
namespace {

TEST(YearPicture, HasItsColoursOnTheRecordingSurface) {
  const YearPicture picture;
  RecordingSurface surface;
  picture.Draw(surface);
  EXPECT_EQ(surface.Depth(), 0);
  picture.ExpectColours([&](int x, int y) {
    return surface.ColourAt({(x + 0.5) * TwipsPerPixel, (y + 0.5) * TwipsPerPixel})
        .value_or(Colour{-1});
  });
}

}  // namespace
}  // namespace velkor
