// tests/view/SampleGrid.h: a year grid over sample events, and a surface that notes its measures.
#pragma once

#include <set>
#include <string>
#include <tuple>
#include <utility>
#include <vector>

#include "platform/headless/RecordingSurface.h"
#include "tests/model/SampleEvents.h"
#include "view/YearGrid.h"

namespace velkor {

inline void SetEvents(YearGrid& grid, std::vector<CalEvent> events) {
  const EventFields fields = grid.Fields();
  for (CalEvent& event : events) fields.Derive(event);
  grid.SetEvents(EventCollection(std::move(events)));
}

/// A grid of 2006, laid out, with bands and columns of these sizes on a screen of 15 twips a
/// pixel. January 2006 takes columns 1 to 31.
inline YearGrid SampleGrid(std::vector<CalEvent> events, PlannerProperties options = {},
                           int bandHeight = 300, int columnWidth = 300,
                           DisplaySpan span = {2006, 1}, CategoryFilter filter = CategoryFilter()) {
  YearGrid grid(span, SampleCategories(), std::move(filter), std::move(options));
  SetEvents(grid, std::move(events));
  grid.Resize({405.0 + 45 + 37 * columnWidth, 240.0 + 45 + grid.Layout().TotalBands() * bandHeight},
              255, {});
  return grid;
}

/// The middle of a cell.
inline Point CentreOf(const YearGrid& grid, int row, int column, int band) {
  const GridGeometry& geometry = grid.Geometry();
  return {(geometry.ColumnEdge(column - 1) + geometry.ColumnEdge(column)) / 2,
          geometry.RowTop(grid.Layout(), row) + geometry.BandEdge(band) - geometry.BandEdge(1) / 2};
}

/// Notes what is measured more than once, which costs as much as drawing does.
class MeasureOnceSurface : public RecordingSurface {
 public:
  Extent Measure(std::string_view text, const Font& font) override {
    const bool isNew = measured_.emplace(std::string(text), font.size, font.bold).second;
    if (!isNew) repeated.push_back(std::string(text) + ' ' + std::to_string(font.size));
    return RecordingSurface::Measure(text, font);
  }

  std::vector<std::string> repeated;

 private:
  std::set<std::tuple<std::string, double, bool>> measured_;
};

}  // namespace velkor
