// tests/view/GridPointerRulesTest.cpp: random pointer actions against the rules step by step.
#include <gtest/gtest.h>

#include <map>
#include <random>
#include <tuple>

#include "tests/view/SampleGrid.h"
#include "view/GridPointer.h"

namespace velkor {
namespace {

/// The rules one after the other, over an array of cells.
class PlainPointer {
 public:
  PlainPointer(const YearGrid& grid, bool selectionEnabled)
      : grid_(grid), selectionEnabled_(selectionEnabled) {
    for (const Bar& bar : grid.Layout().bars) {
      for (int c = bar.first + 1; c <= bar.last; ++c) cells_[{bar.row, c, bar.band}] = bar.event;
    }
  }

  void Move(Point at) {
    const int g = static_cast<int>(at.y / double{grid_.Geometry().BandHeight}) + 1;
    int band = 0;
    for (row = 1; row <= 12; ++row) {
      band = g - grid_.Layout().BandsInRow[row - 1];
      if (band > 0 && g <= grid_.Layout().BandsInRow[row]) break;
    }
    const int c = static_cast<int>(at.x / double{grid_.Geometry().ColumnWidth}) + 1;
    if (row > 12 || c > 37 || c < 0) return;
    currentBand = band;
    const int offset = grid_.Columns().RowDayOffset[row];
    const int last = grid_.Columns().RowLastColumn[row];
    const auto found = cells_.find({row, c, band});
    event.reset();
    if (found != cells_.end()) event = found->second;
    if (dragging) {
      selEndColumn = c <= offset ? offset + 1 : c >= last ? last : c;
      selEndRow = row;
      label = {DateAt(selStartColumn, selStartRow)};
      if (selStartColumn != selEndColumn || selStartRow != selEndRow) {
        label.push_back(DateAt(selEndColumn, selEndRow));
      }
    } else {
      label = {DateAt(c, row)};
    }
    column = c > last || c <= offset ? 0 : c;
  }

  void Press() {
    if (!selectionEnabled_ || column == 0 || row > 12) return;
    dragging = true;
    selStartColumn = selEndColumn = column;
    selStartRow = selEndRow = row;
    selStartBand = currentBand;
  }

  /// @return the range, or nothing and the event to open
  std::pair<std::optional<DateRange>, std::optional<std::size_t>> Release() {
    if (!dragging) return {std::nullopt, selectionEnabled_ ? std::nullopt : event};
    EndDrag();
    return {DateRange{DateAt(selStartColumn, selStartRow), DateAt(selEndColumn + 1, selEndRow)},
            std::nullopt};
  }

  /// The button that calls the menu ends a drag, too.
  void EndDrag() {
    if (!dragging) return;
    if (selEndRow < selStartRow) {
      std::swap(selStartRow, selEndRow);
      std::swap(selStartColumn, selEndColumn);
    } else if (selEndRow == selStartRow && selEndColumn < selStartColumn) {
      std::swap(selStartColumn, selEndColumn);
    }
    dragging = false;
  }

  int row = 0, currentBand = 0, column = 0;
  int selStartColumn = 0, selEndColumn = 0, selStartRow = 0, selEndRow = 0, selStartBand = 0;
  bool dragging = false;
  std::optional<std::size_t> event;
  std::vector<Date> label;

 private:
  Date DateAt(int c, int r) const { return grid_.Span().DateAtCell(c, r); }

  const YearGrid& grid_;
  bool selectionEnabled_;
  std::map<std::tuple<int, int, int>, std::size_t> cells_;
};

std::vector<Date> DatesOf(const std::optional<PointerLabel>& label) {
  std::vector<Date> dates;
  if (label) dates.push_back(label->from);
  if (label && label->to) dates.push_back(*label->to);
  return dates;
}

TEST(GridPointer, FollowsTheRulesThroughRandomActions) {
  std::mt19937 random(34);
  const auto below = [&](int bound) {
    return static_cast<int>(random() % static_cast<unsigned>(bound));
  };
  int ranges = 0;
  int opened = 0;
  for (int round = 0; round < 40; ++round) {
    std::vector<CalEvent> events;
    for (int i = 0; i < 150; ++i) {
      const Date start = At(2006, 1 + below(14), 1 + below(28));
      events.push_back(SampleEvent(std::to_string(i), start, start.AddDays(1 + below(40))));
    }
    const YearGrid grid = SampleGrid(events, {.AllEvents = round % 3 == 0}, 101 + below(200),
                                     50 + below(300), {2006, 1 + below(12)});
    const bool selectionEnabled = round % 2 == 0;
    GridPointer pointer(grid);
    pointer.SetMode(selectionEnabled ? SelectionMode::AlwaysSelect : SelectionMode::AlwaysOpen);
    PlainPointer plain(grid, selectionEnabled);
    const Twips width = 40 * Twips{grid.Geometry().ColumnWidth};
    const Twips height = grid.Geometry().GridHeight(grid.Layout());
    for (int step = 0; step < 500; ++step) {
      const int action = below(9);
      if (action == 0) {
        pointer.MouseDown(MouseButton::Left);
        plain.Press();
      } else if (action == 1) {
        const PointerRelease release = pointer.MouseUp(MouseButton::Left);
        ASSERT_EQ(std::pair(release.range, release.open), plain.Release());
        ranges += release.range.has_value();
        opened += release.open.has_value();
      } else if (action == 2) {
        const MenuEnabling menu = *pointer.MouseDown(MouseButton::Right).menu;
        plain.EndDrag();
        ASSERT_EQ(menu.mnuEdit, plain.event.has_value());
        ASSERT_EQ(menu.mnuClear, selectionEnabled);
      } else {
        const Point at{width * (below(1000) - 60) / 940, height * (below(1000) - 20) / 960};
        pointer.MouseMove(at);
        plain.Move(at);
      }
      ASSERT_EQ(pointer.CurrentRow(), plain.row);
      ASSERT_EQ(pointer.CurrentBand(), plain.currentBand);
      ASSERT_EQ(pointer.CurrentColumn(), plain.column);
      ASSERT_EQ(pointer.Dragging(), plain.dragging);
      ASSERT_EQ(pointer.SelStartRow(), plain.selStartRow);
      ASSERT_EQ(pointer.SelStartColumn(), plain.selStartColumn);
      ASSERT_EQ(pointer.SelEndRow(), plain.selEndRow);
      ASSERT_EQ(pointer.SelEndColumn(), plain.selEndColumn);
      ASSERT_EQ(pointer.SelStartBand(), plain.selStartBand);
      ASSERT_EQ(pointer.HoverEvent(), plain.event);
      ASSERT_EQ(DatesOf(pointer.Label()), plain.label);
    }
  }
  EXPECT_GT(ranges, 100);
  EXPECT_GT(opened, 100);
}

}  // namespace
}  // namespace velkor
