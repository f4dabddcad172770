// platform/windows/drawing/DibSection.h: a picture in memory that can be drawn on.
#pragma once

#include <cstdint>

#include "platform/windows/drawing/GdiHandles.h"
#include "platform/windows/system/Wide.h"
#include "values/Colour.h"
#include "values/Error.h"

namespace velkor {

/// A top-down picture of 32 bits a pixel, black at first. Sizes in pixels, above 0. The constructor
/// throws Error when the system cannot make it.
class DibSection {
 public:
  DibSection(int width, int height)
      : dc_(::CreateCompatibleDC(nullptr)), width_(width), height_(height) {
    BITMAPINFO info{};
    info.bmiHeader.biSize = sizeof info.bmiHeader;
    info.bmiHeader.biWidth = width;
    info.bmiHeader.biHeight = -height;
    info.bmiHeader.biPlanes = 1;
    info.bmiHeader.biBitCount = 32;
    info.bmiHeader.biCompression = BI_RGB;
    bitmap_.reset(::CreateDIBSection(dc_.get(), &info, DIB_RGB_COLORS, &bits_, nullptr, 0));
    if (!dc_ || !bitmap_) {
      throw Error(errors::InvalidProcedureCall,
                  "Cannot make a picture of " + std::to_string(width) + " x " +
                      std::to_string(height) + " pixels: " + SystemMessage(::GetLastError()));
    }
    before_ = ::SelectObject(dc_.get(), bitmap_.get());
  }
  ~DibSection() {
    if (before_ != nullptr) ::SelectObject(dc_.get(), before_);
  }
  DibSection(const DibSection&) = delete;
  DibSection& operator=(const DibSection&) = delete;

  HDC Dc() const { return dc_.get(); }
  int Width() const { return width_; }
  int Height() const { return height_; }
  /// The pixels of a row as 0x00RRGGBB. What was drawn is there after GdiFlush.
  std::uint32_t* Row(int y) const {
    return static_cast<std::uint32_t*>(bits_) + std::ptrdiff_t{y} * width_;
  }
  /// The colour of a pixel that lies in the picture.
  Colour At(int x, int y) const {
    ::GdiFlush();
    const std::uint32_t pixel = Row(y)[x];
    return Colour::FromRgb(pixel >> 16 & 0xFF, pixel >> 8 & 0xFF, pixel & 0xFF);
  }

 private:
  MemoryDc dc_;
  BitmapHandle bitmap_;
  void* bits_ = nullptr;
  HGDIOBJ before_ = nullptr;
  int width_;
  int height_;
};

}  // namespace velkor
