// platform/desktop/PngFile.h: a drawing's pixels as the bytes of a PNG file.
#pragma once

#include <QByteArray>

class QImage;

namespace velkor {

/// In less time than a year takes to draw, where the usual encoders take several times as long. A
/// drawing is made of even areas and of rows like the one above, so only those repetitions are
/// written shorter; files are half as large again as with a search for others.
/// @param image  QImage::Format_RGB32, at least one pixel; its resolution is written, too
QByteArray EncodePng(const QImage& image);

}  // namespace velkor
