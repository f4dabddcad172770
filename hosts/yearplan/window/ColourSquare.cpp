// hosts/yearplan/window/ColourSquare.cpp: drawing the square, at twice its size for sharp screens.
#include "hosts/yearplan/window/ColourSquare.h"

#include <QPainter>
#include <QPixmap>

#include "values/ColourText.h"

namespace velkor {

std::optional<Colour> ColourOfServer(std::string_view text) {
  if (!text.starts_with('#')) return std::nullopt;
  return ColourOfHex(text.substr(1));
}

QColor ToQtColour(Colour colour) {
  return {colour.Red(), colour.Green(), colour.Blue()};
}

QIcon ColourSquare(Colour colour, bool daysOff) {
  constexpr int Side = 12;
  constexpr int Sharpness = 2;
  QPixmap square(Side * Sharpness, Side * Sharpness);
  square.setDevicePixelRatio(Sharpness);
  square.fill(daysOff ? Qt::white : ToQtColour(colour));
  QPainter painter(&square);
  if (daysOff) painter.fillRect(0, 0, Side, Side, QBrush(ToQtColour(colour), Qt::Dense4Pattern));
  painter.setPen(ToQtColour(colour).darker());
  painter.drawRect(0, 0, Side - 1, Side - 1);
  QIcon icon(square);
  // Styles tint what is selected, and here the colour is all that is told.
  icon.addPixmap(square, QIcon::Selected);
  return icon;
}

}  // namespace velkor
