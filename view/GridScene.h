// view/GridScene.h: what a drawing of a year is made of, on screen and on paper.
#pragma once

#include <optional>

#include "platform/Surface.h"
#include "view/YearGrid.h"

namespace velkor {

/// How subjects stand on their bars.
struct SubjectStyle {
  bool shown = false;
  TextFlags flags = text_flags::NoPrefix | text_flags::WordEllipsis;
  /// In points; none: the largest size that fits a band.
  std::optional<double> size = std::nullopt;
};

/// What it refers to outlives it.
struct GridScene {
  GridScene(const BarRule& drawnRule, const CategoryTable& drawnCategories,
            const EventCollection& drawnEvents, const BandLayout& drawnLayout,
            const GridGeometry& drawnGeometry, const DaysOff& drawnDaysOff,
            const EventColour& drawnColour, SubjectStyle style)
      : rule(drawnRule),
        categories(drawnCategories),
        events(drawnEvents),
        layout(drawnLayout),
        geometry(drawnGeometry),
        daysOff(drawnDaysOff),
        eventColour(drawnColour),
        subjects(style) {}
  /// A year on a screen is drawn as it is.
  GridScene(const YearGrid& grid)
      : GridScene(grid.Rule(), grid.Categories(), grid.Events(), grid.Layout(), grid.Geometry(),
                  grid.OffDays(), grid.ColourOfEvents(),
                  {.shown = grid.Properties().DisplaySubject}) {}

  Colour ColourOf(const CalEvent& event) const {
    const std::optional<Colour> own = eventColour ? eventColour(event) : std::nullopt;
    return own ? *own : categories.At(event.CatIndex).colour;
  }

  const BarRule& rule;
  const CategoryTable& categories;
  const EventCollection& events;
  const BandLayout& layout;
  const GridGeometry& geometry;
  const DaysOff& daysOff;
  const EventColour& eventColour;
  SubjectStyle subjects;
};

}  // namespace velkor
