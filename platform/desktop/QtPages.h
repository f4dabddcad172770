// platform/desktop/QtPages.h: pages of a Qt device as surfaces, and texts measured for them.
#pragma once

#include <QImage>
#include <QPagedPaintDevice>
#include <QPainter>
#include <cstdint>
#include <optional>

#include "platform/OffscreenPicture.h"
#include "platform/desktop/QtSurface.h"

namespace velkor {

/// Logical pixel of a page, 288 to the inch: fonts of whole points have a whole number of them, and
/// a line one pixel wide is thin but never lost.
inline constexpr PixelSize PagePixel{5, 5};

/// Begins with the first page. Throws Error (DeviceInputOutput) where the device fails.
class QtPages {
 public:
  /// @param device  with its layout set; outlives this
  /// @param resolution  its units for an inch
  QtPages(QPagedPaintDevice& device, int resolution);

  Surface& Page() { return *surface_; }
  void NewPage();
  /// Hands everything to the device; no page is valid after it.
  void End();

 private:
  void BeginPage();

  QPagedPaintDevice& device_;
  double scale_;
  QPainter painter_;
  std::optional<QtSurface> surface_;
};

/// Measures as surfaces of a pixel draw, at first those of every QtPages. What is drawn on it is
/// lost.
class QtMeasuringPage {
 public:
  explicit QtMeasuringPage(PixelSize pixel = PagePixel)
      : painter_(&image_), surface_(painter_, pixel) {}

  Surface& Page() { return surface_; }

 private:
  QImage image_{1, 1, QImage::Format_RGB32};
  QPainter painter_;
  QtSurface surface_;
};

/// A page in memory, drawn as every QtPages draws it. One of the usual sizes has all its logical
/// pixels; larger ones have fewer, so that a picture needs at most 64 MB.
class QtPagePicture : public OffscreenPicture {
 public:
  /// @param page  in twips; a side that no page has is taken as the nearest one that a page has
  explicit QtPagePicture(Extent page);

  Surface& Drawing() override { return surface_; }
  /// Onto a QtSurface only. The last size is kept until something is drawn, and copied at once.
  void CopyTo(Surface& surface, const Rect& rect) override;

 private:
  double scale_;
  QImage image_;
  QPainter painter_;
  QtSurface surface_;
  /// As it was shown last, and of which drawing that was.
  QImage shown_;
  std::uint64_t shownDrawings_ = 0;
};

}  // namespace velkor
