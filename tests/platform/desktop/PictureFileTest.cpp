// tests/platform/desktop/PictureFileTest.cpp: picture files are whole, sized right and readable.
#include "platform/desktop/PictureFile.h"

#include <QImage>
#include <QXmlStreamReader>
#include <cstdint>
#include <stdexcept>

#include "platform/desktop/PngFile.h"
#include "tests/platform/SurfaceScene.h"
#include "tests/platform/desktop/FolderCase.h"
#include "tests/support/ErrorOf.h"

namespace velkor {
namespace {

using testing::HasSubstr;

using PictureFile = FolderCase;

std::function<Colour(int, int)> PixelsOf(const QImage& image) {
  return [image](int x, int y) {
    const QRgb pixel = image.pixel(x, y);
    return Colour::FromRgb(qRed(pixel), qGreen(pixel), qBlue(pixel));
  };
}

TEST_F(PictureFile, PngHasTheSceneAtTheScaledSize) {
  RenderToPng(Path("a.png"), scene::Size, scene::Draw, {.scale = 2, .title = {}});
  const QImage image(File("a.png"));
  EXPECT_EQ(image.size(), QSize(2 * scene::Width, 2 * scene::Height));
  scene::ExpectColours([at = PixelsOf(image)](int x, int y) { return at(2 * x, 2 * y); });
}

TEST_F(PictureFile, PdfPageHasTheDrawingsSizeAndItsText) {
  RenderToPdf(Path("a.pdf"), scene::Size, scene::Draw, {.scale = 1, .title = "A planner"});
  const auto info = Output("pdfinfo", {"a.pdf"});
  if (!info) GTEST_SKIP() << "no PDF tools";
  EXPECT_THAT(*info, HasSubstr("90 x 72 pts"));
  EXPECT_THAT(*info, HasSubstr("A planner"));
  EXPECT_THAT(*Output("pdftotext", {"a.pdf", "-"}), HasSubstr("MW"));
  Output("pdftoppm", {"-r", "96", "-png", "-singlefile", "-aaVector", "no", "a.pdf", "page"});
  const QImage page(File("page.png"));
  EXPECT_EQ(page.size(), QSize(scene::Width, scene::Height));
  scene::ExpectColours(PixelsOf(page));
  // Whoever shows the page smooths the edge of the clip.
  scene::ExpectClippedText(PixelsOf(page), 1);
}

TEST_F(PictureFile, SvgCountsInPixelsOfTheDrawing) {
  RenderToSvg(Path("a.svg"), scene::Size, scene::Draw, {.scale = 1, .title = "R&D <1>"});
  QXmlStreamReader reader(Bytes("a.svg"));
  ASSERT_TRUE(reader.readNextStartElement());
  EXPECT_EQ(reader.attributes().value("viewBox"), QStringLiteral("0 0 120 96"));
  QString words;
  while (!reader.atEnd()) {
    if (reader.readNext() == QXmlStreamReader::Characters) words += reader.text();
  }
  EXPECT_FALSE(reader.hasError()) << reader.errorString().toStdString();
  EXPECT_TRUE(words.contains("R&D <1>"));
  EXPECT_TRUE(words.contains(u"…"));
}

TEST_F(PictureFile, FailureLeavesTheOldFileAndNothingElse) {
  RenderToPng(Path("a.png"), scene::Size, scene::Draw);
  const QByteArray before = Bytes("a.png");
  for (const auto render : {RenderToPng, RenderToSvg, RenderToPdf}) {
    const auto fail = [](Surface& surface) {
      scene::Draw(surface);
      throw std::runtime_error("half-way");
    };
    EXPECT_THROW(render(Path("a.png"), scene::Size, fail, {}), std::runtime_error);
  }
  EXPECT_EQ(Bytes("a.png"), before);
  EXPECT_EQ(QDir(folder_.path()).entryList(QDir::Files).size(), 1);
}

TEST_F(PictureFile, ErrorsNameTheFileAndTheReason) {
  const auto reason = [&](const std::string& path, Extent size, const auto& render) {
    return ErrorOf([&] { render(path, size, scene::Draw, PictureOptions{}); }).Description();
  };
  const std::string absent = Path("absent/a.png");
  EXPECT_THAT(reason(absent, scene::Size, RenderToPng), HasSubstr(absent));
  EXPECT_THAT(reason(Path("a.png"), {15 * 100, 15 * 20001}, RenderToPng),
              HasSubstr("at most 20000 pixels a side, this one would have 100 x 20001"));
}

TEST_F(PictureFile, PdfPageShrinksToTheLongestThatThereIs) {
  RenderToPdf(Path("a.pdf"), {1440 * 100, 1440 * 400}, scene::Draw);
  const auto info = Output("pdfinfo", {"a.pdf"});
  if (!info) GTEST_SKIP() << "no PDF tools";
  EXPECT_THAT(*info, HasSubstr("3600 x 14400 pts"));
}

// Even areas, rows like the one above, and neither; rows too long for a match with the one above.
TEST_F(PictureFile, PngHoldsEveryPixel) {
  for (const QSize size :
       {QSize(1, 1), QSize(1, 3), QSize(7, 1), QSize(300, 200), QSize(11000, 3)}) {
    QImage image(size, QImage::Format_RGB32);
    std::uint32_t state = 1;
    for (int y = 0; y < size.height(); ++y) {
      for (int x = 0; x < size.width(); ++x) {
        state = state * 1664525 + 1013904223;
        QRgb pixel = state >> 8 | 0xFF000000;
        if (x > 0 && state >> 28 < 13) pixel = image.pixel(x - 1, y);
        if (y > 0 && (state >> 26) % 4 > 0) pixel = image.pixel(x, y - 1);
        image.setPixel(x, y, pixel);
      }
    }
    const QImage read = QImage::fromData(EncodePng(image), "PNG");
    EXPECT_EQ(read.convertToFormat(QImage::Format_RGB32), image) << size.width();
    EXPECT_EQ(read.dotsPerMeterX(), image.dotsPerMeterX());
  }
}

}  // namespace
}  // namespace velkor
