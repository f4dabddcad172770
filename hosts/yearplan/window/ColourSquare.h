// hosts/yearplan/window/ColourSquare.h: the square that shows a calendar's colour.
#pragma once

#include <QIcon>
#include <optional>
#include <string_view>

#include "values/Colour.h"

namespace velkor {

/// The colour of a text as "#rrggbb", which servers write; none for any other text.
std::optional<Colour> ColourOfServer(std::string_view text);

QColor ToQtColour(Colour colour);
/// @param daysOff  hatched, as a calendar that shades days instead of drawing bars
QIcon ColourSquare(Colour colour, bool daysOff = false);

}  // namespace velkor
