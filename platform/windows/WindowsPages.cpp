// platform/windows/WindowsPages.cpp: pages on their way to a printer, and pictures of them.
#include "platform/windows/WindowsPages.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/windows/PrinterDevice.h"

namespace velkor {
namespace {

void Stretch(HDC from, int width, int height, HDC to, const PixelRect& area) {
  ::SetStretchBltMode(to, HALFTONE);
  // As the mode asks for (wingdi.h, SetStretchBltMode).
  ::SetBrushOrgEx(to, 0, 0, nullptr);
  ::StretchBlt(to, area.left, area.top, area.Width(), area.Height(), from, 0, 0, width, height,
               SRCCOPY);
}

}  // namespace

WindowsPrintJob::WindowsPrintJob(MemoryDc dc, std::string what)
    : dc_(std::move(dc)), what_(std::move(what)) {
  try {
    BeginPage();
  } catch (...) {
    ::AbortDoc(dc_.get());
    throw;
  }
}

WindowsPrintJob::~WindowsPrintJob() {
  page_.reset();
  if (!ended_) ::AbortDoc(dc_.get());
}

void WindowsPrintJob::Check(int answer, const char* act) const {
  if (answer > 0) return;
  throw PrinterError(errors::DeviceInputOutput, "Cannot " + std::string(act) + " of " + what_,
                     ::GetLastError());
}

void WindowsPrintJob::BeginPage() {
  ::SetLastError(ERROR_SUCCESS);
  Check(::StartPage(dc_.get()), "begin a page");
  page_.emplace(dc_.get(), PixelOf(dc_.get()));
}

void WindowsPrintJob::EndPage() {
  page_.reset();
  ::SetLastError(ERROR_SUCCESS);
  Check(::EndPage(dc_.get()), "end a page");
}

void WindowsPrintJob::NewPage() {
  EndPage();
  BeginPage();
}

void WindowsPrintJob::EndDocument() {
  EndPage();
  ::SetLastError(ERROR_SUCCESS);
  Check(::EndDoc(dc_.get()), "print the pages");
  ended_ = true;
}

WindowsPagePicture::Raster WindowsPagePicture::RasterOf(Extent page, PixelSize printer) {
  constexpr double MostPixels = 1 << 24;
  constexpr double MostInLine = 32767;
  // 17 metres.
  constexpr Twips Longest = 1000000;
  const auto side = [](Twips length, float pixel) {
    const double kept = std::fmin(std::fmax(length, 1), Longest);
    return std::fmax(1, RoundHalfEven(kept / static_cast<double>(pixel)));
  };
  double width = side(page.width, printer.width);
  double height = side(page.height, printer.height);
  const double whole = std::ceil(std::max(
      {1.0, std::sqrt(width * height / MostPixels), std::max(width, height) / MostInLine}));
  const auto shorter = [whole](double length) {
    return std::max(1, static_cast<int>(length / whole));
  };
  return {.size = {shorter(width), shorter(height)},
          .pixel = {printer.width * static_cast<float>(whole),
                    printer.height * static_cast<float>(whole)}};
}

WindowsPagePicture::WindowsPagePicture(Extent page, PixelSize printer)
    : WindowsPagePicture(RasterOf(page, printer)) {}

WindowsPagePicture::WindowsPagePicture(const Raster& raster)
    : size_(raster.size),
      picture_(size_.width, size_.height),
      surface_(picture_.Dc(), raster.pixel) {
  ::PatBlt(picture_.Dc(), 0, 0, size_.width, size_.height, WHITENESS);
}

void WindowsPagePicture::Shrink(Size size) {
  const DibSection* from = &picture_;
  Size has = size_;
  std::unique_ptr<DibSection> smaller;
  // Systems differ in how many pixels they mix into one, but not below the half.
  while (has != size) {
    const Size next{std::max(size.width, has.width / 2), std::max(size.height, has.height / 2)};
    auto half = std::make_unique<DibSection>(next.width, next.height);
    Stretch(from->Dc(), has.width, has.height, half->Dc(), {0, 0, next.width, next.height});
    smaller = std::move(half);
    from = smaller.get();
    has = next;
  }
  shown_ = std::move(smaller);
  shownSize_ = size;
  shownDrawings_ = surface_.Drawings();
}

void WindowsPagePicture::CopyTo(Surface& surface, const Rect& rect) {
  dynamic_cast<GdiSurface&>(surface).DrawBy(rect, [this](HDC dc, const PixelRect& area) {
    const Size size{area.Width(), area.Height()};
    if (size.width > size_.width || size.height > size_.height || size == size_) {
      Stretch(picture_.Dc(), size_.width, size_.height, dc, area);
      return;
    }
    if (!shown_ || shownSize_ != size || shownDrawings_ != surface_.Drawings()) Shrink(size);
    ::BitBlt(dc, area.left, area.top, size.width, size.height, shown_->Dc(), 0, 0, SRCCOPY);
  });
}

}  // namespace velkor
