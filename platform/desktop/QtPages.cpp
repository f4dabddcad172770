// platform/desktop/QtPages.cpp: pages of a Qt device as surfaces, and texts measured for them.
#include "platform/desktop/QtPages.h"

#include <algorithm>
#include <cmath>

#include "support/values/Error.h"

namespace velkor {
namespace {

constexpr double TwipsPerInch = 1440;

[[noreturn]] void Fail(const char* reason) {
  throw Error(errors::DeviceInputOutput, reason, "Printer");
}

/// Device pixels to a logical one.
double PictureScale(Extent page) {
  constexpr double MostPixels = 1 << 24;
  const double pixels = page.width / static_cast<double>(PagePixel.width) * page.height /
                        static_cast<double>(PagePixel.height);
  return pixels > MostPixels ? std::sqrt(MostPixels / pixels) : 1;
}

QImage WhitePicture(Extent page, double scale) {
  const auto side = [scale](Twips length, float pixel) {
    return std::max(1, static_cast<int>(std::ceil(ToPixel(length, pixel) * scale)));
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
  const QSize size = target.DevicePixels(rect);
  if (size.isEmpty()) return;
  if (shown_.size() != size) {
    shown_ = image_.scaled(size, Qt::IgnoreAspectRatio, Qt::SmoothTransformation);
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
