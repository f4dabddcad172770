// platform/windows/drawing/WindowsPages.cpp: pages on their way to a printer, and pictures of them.
#include "platform/windows/drawing/WindowsPages.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "platform/windows/drawing/PrinterDevice.h"
#include "platform/windows/drawing/ShrunkPicture.h"

namespace velkor {

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
  return {.width = shorter(width),
          .height = shorter(height),
          .pixel = {printer.width * static_cast<float>(whole),
                    printer.height * static_cast<float>(whole)}};
}

WindowsPagePicture::WindowsPagePicture(Extent page, PixelSize printer)
    : WindowsPagePicture(RasterOf(page, printer)) {}

WindowsPagePicture::WindowsPagePicture(const Raster& raster)
    : picture_(raster.width, raster.height), surface_(picture_.Dc(), raster.pixel) {
  ::PatBlt(picture_.Dc(), 0, 0, raster.width, raster.height, WHITENESS);
}

bool WindowsPagePicture::IsShown(int width, int height) const {
  return shown_ && shown_->Width() == width && shown_->Height() == height &&
         shownDrawings_ == surface_.Drawings();
}

void WindowsPagePicture::CopyTo(Surface& surface, const Rect& rect) {
  dynamic_cast<GdiSurface&>(surface).DrawBy(rect, [this](HDC dc, const PixelRect& area) {
    const int width = area.Width();
    const int height = area.Height();
    if (width > picture_.Width() || height > picture_.Height()) {
      ::SetStretchBltMode(dc, HALFTONE);
      // As the mode asks for (wingdi.h, SetStretchBltMode).
      ::SetBrushOrgEx(dc, 0, 0, nullptr);
      ::StretchBlt(dc, area.left, area.top, width, height, picture_.Dc(), 0, 0, picture_.Width(),
                   picture_.Height(), SRCCOPY);
      return;
    }
    if (!IsShown(width, height)) {
      shown_ = std::make_unique<DibSection>(width, height);
      Shrink(picture_, *shown_);
      shownDrawings_ = surface_.Drawings();
    }
    ::BitBlt(dc, area.left, area.top, width, height, shown_->Dc(), 0, 0, SRCCOPY);
  });
}

}  // namespace velkor
