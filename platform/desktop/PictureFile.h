// platform/desktop/PictureFile.h: a drawing as a PNG, SVG or PDF file.
#pragma once

#include <functional>
#include <string>

#include "platform/Surface.h"

namespace velkor {

struct PictureOptions {
  /// Output pixels for one logical pixel of 15 twips (PNG only); above 0.
  double scale = 1;
  /// Title kept in SVG and PDF files.
  std::string title;
};

using DrawPicture = std::function<void(Surface&)>;

/// Longest side of a PNG, in output pixels.
inline constexpr int LongestPngSide = 20000;

/// Each draws on a white surface of `size` twips and puts the file in place only when it is whole:
/// whatever goes wrong, the old file stays. Throws Error that names the file and the reason, and
/// whatever `draw` throws. Needs a QGuiApplication. Paths are UTF-8.
void RenderToPng(const std::string& path, Extent size, const DrawPicture& draw,
                 const PictureOptions& options = {});
void RenderToSvg(const std::string& path, Extent size, const DrawPicture& draw,
                 const PictureOptions& options = {});
/// One page of this size, rounded up to whole points and shrunk to 200 inches a side, the most that
/// the format has; its text can be selected.
void RenderToPdf(const std::string& path, Extent size, const DrawPicture& draw,
                 const PictureOptions& options = {});

}  // namespace velkor
