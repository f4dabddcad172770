// view/GridPointer.cpp: what the pointer does on pic1: the cell and the event under it, and the
// range of days that it drags out.
#include "view/GridPointer.h"

#include <algorithm>

namespace velkor {

GridPointer::Basis::Basis(const YearGrid& grid)
    : span(grid.Span()),
      bandsInRow(grid.Layout().BandsInRow),
      columnWidth(grid.Geometry().ColumnWidth),
      bandHeight(grid.Geometry().BandHeight) {}

GridPointer::GridPointer(const YearGrid& grid)
    : grid_(grid), revision_(grid.Revision()), basis_(grid) {}

void GridPointer::SetMode(SelectionMode mode) {
  mode_ = mode;
  EnableByMode();
}

PointerMove GridPointer::MouseMove(Point at) {
  const Seen before = See();
  FollowGrid();
  point_ = at;
  const std::optional<GridHit> hit = grid_.HitTestAt(at);
  if (!hit) {
    row_ = grid_.RowAt(at.y);
    return ChangeSince(before);
  }
  TakeCell(*hit);
  if (dragging_) {
    DragTo(*hit);
  } else {
    EnableByMode();
    label_ = PointerLabel{prefix_, DateAt({hit->row, hit->cellColumn}), std::nullopt};
  }
  return ChangeSince(before);
}

PointerPress GridPointer::MouseDown(MouseButton button) {
  const Seen before = See();
  FollowGrid();
  releaseIsDue_ = false;
  PointerPress press;
  if (button == MouseButton::Right) {
    press.menu = CallMenu();
  } else if (selectionEnabled_ && IsOverADay()) {
    const GridCell cell{row_, column_};
    drag_ = {cell, cell};
    selection_ = drag_;
    prefix_ = PointerLabel::SelectedPrefix;
    press.dragStarted = dragging_ = true;
  } else if (selectionEnabled_) {
    prefix_ = PointerLabel::DatePrefix;
  }
  press.selection = SelectionSince(before);
  return press;
}

PointerRelease GridPointer::MouseUp(MouseButton button) {
  const Seen before = See();
  FollowGrid();
  PointerRelease release;
  if (dragging_) {
    CompleteDrag();
    release.range = RangeOf(drag_);
  } else if (button == MouseButton::Left && !selectionEnabled_ && !releaseIsDue_) {
    release.open = event_;
  }
  if (button == MouseButton::Left) releaseIsDue_ = false;
  release.selection = SelectionSince(before);
  return release;
}

PointerMove GridPointer::GridChanged() {
  const Seen before = See();
  FollowGrid();
  return ChangeSince(before);
}

std::optional<std::size_t> GridPointer::HoverEvent() const {
  return UpToDate() ? event_ : std::nullopt;
}

std::string GridPointer::HoverKey(LocaleApi& locale) const {
  const std::optional<std::size_t> event = HoverEvent();
  return event ? EventCollection::KeyOf(grid_.Events()[*event], locale) : std::string();
}

std::optional<std::size_t> GridPointer::ShownEvent() const {
  return dragging_ || selectionEnabled_ ? std::nullopt : HoverEvent();
}

std::optional<DateRange> GridPointer::SelectedRange() const {
  if (!selection_ || dragging_) return std::nullopt;
  return RangeOf(*selection_);
}

std::optional<DateRange> GridPointer::DayUnderPointer() const {
  const std::optional<GridCell> day = DayCell();
  if (!day) return std::nullopt;
  return RangeOf({*day, *day});
}

SelectionChange GridPointer::ClearSelection() {
  const Seen before = See();
  AbandonDrag();
  selection_.reset();
  return SelectionSince(before);
}

SelectionChange GridPointer::SelectDay(GridCell day) {
  const Seen before = See();
  AbandonDrag();
  if (!selection_ || !Contains(*selection_, day)) selection_ = {day, day};
  return SelectionSince(before);
}

SelectionChange GridPointer::SelectMonth(int row) {
  const Seen before = See();
  AbandonDrag();
  const MonthColumns& columns = grid_.Columns();
  selection_ = {{row, columns.RowDayOffset[row] + 1}, {row, columns.RowLastColumn[row]}};
  return SelectionSince(before);
}

GridPointer::Seen GridPointer::See() const {
  const bool shown = !dragging_ && !selectionEnabled_;
  return {revision_, shown ? event_ : std::nullopt, label_, selection_};
}

PointerMove GridPointer::ChangeSince(const Seen& before) const {
  const Seen now = See();
  const bool otherEvents = before.revision != now.revision && (before.event || now.event);
  return {otherEvents || before.event != now.event, before.label != now.label,
          SelectionSince(before)};
}

SelectionChange GridPointer::SelectionSince(const Seen& before) const {
  return {before.selection, selection_};
}

bool GridPointer::UpToDate() const {
  return revision_ == grid_.Revision() && basis_ == Basis(grid_);
}

void GridPointer::FollowGrid() {
  if (UpToDate()) return;
  revision_ = grid_.Revision();
  const Basis basis(grid_);
  const bool dragMoved = dragging_ && basis != basis_;
  if (dragMoved) AbandonDrag();
  if (dragMoved || basis.span != basis_.span) {
    selection_.reset();
    label_.reset();
  }
  basis_ = basis;
  if (!point_) return;
  event_.reset();
  const std::optional<GridHit> hit = grid_.HitTestAt(*point_);
  if (hit) {
    TakeCell(*hit);
  } else {
    row_ = grid_.RowAt(point_->y);
  }
  if (!dragging_) EnableByMode();
}

void GridPointer::TakeCell(const GridHit& hit) {
  row_ = hit.row;
  band_ = hit.band;
  column_ = hit.column;
  event_ = grid_.EventAt(hit);
}

void GridPointer::EnableByMode() {
  selectionEnabled_ = mode_ == SelectionMode::Automatic ? !event_.has_value()
                                                        : mode_ == SelectionMode::AlwaysSelect;
}

void GridPointer::DragTo(const GridHit& hit) {
  const MonthColumns& columns = grid_.Columns();
  drag_.end = {hit.row, std::clamp(hit.cellColumn, columns.RowDayOffset[hit.row] + 1,
                                   columns.RowLastColumn[hit.row])};
  selection_ = drag_;
  label_ = PointerLabel{prefix_, DateAt(drag_.start), std::nullopt};
  if (drag_.end != drag_.start) label_->to = DateAt(drag_.end);
}

/// A menu is for the days that are drawn as selected, or for the free day that it is called on.
MenuEnabling GridPointer::CallMenu() {
  if (dragging_) {
    CompleteDrag();
    releaseIsDue_ = true;
  }
  const std::optional<GridCell> day = DayCell();
  if (selectionEnabled_ && !event_ && day) SelectDay(*day);
  const bool hovers = event_.has_value();
  return {hovers, hovers, selectionEnabled_ || selection_.has_value()};
}

void GridPointer::CompleteDrag() {
  drag_ = InDateOrder(drag_);
  selection_ = drag_;
  EndDrag();
}

void GridPointer::EndDrag() {
  dragging_ = false;
  prefix_ = PointerLabel::DatePrefix;
}

void GridPointer::AbandonDrag() {
  if (!dragging_) return;
  EndDrag();
  releaseIsDue_ = true;
}

std::optional<GridCell> GridPointer::DayCell() const {
  const std::optional<GridHit> hit = point_ ? grid_.HitTestAt(*point_) : std::nullopt;
  if (!hit || hit->column == 0) return std::nullopt;
  return GridCell{hit->row, hit->column};
}

bool GridPointer::IsOverADay() const {
  return column_ != 0 && row_ >= 1 && row_ <= MonthRows;
}

Date GridPointer::DateAt(GridCell cell) const {
  return grid_.Span().DateAtCell(cell.column, cell.row);
}

DateRange GridPointer::RangeOf(const Selection& ordered) const {
  return {DateAt(ordered.start), DateAt({ordered.end.row, ordered.end.column + 1})};
}

}  // namespace velkor
