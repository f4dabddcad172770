// hosts/windows/TryOut/PictureFile.h: writes pictures as files.
#pragma once

#include <string>

#include "platform/windows/drawing/DibSection.h"

namespace velkor {

/// Writes a picture as a bitmap of 24 bits a pixel. Throws Error with the path.
/// @param size  of the picture, in pixels
void SaveBitmap(const DibSection& picture, SIZE size, const std::string& path);

}  // namespace velkor
