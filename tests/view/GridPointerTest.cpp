// tests/view/GridPointerTest.cpp: hovering, clicking and dragging over the year 2006, and a grid
// that changes meanwhile.
#include "view/GridPointer.h"

#include <gtest/gtest.h>

#include "platform/headless/FixedLocale.h"
#include "tests/view/SampleGrid.h"

namespace velkor {
namespace {

constexpr MouseButton Left = MouseButton::Left;
constexpr MouseButton Right = MouseButton::Right;

/// The middle of a day's cell; days beyond the month lie in grey cells.
Point DayAt(const YearGrid& grid, int month, int day, int band = 3) {
  const int row = grid.Span().RowOfMonth(month);
  return CentreOf(grid, row, grid.Columns().RowDayOffset[row] + day, band);
}

GridCell CellOf(const YearGrid& grid, int month, int day) {
  return *grid.Columns().CellOf(At(2006, month, day));
}

std::optional<DateRange> Days(Date start, Date end) {
  return DateRange{start, end};
}

/// An event of a day, in band 2 when it is alone on that day.
CalEvent OneDay(const std::string& id, int month, int day) {
  return SampleEvent(id, At(2006, month, day), At(2006, month, day + 1));
}

/// As many events on one day as make its row taller.
std::vector<CalEvent> Pile(int month, int day) {
  std::vector<CalEvent> events;
  for (const char* id : {"p", "q", "r", "s", "t", "u"}) events.push_back(OneDay(id, month, day));
  return events;
}

PointerRelease Drag(GridPointer& pointer, Point from, Point to) {
  pointer.MouseMove(from);
  EXPECT_TRUE(pointer.MouseDown(Left).dragStarted);
  pointer.MouseMove(to);
  return pointer.MouseUp(Left);
}

TEST(GridPointer, ByItselfAClickOpensAnEventAndADragOnFreeDaysSelects) {
  const YearGrid grid = SampleGrid({OneDay("a", 3, 5)});
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 5, 2));
  EXPECT_FALSE(pointer.MouseDown(Left).dragStarted);
  EXPECT_EQ(pointer.MouseUp(Right).open, std::nullopt);
  EXPECT_EQ(pointer.MouseUp(Left).open, 0U);

  pointer.MouseMove(DayAt(grid, 3, 4, 2));
  pointer.MouseDown(Left);
  // A drag that passes over an event stays a drag.
  pointer.MouseMove(DayAt(grid, 3, 5, 2));
  EXPECT_EQ(pointer.HoverEvent(), 0U);
  EXPECT_EQ(pointer.ShownEvent(), std::nullopt);
  EXPECT_EQ(pointer.MouseUp(Left).range, Days(At(2006, 3, 4), At(2006, 3, 6)));
}

TEST(GridPointer, TheMenuIsForTheSelectedDaysElseForTheFreeDayThatItIsCalledOn) {
  const YearGrid grid = SampleGrid({OneDay("a", 3, 5)});
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 6));
  pointer.MouseDown(Left);
  pointer.MouseMove(DayAt(grid, 2, 20));
  const PointerPress ending = pointer.MouseDown(Right);
  EXPECT_FALSE(pointer.Dragging());
  EXPECT_TRUE(ending.menu->mnuClear);
  const auto dragged = Days(At(2006, 2, 20), At(2006, 3, 7));
  EXPECT_EQ(pointer.SelectedRange(), dragged);
  pointer.MouseUp(Right);
  pointer.MouseMove(DayAt(grid, 3, 5, 2));
  EXPECT_EQ(pointer.MouseUp(Left).open, std::nullopt) << "the press began a drag";

  const struct {
    const char* what;
    Point at;
    SelectionMode mode;
    std::optional<DateRange> selected;
  } cases[] = {
      {"a selected day", DayAt(grid, 2, 25), SelectionMode::Automatic, dragged},
      {"an event", DayAt(grid, 3, 5, 2), SelectionMode::Automatic, dragged},
      {"a grey cell", DayAt(grid, 2, 29), SelectionMode::Automatic, dragged},
      {"beside the grid", {1e6, DayAt(grid, 2, 25).y}, SelectionMode::Automatic, dragged},
      {"where nothing is selected", DayAt(grid, 7, 1), SelectionMode::AlwaysOpen, dragged},
      {"a free day", DayAt(grid, 7, 1), SelectionMode::Automatic,
       Days(At(2006, 7, 1), At(2006, 7, 2))},
  };
  for (const auto& expected : cases) {
    pointer.SetMode(expected.mode);
    pointer.MouseMove(expected.at);
    const PointerPress press = pointer.MouseDown(Right);
    EXPECT_TRUE(press.menu->mnuClear) << expected.what;
    EXPECT_EQ(press.menu->mnuDelete, std::string(expected.what) == "an event");
    EXPECT_FALSE(press.dragStarted);
    EXPECT_EQ(pointer.SelectedRange(), expected.selected) << expected.what;
  }
}

