// hosts/windows/TryOut/PictureFile.h: pictures as files, and colours as scripts write them.
#pragma once

#include <string>
#include <string_view>

#include "platform/windows/drawing/DibSection.h"

namespace velkor {

/// Writes a picture as a bitmap of 24 bits a pixel. Throws Error with the path.
/// @param size  of the picture, in pixels
void SaveBitmap(const DibSection& picture, SIZE size, const std::string& path);

/// "RRGGBB" in capitals.
std::string ToHex(Colour colour);
/// Throws Error for anything but six hexadecimal digits.
Colour ColourOfHex(std::string_view text);

}  // namespace velkor
