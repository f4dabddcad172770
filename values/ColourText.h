// values/ColourText.h: writes colours as six hexadecimal digits, red first, and reads them.
#pragma once

#include <optional>
#include <string>
#include <string_view>

#include "values/Colour.h"

namespace velkor {

/// "3366CC": capitals, nothing around them.
std::string ToHex(Colour colour);
/// None for anything but six hexadecimal digits, of either case.
std::optional<Colour> ColourOfHex(std::string_view text);

}  // namespace velkor
