// tests/view/YearPicture.h: one year drawn with the whole face, and its colours on every surface.
#pragma once

#include <gtest/gtest.h>

#include <functional>
#include <string>
#include <utility>
#include <vector>

#include "tests/model/SampleEvents.h"
#include "view/Face.h"
#include "view/GridPainter.h"
#include "view/LegendPainter.h"

namespace velkor {

/// The year 2026 with three appointments; 1 January is a Thursday, 1 February a Sunday.
class YearPicture {
 public:
  static constexpr int Width = 1300;
  static constexpr int Height = 900;
  static constexpr Extent Size{Width * TwipsPerPixel, Height* TwipsPerPixel};
  static constexpr Colour Leave = Colour::FromRgb(0, 112, 60);
  static constexpr Colour Travel = Colour::FromRgb(40, 70, 220);
  static constexpr Colour Other = Colour::FromRgb(204, 204, 204);

  YearPicture()
      : face_(DivideFace(Size)),
        grid_({2026, 1}, CategoryTable({{"Leave", Leave}, {"Travel", Travel}, {"Other", Other}}),
              CategoryFilter(), {.AllEvents = true, .DisplaySubject = true}) {
    std::vector<CalEvent> events{
        SampleEvent("A", At(2026, 3, 9), At(2026, 3, 14), "Leave"),
        SampleEvent("B", At(2026, 2, 26), At(2026, 3, 12), "Travel"),
        SampleEvent("C", At(2026, 6, 10, 9), At(2026, 6, 10, 17)),
    };
    const EventFields fields = grid_.Fields();
    for (CalEvent& event : events) {
      event.Subject = event.EventID;
      fields.Derive(event);
    }
    grid_.SetEvents(EventCollection(std::move(events)));
    grid_.Resize({face_.picParent.Width(), face_.picParent.Height()}, 255, {});
  }

  void Draw(Surface& surface) const {
    FaceContent content;
    content.caption = YearCaption(2026);
    content.today = Date::FromYmd(2026, 8, 19);
    content.names.abbreviatedMonths.fill("M");
    content.names.abbreviatedDays.fill("d");
    DrawFace(surface, face_, grid_, content);
  }

  /// Checks the drawing's pixels; `at` answers the colour of one.
  void ExpectColours(const std::function<Colour(int x, int y)>& at) const {
    const auto expect = [&](const std::string& what, Point point, Colour colour) {
      const int x = ToPixel(face_.gridView.left + point.x, 15);
      const int y = ToPixel(face_.gridView.top + point.y, 15);
      const Colour seen = at(x, y);
      EXPECT_EQ(seen, colour) << what << " at " << x << ", " << y << ": " << seen.Red() << ' '
                              << seen.Green() << ' ' << seen.Blue();
    };
    expect("last day of an all-day bar", InBand(3, 13, 2), Leave);
    expect("the day after an all-day bar", InBand(3, 14, 4), grid_colours::Weekend);
    expect("where two bars share a band the later one is seen", InBand(3, 11, 2), Travel);
    expect("first day of a bar in its first month", InBand(2, 26, 2), Travel);
    expect("a long bar keeps its band in the next month", InBand(3, 5, 2), Travel);
    expect("a timed appointment covers its day", InBand(6, 10, 2), Other);
    expect("the day after a timed appointment is free", InBand(6, 11, 2), grid_colours::Back);
    expect("a Saturday", InBand(1, 10, 4), grid_colours::Weekend);
    expect("a Sunday", InBand(2, 1, 4), grid_colours::Weekend);
    expect("a Monday", InBand(2, 2, 4), grid_colours::Back);
    expect("before the 1st", InBand(1, 0, 4), grid_colours::OutOfMonth);
    expect("before the 1st, a Sunday column", InBand(1, -3, 4), grid_colours::OutOfMonth);
    expect("after the last day", InBand(2, 29, 4), grid_colours::OutOfMonth);
    const Point mondayTop = Corner(2, 2);
    expect("outline of a month, top", {mondayTop.x + 200, mondayTop.y}, grid_colours::MonthOutline);
    const Point today = Corner(8, 19);
    const Twips below = 4 * TwipsPerPixel;
    expect("frame of today, left", {today.x - TwipsPerPixel, today.y + below},
           grid_colours::TodayFrame);
    expect("frame of today, second pixel", {today.x - 2 * TwipsPerPixel, today.y + below},
           grid_colours::TodayFrame);
    expect("inside today", InBand(8, 19, 3), grid_colours::Back);
    expect("shadow of today", {Corner(8, 20).x + 2 * TwipsPerPixel, today.y + 2 * below},
           grid_colours::TodayShadow);
    const Twips legendX = face_.picCatView.left - face_.gridView.left + 210;
    const Twips legendY = face_.picCatView.top - face_.gridView.top + LegendRowHeight / 2;
    expect("first swatch of the legend", {legendX, legendY}, Leave);
    expect("second swatch of the legend", {legendX, legendY + LegendRowHeight}, Travel);
  }

 private:
  /// Top left corner of a day's cell.
  Point Corner(int row, int day) const {
    const int column = grid_.Columns().RowDayOffset[row] + day;
    return {grid_.Geometry().ColumnEdge(column - 1), grid_.Geometry().RowTop(grid_.Layout(), row)};
  }
  /// A point right of the middle of a day's cell, where a subject of one letter does not reach.
  Point InBand(int row, int day, int band) const {
    const Point corner = Corner(row, day);
    return {corner.x + 0.7 * grid_.Geometry().ColumnWidth,
            corner.y + (band - 0.5) * grid_.Geometry().BandHeight};
  }

  FaceLayout face_;
  YearGrid grid_;
};

}  // namespace velkor
