// view/GridPainter.h: draws the grid: weekends, days off, months, bars with their subjects, today.
#pragma once

#include <optional>

#include "platform/Surface.h"
#include "values/Date.h"
#include "view/GridScene.h"
#include "view/Selection.h"

namespace velkor {

namespace grid_colours {
inline constexpr Colour Back = colours::White;
inline constexpr Colour Weekend = Colour::FromRgb(238, 232, 170);
inline constexpr Colour OutOfMonth = Colour::FromRgb(224, 224, 224);
inline constexpr Colour MonthOutline = Colour::FromRgb(255, 0, 0);
inline constexpr Colour DayNumber = Colour::FromRgb(110, 110, 110);
/// Days off are told apart by their stripes where colours are not: on weekends, in grey print.
inline constexpr Colour DayOff = Colour::FromRgb(214, 236, 220);
inline constexpr Colour DayOffStripe = Colour::FromRgb(136, 186, 156);
inline constexpr Colour DayOffNumber = colours::Black;
inline constexpr Colour TodayShadow = Colour::FromRgb(128, 128, 128);
inline constexpr Colour TodayFrame = Colour::FromRgb(255, 0, 0);
}  // namespace grid_colours

/// Black or white, whichever has the greater contrast with a colour.
Colour ReadableOn(Colour back);

/// The height of bands in which day numbers and subjects stand at their full size, in whole twips.
Twips ReadableBandHeight(Surface& surface, const Font& font);

/// What lies over the year itself; a page has none of it.
struct GridMarks {
  std::optional<Date> today;
  std::optional<Selection> selection;
  /// The day that the keyboard is on.
  std::optional<GridCell> cursor;
};

/// Draws one year on one surface. `visible` is the part of the grid that is in sight, in the
/// grid's own coordinates; what lies outside it is not drawn.
class GridPainter {
 public:
  GridPainter(Surface& surface, const GridScene& scene, const Font& font, const Rect& visible);

  /// Everything, each layer over those before it: on a screen, in a picture and on a page.
  void Draw(const GridMarks& marks = {});

  /// Clears, then shades the weekends and the cells outside each month.
  void DrawShading();
  /// Stripes the cells of days off, over a colour of their own where they are no weekend's.
  void DrawDaysOff();
  void DrawMonthOutlines();
  /// Writes each day's number into the band that no event takes, where they can be
  /// read.
  void DrawDayNumbers();
  /// One filled bar for each event and row, with its subject when subjects are shown. Subjects of a
  /// fixed size that bars are too low for are left out.
  void DrawEvents();
  void DrawToday(Date today);

 private:
  bool InSight(Twips top, Twips bottom) const {
    return bottom > visible_.top && top < visible_.bottom;
  }
  /// The grid's font at the subjects' size.
  Font FontForSubjects() const;
  /// The largest font whose day numbers fit a band and a column; none when they are too small.
  std::optional<Font> FontForDayNumbers() const;
  Twips DayNumberMargin() const {
    return 2 * (geometry_.pen > 0 ? geometry_.pen : double{geometry_.pixel.width});
  }
  void DrawStripes(const Rect& rect);

  Surface& surface_;
  GridScene scene_;
  const GridGeometry& geometry_;
  const BandLayout& layout_;
  Font font_;
  Rect visible_;
};

}  // namespace velkor
