// categories/FirstPalette.h: colours that people can tell apart, for what has none yet.
#pragma once

#include <array>

#include "values/Colour.h"

namespace velkor {

/// At least 20 apart (CIE 1976) from each other and from the grid's own colours, also as seen with
/// protanopia, deuteranopia and tritanopia; the ones furthest apart come first.
inline constexpr std::array<Colour, 14> FirstPalette{{
    Colour::FromRgb(0x12, 0x8A, 0xFF),
    Colour::FromRgb(0xFF, 0x99, 0x0C),
    Colour::FromRgb(0x0A, 0x7F, 0x44),
    Colour::FromRgb(0xB6, 0x42, 0xAC),
    Colour::FromRgb(0x73, 0x12, 0x04),
    Colour::FromRgb(0x9A, 0xFA, 0x6B),
    Colour::FromRgb(0x2F, 0x42, 0xDC),
    Colour::FromRgb(0xF1, 0x9D, 0xFA),
    Colour::FromRgb(0x5F, 0x7D, 0x09),
    Colour::FromRgb(0x50, 0x0D, 0x90),
    Colour::FromRgb(0x20, 0xC0, 0x60),
    Colour::FromRgb(0x98, 0x6C, 0x83),
    Colour::FromRgb(0x04, 0x42, 0x3B),
    Colour::FromRgb(0x5E, 0x14, 0x64),
}};

}  // namespace velkor
