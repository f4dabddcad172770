// control/DayCursor.cpp: the day that the keyboard points at, and which of its events.
#include "control/DayCursor.h"

#include <algorithm>

namespace velkor {

std::vector<std::size_t> EventsOfDay(const YearGrid& grid, GridCell cell) {
  std::vector<std::size_t> events;
  for (int band = FirstBand; band <= grid.Layout().BandsOf(cell.row); ++band) {
    const auto event = grid.EventAt({cell.row, band, cell.column, cell.column});
    if (event) events.push_back(*event);
  }
  return events;
}

std::optional<GridCell> DayCursor::Cell() const {
  return date_ ? grid_.Columns().CellOf(*date_) : std::nullopt;
}

void DayCursor::MoveTo(Date day) {
  if (!grid_.Span().IsDateInView(day)) return;
  date_ = day.Midnight();
  chosenId_.clear();
}

bool DayCursor::Move(Key key, Date today) {
  const DisplaySpan& span = grid_.Span();
  const MonthColumns& columns = grid_.Columns();
  constexpr Key Moves[] = {Key::Left, Key::Right, Key::Up, Key::Down, Key::Home, Key::End};
  if (std::find(std::begin(Moves), std::end(Moves), key) == std::end(Moves)) return false;
  if (!date_) {
    MoveTo(span.IsDateInView(today) ? today : span.ViewStartDate());
    return true;
  }
  const std::optional<GridCell> cell = Cell();
  if (!cell) return true;
  int row = cell->row;
  int column = cell->column;
  if (key == Key::Left) MoveTo(date_->AddDays(-1));
  if (key == Key::Right) MoveTo(date_->AddDays(1));
  if (key == Key::Left || key == Key::Right) return true;
  if (key == Key::Up) row = std::max(1, row - 1);
  if (key == Key::Down) row = std::min(MonthRows, row + 1);
  if (key == Key::Home) column = 1;
  if (key == Key::End) column = GridColumns;
  column = std::clamp(column, columns.RowDayOffset[row] + 1, columns.RowLastColumn[row]);
  MoveTo(span.DateAtCell(column, row));
  return true;
}

void DayCursor::SpanChanged() {
  chosenId_.clear();
  if (!date_) return;
  const DisplaySpan& span = grid_.Span();
  const DateFields fields = date_->Fields();
  const int day = std::min(fields.day, span.DaysInMonth(fields.month));
  date_ = Date::FromYmd(span.YearOfMonth(fields.month), fields.month, day);
}

std::vector<std::size_t> DayCursor::Events() const {
  const std::optional<GridCell> cell = Cell();
  return cell ? EventsOfDay(grid_, *cell) : std::vector<std::size_t>();
}

std::size_t DayCursor::PositionIn(const std::vector<std::size_t>& events) const {
  const auto found = std::find_if(events.begin(), events.end(), [&](std::size_t index) {
    const CalEvent& event = grid_.Events()[index];
    return event.EventID == chosenId_ && event.StartDate == chosenStart_;
  });
  return found == events.end() ? 0 : static_cast<std::size_t>(found - events.begin());
}

std::optional<std::size_t> DayCursor::ChosenEvent() const {
  const std::vector<std::size_t> events = Events();
  if (events.empty()) return std::nullopt;
  return events[PositionIn(events)];
}

void DayCursor::ChooseNext() {
  const std::vector<std::size_t> events = Events();
  if (events.empty()) return;
  Choose(events[(PositionIn(events) + 1) % events.size()]);
}

void DayCursor::Choose(std::size_t event) {
  chosenId_ = grid_.Events()[event].EventID;
  chosenStart_ = grid_.Events()[event].StartDate;
}

}  // namespace velkor
