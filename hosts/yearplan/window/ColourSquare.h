// hosts/yearplan/window/ColourSquare.h: the square that shows a calendar's colour.
#pragma once

#include <QIcon>
#include <string>

#include "values/Colour.h"

namespace velkor {

/// The colour that a text as "#rrggbb" names; another one for any other text.
Colour ColourOr(const std::string& text, Colour other);

QColor ToQtColour(Colour colour);
/// @param daysOff  hatched, as a calendar that shades days instead of drawing bars
QIcon ColourSquare(Colour colour, bool daysOff = false);

}  // namespace velkor