TEST(GridPointer, TheSelectionStaysDrawnUntilItIsClearedOrAnotherDragBegins) {
  const YearGrid grid = SampleGrid({});
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 20));
  const GridCell from = CellOf(grid, 3, 20);
  EXPECT_EQ(pointer.MouseDown(Left).selection.after, (Selection{from, from}));
  EXPECT_EQ(pointer.SelectedRange(), std::nullopt);
  const GridCell to = CellOf(grid, 3, 5);
  const PointerMove move = pointer.MouseMove(DayAt(grid, 3, 5));
  EXPECT_EQ(move.selection.before, (Selection{from, from}));
  EXPECT_EQ(move.selection.after, (Selection{from, to}));
  EXPECT_FALSE(pointer.MouseMove(DayAt(grid, 3, 5, 4)).selection.Changed());
  pointer.MouseUp(Left);
  EXPECT_EQ(pointer.DrawnSelection(), (Selection{to, from}));

  pointer.MouseMove(DayAt(grid, 7, 1));
  EXPECT_EQ(pointer.DrawnSelection(), (Selection{to, from}));
  EXPECT_EQ(pointer.MouseDown(Left).selection.before, (Selection{to, from}));
  pointer.MouseUp(Left);
  EXPECT_EQ(pointer.ClearSelection().after, std::nullopt);
  EXPECT_FALSE(pointer.ClearSelection().Changed());
  EXPECT_EQ(pointer.SelectedRange(), std::nullopt);
}

TEST(GridPointer, HoveringTellsWhenAnotherEventIsToBeShown) {
  const YearGrid grid = SampleGrid({OneDay("a", 3, 5), OneDay("b", 3, 6)});
  GridPointer pointer(grid);
  FixedLocale locale;
  EXPECT_FALSE(pointer.MouseMove(DayAt(grid, 3, 4, 2)).hover);
  EXPECT_EQ(pointer.HoverKey(locale), "");
  EXPECT_TRUE(pointer.MouseMove(DayAt(grid, 3, 5, 2)).hover);
  EXPECT_FALSE(pointer.MouseMove(DayAt(grid, 3, 5, 2)).hover);
  EXPECT_EQ(grid.Events().Find(pointer.HoverKey(locale), locale), 0U);
  EXPECT_TRUE(pointer.MouseMove(DayAt(grid, 3, 6, 2)).hover);
  EXPECT_EQ(pointer.ShownEvent(), 1U);
  EXPECT_TRUE(pointer.MouseMove(DayAt(grid, 3, 6, 3)).hover);
  EXPECT_EQ(pointer.ShownEvent(), std::nullopt);
}

TEST(GridPointer, AReloadThatMovesNoRowLeavesADragRunning) {
  YearGrid grid = SampleGrid({OneDay("a", 3, 5)});
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 4));
  pointer.MouseDown(Left);
  pointer.MouseMove(DayAt(grid, 3, 6, 2));
  SetEvents(grid, {OneDay("b", 3, 6), OneDay("c", 3, 9)});
  EXPECT_EQ(pointer.HoverEvent(), std::nullopt);
  EXPECT_FALSE(pointer.GridChanged().selection.Changed());
  EXPECT_TRUE(pointer.Dragging());
  EXPECT_EQ(pointer.HoverEvent(), 0U);
  EXPECT_EQ(pointer.MouseUp(Left).range, Days(At(2006, 3, 4), At(2006, 3, 7)));
}

TEST(GridPointer, AReloadThatMovesRowsEndsADragAndItsReleaseDoesNothing) {
  for (const bool told : {true, false}) {
    YearGrid grid = SampleGrid({});
    GridPointer pointer(grid);
    pointer.MouseMove(DayAt(grid, 3, 4));
    pointer.MouseDown(Left);
    pointer.MouseMove(DayAt(grid, 3, 6));
    // The pointer lies over an event now, which a click would open.
    SetEvents(grid, Pile(3, 6));
    const SelectionChange change =
        told ? pointer.GridChanged().selection : pointer.MouseMove(DayAt(grid, 3, 6)).selection;
    EXPECT_TRUE(change.before && !change.after);
    EXPECT_FALSE(pointer.Dragging());
    EXPECT_NE(pointer.HoverEvent(), std::nullopt);
    // The release may never come, when another window took it.
    if (told) {
      const PointerRelease release = pointer.MouseUp(Left);
      EXPECT_EQ(release.range, std::nullopt);
      EXPECT_EQ(release.open, std::nullopt);
    }
    pointer.MouseMove(DayAt(grid, 3, 6));
    EXPECT_EQ(pointer.Label()->prefix, PointerLabel::DatePrefix);
    // The next click is one again.
    pointer.MouseDown(Left);
    EXPECT_NE(pointer.MouseUp(Left).open, std::nullopt);
  }
}

