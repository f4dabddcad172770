// platform/windows/elements/WindowsToolbarImages.cpp: line pictures on a square of 24 units.
#include "platform/windows/elements/WindowsToolbarImages.h"

#include <array>
#include <cmath>
#include <cstddef>
#include <initializer_list>
#include <numbers>
#include <vector>

#include "platform/windows/drawing/DibSection.h"

namespace velkor {
namespace {

constexpr int Count = 10;
constexpr double Units = 24;
constexpr double LineWidth = 2;
/// GDI draws hard edges: pictures are drawn this much larger, and each pixel is the mean of what
/// falls on it.
constexpr int Fineness = 4;

struct UnitPoint {
  double x;
  double y;
};

/// Draws lines on one square of a device context, at its own scale.
class LineDrawing {
 public:
  LineDrawing(HDC dc, int left, int side, COLORREF lines)
      : dc_(dc), saved_(dc), left_(left), scale_(side / Units), lines_(lines) {
    ::SelectObject(dc_, ::GetStockObject(NULL_BRUSH));
    ::SetDCBrushColor(dc_, lines);
    ThinLines(LineWidth);
  }

  void ThinLines(double width) {
    const LOGBRUSH brush{BS_SOLID, lines_, 0};
    const auto pixels = static_cast<DWORD>(std::lround(width * scale_));
    PenHandle pen(::ExtCreatePen(PS_GEOMETRIC | PS_SOLID | PS_ENDCAP_ROUND | PS_JOIN_ROUND, pixels,
                                 &brush, 0, nullptr));
    ::SelectObject(dc_, pen.get());
    pen_ = std::move(pen);
  }
  /// What is closed is filled from here on.
  void Fill() { ::SelectObject(dc_, ::GetStockObject(DC_BRUSH)); }

  void Line(std::initializer_list<UnitPoint> points) const {
    const std::vector<POINT> pixels = Pixels(points);
    ::Polyline(dc_, pixels.data(), static_cast<int>(pixels.size()));
  }
  void Closed(std::initializer_list<UnitPoint> points) const {
    const std::vector<POINT> pixels = Pixels(points);
    ::Polygon(dc_, pixels.data(), static_cast<int>(pixels.size()));
  }
  void Box(double left, double top, double right, double bottom) const {
    Closed({{left, top}, {right, top}, {right, bottom}, {left, bottom}});
  }
  void Circle(UnitPoint centre, double radius) const {
    const POINT from = Pixel({centre.x - radius, centre.y - radius});
    const POINT to = Pixel({centre.x + radius, centre.y + radius});
    ::Ellipse(dc_, from.x, from.y, to.x + 1, to.y + 1);
  }
  /// A filled circle without a line.
  void Spot(UnitPoint centre, double radius, COLORREF colour) const {
    const SavedDc before(dc_);
    ::SelectObject(dc_, ::GetStockObject(NULL_PEN));
    ::SelectObject(dc_, ::GetStockObject(DC_BRUSH));
    ::SetDCBrushColor(dc_, colour);
    Circle(centre, radius);
  }

 private:
  POINT Pixel(UnitPoint point) const {
    return {left_ + std::lround(point.x * scale_), std::lround(point.y * scale_)};
  }
  std::vector<POINT> Pixels(std::initializer_list<UnitPoint> points) const {
    std::vector<POINT> pixels;
    for (const UnitPoint& point : points) pixels.push_back(Pixel(point));
    return pixels;
  }

