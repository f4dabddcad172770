// platform/desktop/PictureFile.cpp: painters over picture files that replace the old file whole.
#include "platform/desktop/PictureFile.h"

#include <QBuffer>
#include <QImage>
#include <QPageSize>
#include <QPdfWriter>
#include <QSaveFile>
#include <QSvgGenerator>
#include <cmath>

#include "platform/desktop/PngFile.h"
#include "platform/desktop/QtSurface.h"
#include "platform/posix/SaveAll.h"
#include "values/Error.h"

namespace velkor {
namespace {

constexpr double PointsPerPixel = 0.75;
constexpr double PixelsPerInch = 96;

[[noreturn]] void Fail(const std::string& path, const std::string& reason) {
  throw Error(errors::DeviceInputOutput, "Cannot write " + path + ": " + reason);
}

/// Logical pixels of a side; at least 1.
int Pixels(Twips side) {
  return side > 0 ? static_cast<int>(std::fmin(std::ceil(side / TwipsPerPixel), 1e9)) : 1;
}

/// Draws by `paint(device)` into a new file, then puts it in the old one's place. Devices close
/// their file, which a QSaveFile forbids, so they write into memory.
template <typename Paint>
void Replace(const std::string& path, Paint&& paint) {
  QSaveFile file(QString::fromStdString(path));
  if (!OpenToSave(file)) Fail(path, file.errorString().toStdString());
  QByteArray bytes;
  QBuffer buffer(&bytes);
  buffer.open(QIODevice::WriteOnly);
  paint(buffer);
  if (!SaveAll(file, bytes)) Fail(path, file.errorString().toStdString());
}

}  // namespace

void RenderToPng(const std::string& path, Extent size, const DrawPicture& draw,
                 const PictureOptions& options) {
  const double width = std::ceil(Pixels(size.width) * options.scale);
  const double height = std::ceil(Pixels(size.height) * options.scale);
  if (!(width <= LongestPngSide && height <= LongestPngSide)) {
    Fail(path, "a PNG picture has at most " + std::to_string(LongestPngSide) +
                   " pixels a side, this one would have " +
                   QString::number(width, 'f', 0).toStdString() + " x " +
                   QString::number(height, 'f', 0).toStdString() +
                   "; a name that ends in .svg or .pdf gives one of any size");
  }
  Replace(path, [&](QIODevice& device) {
    QImage image(static_cast<int>(width), static_cast<int>(height), QImage::Format_RGB32);
    if (image.isNull()) Fail(path, "not enough memory for the picture");
    image.fill(Qt::white);
    const int perMetre = static_cast<int>(std::round(PixelsPerInch * options.scale / 0.0254));
    image.setDotsPerMeterX(perMetre);
    image.setDotsPerMeterY(perMetre);
    {
      QPainter painter(&image);
      QtSurface surface(painter, {}, options.scale);
      draw(surface);
    }
    device.write(EncodePng(image));
  });
}

void RenderToSvg(const std::string& path, Extent size, const DrawPicture& draw,
                 const PictureOptions& options) {
  const QSize pixels(Pixels(size.width), Pixels(size.height));
  Replace(path, [&](QIODevice& device) {
    QSvgGenerator generator;
    generator.setOutputDevice(&device);
    generator.setResolution(static_cast<int>(PixelsPerInch));
    generator.setSize(pixels);
    generator.setViewBox(QRect(QPoint(0, 0), pixels));
    // Written as it is, between tags.
    generator.setTitle(QString::fromStdString(options.title).toHtmlEscaped());
    generator.setDescription(QString());
    QPainter painter(&generator);
    painter.fillRect(QRect(QPoint(0, 0), pixels), Qt::white);
    QtSurface surface(painter);
    draw(surface);
  });
}

void RenderToPdf(const std::string& path, Extent size, const DrawPicture& draw,
                 const PictureOptions& options) {
  constexpr double LongestSide = 14400;
  const double width = Pixels(size.width) * PointsPerPixel;
  const double height = Pixels(size.height) * PointsPerPixel;
  const double shrink = std::fmin(1, LongestSide / std::fmax(width, height));
  // Qt keeps page sizes in whole points.
  const QSize points(static_cast<int>(std::ceil(width * shrink)),
                     static_cast<int>(std::ceil(height * shrink)));
  Replace(path, [&](QIODevice& device) {
    QPdfWriter writer(&device);
    // Fine enough for letters to stand where their widths put them.
    constexpr int Resolution = 1440;
    writer.setResolution(Resolution);
    writer.setPageSize(QPageSize(points, QString(), QPageSize::ExactMatch));
    writer.setPageMargins(QMarginsF(0, 0, 0, 0));
    writer.setTitle(QString::fromStdString(options.title));
    writer.setCreator(QStringLiteral("OutlookVelkor"));
    QPainter painter(&writer);
    QtSurface surface(painter, {}, shrink * Resolution / PixelsPerInch);
    draw(surface);
  });
}

}  // namespace velkor
