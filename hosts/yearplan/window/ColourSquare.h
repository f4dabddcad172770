// hosts/yearplan/window/ColourSquare.h: the square that shows a calendar's colour.
#pragma once

#include <QIcon>

#include "values/Colour.h"

namespace velkor {

QColor ToQtColour(Colour colour);
/// @param daysOff  hatched, as a calendar that shades days instead of drawing bars
QIcon ColourSquare(Colour colour, bool daysOff = false);

}  // namespace velkor
