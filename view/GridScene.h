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
  const BarRule& rule;
  const CategoryTable& categories;
  const EventCollection& events;
  const BandLayout& layout;
  const GridGeometry& geometry;
  SubjectStyle subjects;
};

inline GridScene SceneOf(const YearGrid& grid) {
  return {grid.Rule(),   grid.Categories(), grid.Events(),
          grid.Layout(), grid.Geometry(),   {.shown = grid.Properties().DisplaySubject}};
}

}  // namespace velkor