TEST(GridPointer, AReleaseAfterAnUnseenReloadGoesByTheNewEvents) {
  YearGrid grid = SampleGrid(Pile(3, 5));
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 5, 7));
  pointer.MouseDown(Left);
  EXPECT_EQ(pointer.HoverEvent(), 5U);
  SetEvents(grid, {});
  FixedLocale locale;
  EXPECT_EQ(pointer.HoverKey(locale), "");
  EXPECT_EQ(pointer.MouseUp(Left).open, std::nullopt);

  SetEvents(grid, {OneDay("a", 3, 4), OneDay("b", 3, 5)});
  EXPECT_FALSE(pointer.MouseDown(Right).menu->mnuDelete);
  grid.Resize({405.0 + 45 + 37 * 300, 240.0 + 45 + 48 * 300}, 255, {});
  pointer.MouseMove(DayAt(grid, 3, 5, 2));
  EXPECT_EQ(pointer.HoverEvent(), 1U);
  SetEvents(grid, {OneDay("b", 3, 5)});
  EXPECT_TRUE(pointer.GridChanged().hover);
  EXPECT_EQ(pointer.HoverEvent(), 0U);
  SetEvents(grid, {OneDay("c", 3, 5)});
  // The same index stands for another event.
  EXPECT_TRUE(pointer.GridChanged().hover);
  SetEvents(grid, {});
  EXPECT_FALSE(pointer.MouseDown(Right).menu->mnuDelete);
}

TEST(GridPointer, TheEventOfAnEarlierMoveIsForgottenWhenTheGridChangesUnderAPointerOutside) {
  YearGrid grid = SampleGrid({OneDay("a", 3, 5)});
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 5, 2));
  pointer.MouseMove({900, 14'400});
  EXPECT_EQ(pointer.HoverEvent(), 0U);
  SetEvents(grid, {});
  EXPECT_TRUE(pointer.GridChanged().hover);
  EXPECT_EQ(pointer.HoverEvent(), std::nullopt);
  EXPECT_EQ(pointer.CurrentRow(), 13);
}

TEST(GridPointer, AnotherSizePutsAnotherCellUnderThePointer) {
  YearGrid grid = SampleGrid({OneDay("a", 3, 5)});
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 5, 2));
  grid.Resize({405.0 + 45 + 37 * 150, 240.0 + 45 + 48 * 150}, 255, {});
  EXPECT_EQ(pointer.HoverEvent(), std::nullopt);
  EXPECT_TRUE(pointer.GridChanged().hover);
  EXPECT_EQ(pointer.CurrentRow(), 5);
  EXPECT_EQ(pointer.CurrentColumn(), 16);
}

TEST(GridPointer, AnotherYearTakesTheSelectionAlongNeitherDuringADragNorAfterIt) {
  for (const bool dragging : {true, false}) {
    YearGrid grid = SampleGrid({});
    GridPointer pointer(grid);
    pointer.MouseMove(DayAt(grid, 3, 4));
    pointer.MouseDown(Left);
    if (!dragging) pointer.MouseUp(Left);
    grid.SetSpan({2007, 1});
    const PointerMove change = pointer.GridChanged();
    EXPECT_TRUE(change.selection.Changed());
    EXPECT_TRUE(change.label);
    EXPECT_EQ(pointer.DrawnSelection(), std::nullopt);
    EXPECT_EQ(pointer.Label(), std::nullopt);
    EXPECT_FALSE(pointer.Dragging());
    EXPECT_EQ(pointer.MouseUp(Left).range, std::nullopt);
  }
}

TEST(GridPointer, MoreBandsLeaveACompletedSelectionOnItsDays) {
  YearGrid grid = SampleGrid({});
  GridPointer pointer(grid);
  Drag(pointer, DayAt(grid, 3, 4), DayAt(grid, 3, 6));
  SetEvents(grid, Pile(2, 6));
  EXPECT_FALSE(pointer.GridChanged().selection.Changed());
  EXPECT_EQ(pointer.SelectedRange(), Days(At(2006, 3, 4), At(2006, 3, 7)));
}

TEST(GridPointer, ClearingDuringADragEndsIt) {
  const YearGrid grid = SampleGrid({});
  GridPointer pointer(grid);
  pointer.MouseMove(DayAt(grid, 3, 4));
  pointer.MouseDown(Left);
  EXPECT_TRUE(pointer.ClearSelection().Changed());
  EXPECT_FALSE(pointer.MouseMove(DayAt(grid, 3, 5)).selection.Changed());
  EXPECT_EQ(pointer.MouseUp(Left).range, std::nullopt);
}

TEST(GridPointer, AGridWithoutSizeHasNothingUnderThePointer) {
  for (const Extent size :
       {Extent{0, 0}, Extent{-5000, -5000}, Extent{450, 0}, Extent{450, 9000}}) {
    YearGrid grid = SampleGrid({OneDay("a", 1, 1)});
    grid.Resize(size, 255, {});
    GridPointer pointer(grid);
    for (const Point point : {Point{0, 0}, Point{300, 300}, Point{-1, 150}, Point{1e300, -1e300}}) {
      pointer.MouseMove(point);
      pointer.MouseDown(Right);
      EXPECT_FALSE(pointer.MouseDown(Left).dragStarted);
      EXPECT_EQ(pointer.MouseUp(Left).open, std::nullopt);
    }
  }
}

}  // namespace
}  // namespace velkor
