// bench/DrawingFigures.cpp: drawing a full year over the bare calls that it makes, and a picture's
// encoding over its drawing.
#include <QImage>
#include <QPainter>
#include <algorithm>
#include <string>

#include "bench/CallRecorder.h"
#include "bench/Comparison.h"
#include "bench/Figures.h"
#include "bench/SampleEvents.h"
#include "control/ControlLayout.h"
#include "control/ControlLook.h"
#include "platform/desktop/PngFile.h"
#include "platform/desktop/QtSurface.h"
#include "platform/headless/FixedLocale.h"
#include "view/GridPainter.h"
#include "view/HeaderPainter.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

constexpr std::size_t Bars = 10'000;
constexpr double DrawingLimit = 1.3;

/// A picture of the grid's whole height, so that every bar is in sight.
class GridPicture {
 public:
  explicit GridPicture(const YearGrid& grid)
      : size_{0, 0, double(grid.Geometry().GridWidth), grid.Geometry().GridHeight(grid.Layout())},
        image_(int(size_.right / TwipsPerPixel) + 1, int(size_.bottom / TwipsPerPixel) + 1,
               QImage::Format_RGB32) {
    image_.fill(Qt::white);
  }
  const Rect& Size() const { return size_; }
  QImage& Image() { return image_; }
  Surface& Face() { return surface_; }

 private:
  Rect size_;
  QImage image_;
  QPainter painter_{&image_};
  QtSurface surface_{painter_};
};

void DrawEventPass(GridPainter& painter) {
  painter.DrawEvents();
}

void DrawAll(GridPainter& painter) {
  painter.Draw({Date::FromYmd(2026, 7, 1), {}, {}});
}

RunFigure DrawingFigure(bool displaySubject, void (*draw)(GridPainter&)) {
  return [=](benchmark::State& state) {
    const YearGrid grid = GridWithBars(Bars, displaySubject);
    GridPicture picture(grid);
    const auto drawOn = [&](Surface& surface) {
      GridPainter painter(surface, grid, Font{}, picture.Size());
      draw(painter);
    };
    CallRecorder calls(picture.Face());
    drawOn(calls);

    // Both ways must draw the same, or their times say nothing.
    GridPicture bare(grid);
    calls.Replay(bare.Face());
    drawOn(picture.Face());
    if (calls.Count() < Bars || picture.Image() != bare.Image()) {
      state.SkipWithError("the bare calls are not the pass");
      return;
    }
    Compare(
        state, DrawingLimit, [&] { return SecondsOf([&] { calls.Replay(picture.Face()); }); },
        [&] { return SecondsOf([&] { drawOn(picture.Face()); }); });
  };
}

/// The year and its legend where the control has them.
void DrawYear(Surface& surface, const ControlAreas& areas, const YearGrid& grid,
              const CalendarNames& names) {
  const Font font;
  const Extent size{areas.legend.right, std::max(areas.grid.bottom, areas.legend.bottom)};
  surface.Fill({0, 0, size.width, size.height}, ControlLook().back);
  {
    const ViewScope scope(surface, areas.legend, {areas.legend.left, areas.legend.top});
    const Rect rows{0, 0, areas.legend.Width(), areas.legend.Height()};
    DrawLegend(surface, grid.Categories(), font, rows, rows.Width());
  }
  const ViewScope scope(surface, areas.grid, {areas.grid.left, areas.grid.top});
  DrawHeaderRow(surface, grid.Geometry(), names, font);
  const Rect months{0, 0, areas.grid.Width() - MonthColumnWidth,
                    areas.grid.Height() - HeaderRowHeight};
  {
    const Rect column{0, HeaderRowHeight, MonthColumnWidth, areas.grid.Height()};
    const ViewScope below(surface, column, {0, HeaderRowHeight});
    DrawMonthColumn(surface, grid, names, font, months);
  }
  const ViewScope cells(
      surface, {MonthColumnWidth, HeaderRowHeight, areas.grid.Width(), areas.grid.Height()},
      {MonthColumnWidth, HeaderRowHeight});
  GridPainter(surface, grid, font, months).Draw({Date::FromYmd(2026, 7, 1), {}, {}});
}

/// As `render` draws a year to a PNG file, but for the words above it.
RunFigure EncodingFigure(std::size_t events) {
  return [=](benchmark::State& state) {
    constexpr double EncodingLimit = 1;
    Extent size{1920 * TwipsPerPixel, 1200 * TwipsPerPixel};
    YearGrid grid = FilledGrid(events, Spread::Random, true);
    const auto strip = StripKind::Caption;
    const Rect asked = DivideControl(size, strip).grid;
    grid.Resize({asked.Width(), asked.Height()}, 0, {});
    size.height =
        std::max(size.height, LeastControlHeight(HeightWithoutScrolling(grid.Layout(), {}), strip));
    const ControlAreas areas = DivideControl(size, strip);
    grid.Resize({areas.grid.Width(), areas.grid.Height()}, 0, {});

    FixedLocale locale;
    const CalendarNames names = Locale::LoadCalendarNames(locale, locale.locale);
    QImage image(int(size.width / TwipsPerPixel), int(size.height / TwipsPerPixel),
                 QImage::Format_RGB32);
    const auto draw = [&] {
      QPainter painter(&image);
      QtSurface surface(painter);
      DrawYear(surface, areas, grid, names);
    };
    Compare(
        state, EncodingLimit, [&] { return SecondsOf(draw); },
        [&] { return SecondsOf([&] { benchmark::DoNotOptimize(EncodePng(image)); }); });
  };
}

}  // namespace

void RegisterDrawingFigures() {
  constexpr int Iterations = 31;
  const std::string over = " over the bare calls";
  RegisterFigure("event pass, 10,000 bars" + over, Iterations, DrawingFigure(false, DrawEventPass));
  RegisterFigure("event pass, 10,000 bars with subjects" + over, Iterations,
                 DrawingFigure(true, DrawEventPass));
  RegisterFigure("redraw, 10,000 bars" + over, Iterations, DrawingFigure(false, DrawAll));
  RegisterFigure("redraw, 10,000 bars with subjects" + over, Iterations,
                 DrawingFigure(true, DrawAll));
  for (const std::size_t events : {300, 2000}) {
    RegisterFigure("PNG encoding of " + std::to_string(events) + " events over drawing them",
                   Iterations, EncodingFigure(events));
  }
}

}  // namespace velkor
