// hosts/yearplan/window/ColourSquare.cpp: drawing the square, at twice its size for sharp screens.
#include "hosts/yearplan/window/ColourSquare.h"

#include <QPainter>
#include <QPixmap>

namespace velkor {

Colour ColourOr(const std::string& text, Colour other) {
  const QColor colour(QString::fromStdString(text));
  if (text.empty() || !colour.isValid()) return other;
  return Colour::FromRgb(colour.red(), colour.green(), colour.blue());
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
