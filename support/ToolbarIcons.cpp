// support/ToolbarIcons.cpp: the pictures of toolbar buttons as lines on a square of 24 units.
#include "support/ToolbarIcons.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <numbers>

#include "platform/Elements.h"

namespace velkor {
namespace {

constexpr double Units = 24;
constexpr double LineWidth = 2;
constexpr double ThinWidth = 1;
/// Points to each side of a pixel at which it is looked whether a shape covers it.
constexpr int Fineness = 8;

/// The mark of a filter in force.
constexpr Colour Mark = Colour::FromRgb(0xE8, 0x59, 0x0C);

using Points = std::vector<Point>;

/// A line with round ends and corners through points, or an area that it goes around.
struct Shape {
  Points points;
  bool closed = false;
  bool filled = false;
  /// 0 for an area without a line.
  double width = LineWidth;
  bool marked = false;
};

using Shapes = std::vector<Shape>;

Shape Line(Points points, double width = LineWidth) {
  return {std::move(points), false, false, width};
}

Shape Closed(Points points) {
  return {std::move(points), true};
}

Shape Box(double left, double top, double right, double bottom) {
  return Closed({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
}

Point Polar(Point centre, double radius, double turn) {
  const double angle = turn * 2 * std::numbers::pi;
  return {centre.x + radius * std::cos(angle), centre.y + radius * std::sin(angle)};
}

Shape Circle(Point centre, double radius) {
  constexpr int Corners = 48;
  Points points;
  for (int i = 0; i < Corners; ++i)
    points.push_back(Polar(centre, radius, double{1} * i / Corners));
  return Closed(std::move(points));
}

Shape Funnel() {
  return Closed({{3, 4}, {21, 4}, {14, 12.5}, {14, 18}, {10, 20.5}, {10, 12.5}});
}

/// Filled, and with a mark of another colour.
Shapes ActiveFilter() {
  Shape funnel = Funnel();
  funnel.filled = true;
  Shape spot = Circle({18, 17}, 5.5);
  spot.filled = true;
  spot.width = 0;
  spot.marked = true;
  return {funnel, spot};
}

/// With a gear that its lines make room for.
Shapes PrintSetup() {
  constexpr Point Centre{17, 17};
  Shapes shapes{Line({{7, 8}, {7, 3}, {17, 3}, {17, 8}}),
                Line({{7, 17}, {3, 17}, {3, 8}, {21, 8}, {21, 10}}),
                Line({{10, 14}, {7, 14}, {7, 21}, {10, 21}}), Circle(Centre, 3)};
  constexpr int Teeth = 8;
  for (int tooth = 0; tooth < Teeth; ++tooth) {
    const double turn = double{1} * tooth / Teeth;
    shapes.push_back(Line({Polar(Centre, 4, turn), Polar(Centre, 5.3, turn)}));
  }
  return shapes;
}

/// A sheet with its margins.
Shapes PageSetup() {
  Shapes shapes{Box(4, 3, 20, 21)};
  for (const double x : {7.5, 16.5}) shapes.push_back(Line({{x, 4}, {x, 20}}, ThinWidth));
  for (const double y : {6.5, 17.5}) shapes.push_back(Line({{5, y}, {19, y}}, ThinWidth));
  return shapes;
}

Shapes ShapesOf(int image) {
  switch (image) {
    case toolbar_images::Back:
      return {Line({{11, 5}, {4, 12}, {11, 19}}), Line({{4.5, 12}, {20, 12}})};
    case toolbar_images::Next:
      return {Line({{13, 5}, {20, 12}, {13, 19}}), Line({{19.5, 12}, {4, 12}})};
    case toolbar_images::Print:
      return {Line({{7, 8}, {7, 3}, {17, 3}, {17, 8}}),
              Line({{7, 17}, {3, 17}, {3, 8}, {21, 8}, {21, 17}, {17, 17}}), Box(7, 14, 17, 21)};
    case toolbar_images::Filter:
      return {Funnel()};
    case toolbar_images::ActiveFilter:
      return ActiveFilter();
    case toolbar_images::Open:
      return {Line({{4, 19}, {3, 19}, {3, 5}, {9, 5}, {11, 8}, {19, 8}, {19, 11}}),
              Closed({{4, 19}, {7, 11}, {22, 11}, {19, 19}})};
    case toolbar_images::Save:
      return {Closed({{4, 4}, {16, 4}, {20, 8}, {20, 20}, {4, 20}}),
              Line({{8, 4}, {8, 9}, {15, 9}, {15, 4}}),
              Line({{7, 20}, {7, 14}, {17, 14}, {17, 20}})};
    case toolbar_images::PrintSetup:
      return PrintSetup();
    case toolbar_images::PageSetup:
      return PageSetup();
    case toolbar_images::Zoom:
      return {Circle({10, 10}, 6.5), Line({{15, 15}, {21, 21}})};
    default:
      return {};
  }
}

/// The square of the distance of a point to the line between two others.
double SquaredDistance(Point at, Point from, Point to) {
  const double x = to.x - from.x;
  const double y = to.y - from.y;
  const double length = x * x + y * y;
  const double along =
      length > 0 ? std::clamp(((at.x - from.x) * x + (at.y - from.y) * y) / length, 0.0, 1.0) : 0;
  const double dx = from.x + along * x - at.x;
  const double dy = from.y + along * y - at.y;
  return dx * dx + dy * dy;
}

bool Covers(const Shape& shape, Point at) {
  const double reach = shape.width * shape.width / 4;
  const std::size_t count = shape.points.size();
  bool inside = false;
  for (std::size_t i = 0; i < count; ++i) {
    const Point from = shape.points[i];
    const Point to = shape.points[(i + 1) % count];
    const bool drawn = shape.closed || i + 1 < count;
    if (drawn && SquaredDistance(at, from, to) < reach) return true;
    if ((from.y > at.y) != (to.y > at.y) &&
        at.x < from.x + (at.y - from.y) * (to.x - from.x) / (to.y - from.y)) {
      inside = !inside;
    }
  }
  return shape.filled && inside;
}

/// The uppermost shape at a point; null where there is none.
const Shape* ShapeAt(const Shapes& shapes, Point at) {
  const auto found = std::find_if(shapes.rbegin(), shapes.rend(),
                                  [&](const Shape& shape) { return Covers(shape, at); });
  return found == shapes.rend() ? nullptr : &*found;
}

template <typename Mix>
Colour Mixed(Colour a, Colour b, const Mix& mix) {
  return Colour::FromRgb(mix(a.Red(), b.Red()), mix(a.Green(), b.Green()), mix(a.Blue(), b.Blue()));
}

/// The mean of what is seen at the points of a pixel.
IconPixel PixelAt(const Shapes& shapes, int x, int y, double unit, Colour lines) {
  int covered = 0;
  int marked = 0;
  for (int row = 0; row < Fineness; ++row) {
    for (int column = 0; column < Fineness; ++column) {
      const Shape* const shape = ShapeAt(
          shapes, {(x + (column + 0.5) / Fineness) * unit, (y + (row + 0.5) / Fineness) * unit});
      if (shape == nullptr) continue;
      ++covered;
      if (shape->marked) ++marked;
    }
  }
  if (covered == 0) return {};
  const Colour colour = Mixed(lines, Mark, [&](int line, int mark) {
    return (line * (covered - marked) + mark * marked) / covered;
  });
  return {colour, static_cast<std::uint8_t>(255 * covered / (Fineness * Fineness))};
}

}  // namespace

std::vector<IconPixel> DrawToolbarIcon(int image, int side, Colour lines) {
  const Shapes shapes = ShapesOf(image);
  std::vector<IconPixel> pixels;
  pixels.reserve(static_cast<std::size_t>(side) * static_cast<std::size_t>(side));
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < side; ++x) pixels.push_back(PixelAt(shapes, x, y, Units / side, lines));
  }
  return pixels;
}

Colour Over(Colour back, const IconPixel& pixel) {
  return Mixed(pixel.colour, back, [&](int front, int behind) {
    return (front * pixel.cover + behind * (255 - pixel.cover)) / 255;
  });
}

Colour FadedLines(Colour lines, Colour back) {
  return Mixed(lines, back, [](int line, int behind) { return (35 * line + 65 * behind) / 100; });
}

}  // namespace velkor
