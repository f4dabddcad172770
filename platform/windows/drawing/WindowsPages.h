// platform/windows/drawing/WindowsPages.h: pages on their way to a printer, and pictures of them.
#pragma once

#include <cstdint>
#include <memory>
#include <optional>
#include <string>

#include "platform/OffscreenPicture.h"
#include "platform/Printer.h"
#include "platform/windows/drawing/DibSection.h"
#include "platform/windows/drawing/GdiSurface.h"

namespace velkor {

/// A document on a printer's device context, where it has been begun (StartDoc). Members throw
/// Error (DeviceInputOutput) with what failed.
class WindowsPrintJob : public PrintJob {
 public:
  /// Begins the first page.
  /// @param what  the document and its printer, as errors name them
  WindowsPrintJob(MemoryDc dc, std::string what);
  ~WindowsPrintJob() override;
  WindowsPrintJob(const WindowsPrintJob&) = delete;
  WindowsPrintJob& operator=(const WindowsPrintJob&) = delete;

  Surface& Page() override { return *page_; }
  void NewPage() override;
  void EndDocument() override;

 private:
  void BeginPage();
  void EndPage();
  /// Takes what a function of printing answered.
  void Check(int answer, const char* act) const;

  MemoryDc dc_;
  std::string what_;
  bool ended_ = false;
  std::optional<GdiSurface> page_;
};

/// A page in memory. It has the printer's own pixels, or a whole number of them for each of its
/// pixels, so that a picture needs at most 64 MB.
class WindowsPagePicture : public OffscreenPicture {
 public:
  /// @param page  in twips; a side that no page has is taken as the nearest one that a page has
  /// @param printer  a pixel of the printer
  WindowsPagePicture(Extent page, PixelSize printer);

  Surface& Drawing() override { return surface_; }
  /// Onto a GdiSurface only. The last size is kept until something is drawn, and copied at once.
  void CopyTo(Surface& surface, const Rect& rect) override;

 private:
  struct Raster {
    int width = 0;
    int height = 0;
    PixelSize pixel;
  };
  static Raster RasterOf(Extent page, PixelSize printer);
  explicit WindowsPagePicture(const Raster& raster);
  /// Whether what was shown last is what a copy of this size would show.
  bool IsShown(int width, int height) const;

  DibSection picture_;
  GdiSurface surface_;
  /// As it was shown last, and of which drawing that was.
  std::unique_ptr<DibSection> shown_;
  std::uint64_t shownDrawings_ = 0;
};

}  // namespace velkor