  HDC dc_;
  /// Ended after the device context let go of it.
  PenHandle pen_;
  SavedDc saved_;
  int left_;
  double scale_;
  COLORREF lines_;
};

void DrawBack(LineDrawing& drawing) {
  drawing.Line({{11, 5}, {4, 12}, {11, 19}});
  drawing.Line({{4.5, 12}, {20, 12}});
}

void DrawNext(LineDrawing& drawing) {
  drawing.Line({{13, 5}, {20, 12}, {13, 19}});
  drawing.Line({{19.5, 12}, {4, 12}});
}

void DrawPrint(LineDrawing& drawing) {
  drawing.Line({{7, 8}, {7, 3}, {17, 3}, {17, 8}});
  drawing.Line({{7, 17}, {3, 17}, {3, 8}, {21, 8}, {21, 17}, {17, 17}});
  drawing.Box(7, 14, 17, 21);
}

void DrawFilter(LineDrawing& drawing) {
  drawing.Closed({{3, 4}, {21, 4}, {14, 12.5}, {14, 18}, {10, 20.5}, {10, 12.5}});
}

/// Filled, and with a mark of another colour.
void DrawActiveFilter(LineDrawing& drawing) {
  drawing.Fill();
  DrawFilter(drawing);
  drawing.Spot({18, 17}, 5.5, RGB(0xE8, 0x59, 0x0C));
}

void DrawOpen(LineDrawing& drawing) {
  drawing.Line({{4, 19}, {3, 19}, {3, 5}, {9, 5}, {11, 8}, {19, 8}, {19, 11}});
  drawing.Closed({{4, 19}, {7, 11}, {22, 11}, {19, 19}});
}

void DrawSave(LineDrawing& drawing) {
  drawing.Closed({{4, 4}, {16, 4}, {20, 8}, {20, 20}, {4, 20}});
  drawing.Line({{8, 4}, {8, 9}, {15, 9}, {15, 4}});
  drawing.Line({{7, 20}, {7, 14}, {17, 14}, {17, 20}});
}

/// With a gear that its lines make room for.
void DrawPrintSetup(LineDrawing& drawing) {
  drawing.Line({{7, 8}, {7, 3}, {17, 3}, {17, 8}});
  drawing.Line({{7, 17}, {3, 17}, {3, 8}, {21, 8}, {21, 10}});
  drawing.Line({{10, 14}, {7, 14}, {7, 21}, {10, 21}});
  constexpr UnitPoint Centre{17, 17};
  drawing.Circle(Centre, 3);
  constexpr int Teeth = 8;
  for (int tooth = 0; tooth < Teeth; ++tooth) {
    const double angle = tooth * 2 * std::numbers::pi / Teeth;
    const auto at = [&](double radius) {
      return UnitPoint{Centre.x + radius * std::cos(angle), Centre.y + radius * std::sin(angle)};
    };
    drawing.Line({at(4), at(5.3)});
  }
}

/// A sheet with its margins.
void DrawPageSetup(LineDrawing& drawing) {
  drawing.Box(4, 3, 20, 21);
  drawing.ThinLines(LineWidth / 2);
  for (const double x : {7.5, 16.5}) drawing.Line({{x, 4}, {x, 20}});
  for (const double y : {6.5, 17.5}) drawing.Line({{5, y}, {19, y}});
}

void DrawZoom(LineDrawing& drawing) {
  drawing.Circle({10, 10}, 6.5);
  drawing.Line({{15, 15}, {21, 21}});
}

/// In the order of toolbar_images.
constexpr std::array<void (*)(LineDrawing&), Count> Pictures{
    DrawBack, DrawNext, DrawPrint,      DrawFilter,    DrawActiveFilter,
    DrawOpen, DrawSave, DrawPrintSetup, DrawPageSetup, DrawZoom};

/// The mean of the fine pixels that fall on one.
COLORREF Mean(const DibSection& fine, int x, int y) {
  int red = 0;
  int green = 0;
  int blue = 0;
  for (int row = y * Fineness; row < (y + 1) * Fineness; ++row) {
    for (int column = x * Fineness; column < (x + 1) * Fineness; ++column) {
      const Colour colour = fine.At(column, row);
      red += colour.Red();
      green += colour.Green();
      blue += colour.Blue();
    }
  }
  constexpr int Parts = Fineness * Fineness;
  return RGB(red / Parts, green / Parts, blue / Parts);
}

}  // namespace

COLORREF FadedLines(COLORREF lines, COLORREF back) {
  const auto mix = [](int a, int b) { return (35 * a + 65 * b) / 100; };
  return RGB(mix(GetRValue(lines), GetRValue(back)), mix(GetGValue(lines), GetGValue(back)),
             mix(GetBValue(lines), GetBValue(back)));
}

ImageListHandle MakeToolbarImages(int side, COLORREF lines, COLORREF back) {
  const int fineSide = side * Fineness;
  const DibSection fine(Count * fineSide, fineSide);
  const RECT all{0, 0, Count * fineSide, fineSide};
  ::SetDCBrushColor(fine.Dc(), back);
  ::FillRect(fine.Dc(), &all, static_cast<HBRUSH>(::GetStockObject(DC_BRUSH)));
  for (int i = 0; i < Count; ++i) {
    LineDrawing drawing(fine.Dc(), i * fineSide, fineSide, lines);
    Pictures[static_cast<std::size_t>(i)](drawing);
  }
  const HDC screen = ::GetDC(nullptr);
  const MemoryDc dc(::CreateCompatibleDC(screen));
  const BitmapHandle strip(::CreateCompatibleBitmap(screen, Count * side, side));
  ::ReleaseDC(nullptr, screen);
  const HGDIOBJ before = ::SelectObject(dc.get(), strip.get());
  for (int y = 0; y < side; ++y) {
    for (int x = 0; x < Count * side; ++x) ::SetPixelV(dc.get(), x, y, Mean(fine, x, y));
  }
  ::SelectObject(dc.get(), before);
  ImageListHandle list(::ImageList_Create(side, side, ILC_COLOR24 | ILC_MASK, Count, 0));
  if (list) ::ImageList_AddMasked(list.get(), strip.get(), back);
  return list;
}

}  // namespace velkor
