// platform/desktop/QtPages.cpp: pages of a Qt device as surfaces, and texts measured for them.
#include "platform/desktop/QtPages.h"

#include <algorithm>
#include <cmath>

#include "values/Error.h"

namespace velkor {
namespace {

constexpr double TwipsPerInch = 1440;

[[noreturn]] void Fail(const char* reason) {
  throw Error(errors::DeviceInputOutput, reason, "Printer");
}

/// Logical pixels of a page's side.
double PictureSide(Twips length, float pixel) {
  // 17 metres.
  constexpr double Longest = 200000;
  const double pixels = RoundHalfEven(length / static_cast<double>(pixel));
  return std::fmin(std::fmax(pixels, 1), Longest);
}

/// Device pixels to a logical one.
double PictureScale(Extent page) {
  constexpr double MostPixels = 1 << 24;
  // A painter's limit for either side.
  constexpr double MostInLine = 32767;
  const double width = PictureSide(page.width, PagePixel.width);
  const double height = PictureSide(page.height, PagePixel.height);
  return std::min(
      {1.0, std::sqrt(MostPixels / (width * height)), MostInLine / std::max(width, height)});
}

QImage WhitePicture(Extent page, double scale) {
  const auto side = [scale](Twips length, float pixel) {
    return std::max(1, static_cast<int>(PictureSide(length, pixel) * scale));
  };
  QImage image(side(page.width, PagePixel.width), side(page.height, PagePixel.height),
               QImage::Format_RGB32);
  if (image.isNull()) Fail("There is no memory for a picture of the page");
  image.fill(Qt::white);
  return image;
}

}  // namespace

QtPagePicture::QtPagePicture(Extent page)
    : scale_(PictureScale(page)),
      image_(WhitePicture(page, scale_)),
      painter_(&image_),
      surface_(painter_, PagePixel, scale_) {}

void QtPagePicture::CopyTo(Surface& surface, const Rect& rect) {
  auto& target = dynamic_cast<QtSurface&>(surface);
  // Larger than it is, only what is seen is scaled, when it is drawn.
  const QSize size = target.DevicePixels(rect).boundedTo(image_.size());
  if (size.isEmpty()) return;
  if (size == image_.size()) return target.DrawPicture(rect, image_);
  if (shown_.size() != size || shownDrawings_ != surface_.Drawings()) {
    shown_ = image_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
    shownDrawings_ = surface_.Drawings();
  }
  target.DrawPicture(rect, shown_);
}

QtPages::QtPages(QPagedPaintDevice& device, int resolution)
    : device_(device), scale_(resolution * static_cast<double>(PagePixel.width) / TwipsPerInch) {
  if (!painter_.begin(&device_)) Fail("The printer does not begin a document");
  BeginPage();
}

void QtPages::BeginPage() {
  surface_.emplace(painter_, PagePixel, scale_);
}

void QtPages::NewPage() {
  surface_.reset();
  if (!device_.newPage()) Fail("The printer does not begin a page");
  BeginPage();
}

void QtPages::End() {
  surface_.reset();
  if (!painter_.end()) Fail("The printer does not end the document");
}

}  // namespace velkor
