// control/GridView.cpp: the handlers of the grid's surfaces.
#include "control/GridView.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <utility>

#include "control/HoverText.h"
#include "platform/LocaleApi.h"
#include "platform/System.h"
#include "view/Frame.h"
#include "view/GridPainter.h"
#include "view/HeaderPainter.h"
#include "view/SelectionPainter.h"

namespace velkor {
namespace {

/// Prefix texts of lblDate.
constexpr std::array<std::string_view, 2> Prefixes = {"Date:", "Selected:"};

}  // namespace

GridView::GridView(YearPlanElements& elements, const YearGrid& grid, const Platform& platform,
                   GridCommands commands)
    : elements_(elements),
      grid_(grid),
      platform_(platform),
      dates_(platform.locale),
      commands_(std::move(commands)),
      pointer_(grid),
      cursor_(grid) {
  PictureBox& pic1 = elements_.pic1;
  pic1.onPaint = [this](Surface& surface, const Rect& visible) { pic1_Paint(surface, visible); };
  pic1.onMouseMove = [this](Point at) { pic1_MouseMove(at); };
  pic1.onMouseDown = [this](MouseButton button, Point at) { pic1_MouseDown(button, at); };
  pic1.onMouseUp = [this](MouseButton button, Point at) { pic1_MouseUp(button, at); };
  pic1.onMouseLeave = [this] { pointerAt_.reset(); };
  pic1.onKeyDown = [this](Key key) { return pic1_KeyDown(key); };
  pic1.onToolTip = [this] { return pic1_ToolTip(); };
  elements_.picHeadCol.onPaint = [this](Surface& surface, const Rect&) {
    picHeadCol_Paint(surface);
  };
  elements_.picHeadRow.onPaint = [this](Surface& surface, const Rect& visible) {
    picHeadRow_Paint(surface, visible);
  };
  elements_.picHeadRow.onMouseDown = [this](MouseButton button, Point at) {
    picHeadRow_MouseDown(button, at);
  };
  elements_.picParent.onPaint = [this](Surface& surface, const Rect&) { picParent_Paint(surface); };
  for (PictureBox* picture : {&pic1, &elements_.picHeadCol, &elements_.picHeadRow}) {
    picture->onMouseWheel = [this](double notches) { wheel_.Turn(elements_.VScroll1, notches); };
  }
  elements_.VScroll1.onChange = [this] { VScroll1_Change(); };
}

void GridView::SetNames(CalendarNames names, const ShownDates& dates, Font font) {
  names_ = std::move(names);
  dates_ = dates;
  font_ = std::move(font);
}

void GridView::End() {
  shown_ = false;
  pressed_ = false;
  pointer_.ClearSelection();
  selectedKey_.clear();
  menuDay_.reset();
}

void GridView::GridChanged(bool spanChanged) {
  if (spanChanged) {
    cursor_.SpanChanged();
    selectedKey_.clear();
    menuDay_.reset();
  }
  const bool labelIsCursors = labelIsCursors_;
  SetScrollRange();
  Apply(pointer_.GridChanged());
  FollowPointer();
  if (labelIsCursors) WordCursor();
  for (PictureBox* picture :
       {&elements_.picParent, &elements_.picHeadCol, &elements_.picHeadRow, &elements_.pic1}) {
    picture->Refresh();
  }
}

void GridView::ClearSelection() {
  Show(pointer_.ClearSelection());
}

void GridView::SetSelectionMode(int mode) {
  pointer_.SetMode(static_cast<SelectionMode>(mode));
  elements_.pic1.Refresh();
}

std::optional<DateRange> GridView::DaysForNew() const {
  const std::optional<DateRange> selected = pointer_.SelectedRange();
  if (!selected) return menuDay_;
  // Where a press selects nothing the menu may be called on a free day beside the selection.
  const bool isElsewhere = menuDay_ && selectedKey_.empty() &&
                           (menuDay_->start < selected->start || selected->end < menuDay_->end);
  return isElsewhere ? menuDay_ : selected;
}

Twips GridView::Offset() const {
  return elements_.VScroll1.Value() * static_cast<double>(grid_.Geometry().pixel.height);
}

void GridView::SetScrollRange() {
  const GridGeometry& geometry = grid_.Geometry();
  const double pixel = geometry.pixel.height;
  const Twips view = elements_.pic1.Bounds().Height();
  const Twips hidden = geometry.scroll ? geometry.GridHeight(grid_.Layout()) - view : 0;
  elements_.VScroll1.SetRange(static_cast<int>(std::ceil(std::max(hidden, 0.0) / pixel)),
                              std::max(1, static_cast<int>(geometry.BandHeight / pixel)),
                              std::max(1, static_cast<int>(view / pixel)));
}

void GridView::VScroll1_Change() {
  FollowPointer();
  elements_.pic1.Refresh();
  elements_.picHeadRow.Refresh();
}

/// What lies under a pointer that rests changes with what is scrolled or laid out below it.
void GridView::FollowPointer() {
  if (shown_ && pointerAt_) Apply(pointer_.MouseMove(InGrid(*pointerAt_)));
}

void GridView::Apply(const PointerMove& move) {
  if (move.label) ShowLabel();
  Show(move.selection);
}

void GridView::ShowRows(Twips top, Twips bottom) {
  ScrollIntoView(elements_.VScroll1, top, bottom, elements_.pic1.Bounds().Height(),
                 grid_.Geometry().pixel.height);
}

void GridView::RefreshPart(const Rect& inGrid) {
  const Twips offset = Offset();
  elements_.pic1.RefreshPart(
      {inGrid.left, inGrid.top - offset, inGrid.right, inGrid.bottom - offset});
}

void GridView::Show(const SelectionChange& change) {
  if (!shown_ || !change.Changed()) return;
  for (const Rect& part : ChangedRects(change.before, change.after, grid_)) RefreshPart(part);
  commands_.changed(AccessibleChange::Selection);
}

void GridView::ShowLabel() {
  const std::optional<PointerLabel>& label = pointer_.Label();
  label_.clear();
  if (label) {
    label_ += Prefixes[static_cast<std::size_t>(label->prefix)];
    label_ += "  ";
    label_ += dates_.ShortDate(label->from);
    if (label->to) {
      label_ += " to ";
      label_ += dates_.ShortDate(*label->to);
    }
  }
  labelIsCursors_ = false;
  elements_.lblDate.SetCaption(label_);
  elements_.lblDate.SetDescription(label_);
}

void GridView::pic1_Paint(Surface& surface, const Rect& visible) {
  if (!shown_) {
    surface.Fill(visible, grid_colours::Back);
    return;
  }
  const Twips offset = Offset();
  const ViewScope scope(surface, visible, {0, -offset});
  const Rect inSight{visible.left, visible.top + offset, visible.right, visible.bottom + offset};
  GridPainter painter(surface, grid_, font_, inSight);
  painter.Draw({platform_.clock.Now(), pointer_.DrawnSelection(), cursor_.Cell()});
}

void GridView::picHeadCol_Paint(Surface& surface) {
  const Rect& bounds = elements_.picHeadCol.Bounds();
  // The frame covers its first line of pixels, as it does that of the months.
  const ViewScope scope(surface, {0, 0, bounds.Width(), bounds.Height()},
                        {0, -Twips{grid_.Geometry().pixel.height}});
  DrawHeaderRow(surface, grid_.Geometry(), names_, font_);
}

void GridView::picHeadRow_Paint(Surface& surface, const Rect& visible) {
  const Twips offset = Offset();
  const Rect whole{0, 0, elements_.picHeadRow.Bounds().Width(),
                   elements_.picHeadRow.Bounds().Height()};
  const ViewScope scope(surface, visible, {-Twips{grid_.Geometry().pixel.width}, -offset});
  DrawMonthColumn(surface, grid_, names_, font_, {0, offset, whole.right, whole.bottom + offset});
}

void GridView::picParent_Paint(Surface& surface) {
  const Rect& bounds = elements_.picParent.Bounds();
  const PixelSize pixel = grid_.Geometry().pixel;
  surface.Fill({0, 0, bounds.Width(), bounds.Height()}, header_colours::Back);
  surface.Outline({0, 0, bounds.Width() - pixel.width, bounds.Height() - pixel.height}, FrameColour,
                  1);
}

void GridView::pic1_MouseMove(Point at) {
  if (!shown_) return;
  pointerAt_ = at;
  FollowPointer();
}

void GridView::pic1_MouseDown(MouseButton button, Point at) {
  if (!shown_) return;
  pic1_MouseMove(at);
  if (button == MouseButton::Left) {
    // Beside the grid the pointer keeps the cell that it came from.
    pressed_ = grid_.HitTestAt(InGrid(at)).has_value();
    if (!pressed_) return;
  }
  const PointerPress press = pointer_.MouseDown(button);
  Show(press.selection);
  if (press.dragStarted) {
    menuDay_.reset();
    ShowLabel();
  }
  if (!press.menu) return;
  elements_.mnuDelete.SetEnabled(press.menu->mnuDelete);
  elements_.mnuEdit.SetEnabled(press.menu->mnuEdit);
  elements_.mnuClear.SetEnabled(press.menu->mnuClear);
  PopUp(at, pointer_.HoverKey(platform_.locale), pointer_.DayUnderPointer());
}

void GridView::pic1_MouseUp(MouseButton button, Point /*at*/) {
  if (!shown_) return;
  if (button == MouseButton::Left && !std::exchange(pressed_, false)) return;
  const PointerRelease release = pointer_.MouseUp(button);
  Show(release.selection);
  if (!release.open) return;
  selectedKey_ = pointer_.HoverKey(platform_.locale);
  commands_.open(selectedKey_);
}

/// Pops the menu up for a place of the grid.
void GridView::PopUp(Point at, std::string key, std::optional<DateRange> day) {
  selectedKey_ = std::move(key);
  menuDay_ = day;
  elements_.mnuNew.SetEnabled(DaysForNew().has_value());
  const Rect& parent = elements_.picParent.Bounds();
  const Rect& bounds = elements_.pic1.Bounds();
  elements_.mnuPop.PopUp({parent.left + bounds.left + at.x, parent.top + bounds.top + at.y});
}

std::string GridView::CursorKey() const {
  const std::optional<std::size_t> event = cursor_.ChosenEvent();
  return event ? EventCollection::KeyOf(grid_.Events()[*event], platform_.locale) : std::string();
}

std::string GridView::pic1_ToolTip() const {
  const std::optional<std::size_t> event = pointer_.ShownEvent();
  std::string text = event ? HoverText(grid_.Events()[*event], dates_) : std::string();
  const std::optional<DateRange> day = pointer_.DayUnderPointer();
  const std::string name = day ? grid_.OffDays().NameOf(day->start) : std::string();
  if (!text.empty() && !name.empty()) text += '\n';
  return text + name;
}

/// A press on a month's name selects the month.
void GridView::picHeadRow_MouseDown(MouseButton button, Point at) {
  if (!shown_ || button != MouseButton::Left) return;
  const Twips y = at.y + Offset();
  const BandLayout& layout = grid_.Layout();
  for (int row = 1; row <= MonthRows; ++row) {
    if (y < grid_.Geometry().RowTop(layout, row) || y >= grid_.Geometry().RowBottom(layout, row)) {
      continue;
    }
    SelectMonth(row);
    return;
  }
}

void GridView::SelectMonth(int row) {
  if (!shown_) return;
  menuDay_.reset();
  Show(pointer_.SelectMonth(row));
}

void GridView::SelectDay(GridCell cell) {
  if (!shown_) return;
  menuDay_.reset();
  MoveCursor([&] { cursor_.MoveTo(grid_.Span().DateAtCell(cell.column, cell.row)); });
  const std::optional<Selection> before = pointer_.ClearSelection().before;
  Show({before, pointer_.SelectDay(cell).after});
}

void GridView::PointAt(GridCell cell, std::size_t event) {
  if (!shown_) return;
  MoveCursor([&] { cursor_.MoveTo(grid_.Span().DateAtCell(cell.column, cell.row)); });
  cursor_.Choose(event);
  ShowCursor();
}

void GridView::OpenEvent(std::size_t event) {
  if (!shown_) return;
  selectedKey_ = EventCollection::KeyOf(grid_.Events()[event], platform_.locale);
  commands_.open(selectedKey_);
}

bool GridView::pic1_KeyDown(Key key) {
  if (!shown_) return false;
  if (key == Key::PageUp || key == Key::PageDown) {
    commands_.changeYear(key == Key::PageUp ? -1 : 1);
    return true;
  }
  bool moved = false;
  const Date today = platform_.clock.Now();
  // The menu key has to have a day; any arrow shows one first.
  const Key move = key == Key::Menu && !cursor_.IsShown() ? Key::Left : key;
  MoveCursor([&] { moved = cursor_.Move(move, today); });
  if (moved && key != Key::Menu) return true;
  return cursor_.Cell() && UseCursor(key);
}

bool GridView::UseCursor(Key key) {
  std::string named = CursorKey();
  switch (key) {
    case Key::Space:
      cursor_.ChooseNext();
      ShowCursor();
      return true;
    case Key::Enter:
      commands_.open(selectedKey_ = named);
      return true;
    case Key::Delete:
      commands_.remove(selectedKey_ = named);
      return true;
    case Key::Menu:
      PopUpAtCursor(std::move(named));
      return true;
    default:
      return false;
  }
}

void GridView::PopUpAtCursor(std::string named) {
  const GridCell cell = *cursor_.Cell();
  if (named.empty() && pointer_.Mode() != SelectionMode::AlwaysOpen) Show(pointer_.SelectDay(cell));
  elements_.mnuDelete.SetEnabled(!named.empty());
  elements_.mnuEdit.SetEnabled(!named.empty());
  elements_.mnuClear.SetEnabled(pointer_.DrawnSelection().has_value());
  const Rect day = DayCursorRect(cell, grid_);
  const Twips below = day.top + grid_.Geometry().BandEdge(1) - Offset();
  PopUp({day.right, below}, std::move(named), DateRange{cursor_.Day(), cursor_.Day().AddDays(1)});
}

/// Draws the cursor where it was and where `move` puts it.
void GridView::MoveCursor(const std::function<void()>& move) {
  const std::optional<GridCell> before = cursor_.Cell();
  move();
  if (before == cursor_.Cell()) return;
  if (before) RefreshPart(DayCursorRect(*before, grid_));
  ShowCursor();
}

/// Brings the cursor, and the chosen event of its day, into sight and says what lies there.
void GridView::ShowCursor() {
  const std::optional<GridCell> cell = cursor_.Cell();
  if (!cell) return;
  const GridGeometry& geometry = grid_.Geometry();
  const Twips top = geometry.RowTop(grid_.Layout(), cell->row);
  ShowRows(top, geometry.RowBottom(grid_.Layout(), cell->row));
  if (const auto chosen = cursor_.ChosenEvent()) {
    const int band = grid_.Events()[*chosen].Band;
    ShowRows(top + geometry.BandEdge(band - 1), top + geometry.BandEdge(band));
  }
  RefreshPart(DayCursorRect(*cell, grid_));
  WordCursor();
  commands_.changed(AccessibleChange::Current);
}

void GridView::WordCursor() {
  if (!cursor_.IsShown()) return;
  std::string text(Prefixes[0]);
  text += "  " + dates_.ShortDate(cursor_.Day());
  if (const std::string name = grid_.OffDays().NameOf(cursor_.Day()); !name.empty()) {
    text += "  " + name;
  }
  const std::vector<std::size_t> events = cursor_.Events();
  if (!events.empty()) {
    const std::size_t position = cursor_.PositionIn(events);
    text += "  " + grid_.Events()[events[position]].Subject;
    if (events.size() > 1) {
      text += " (" + std::to_string(position + 1) + " of " + std::to_string(events.size()) + ")";
    }
  }
  labelIsCursors_ = true;
  elements_.lblDate.SetCaption(text);
  elements_.lblDate.SetDescription(text);
}

}  // namespace velkor
