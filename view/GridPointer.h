// view/GridPointer.h: what the pointer does on pic1: the cell and the event under it, and the range
// of days that it drags out.
#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>

#include "platform/Elements.h"
#include "view/Selection.h"
#include "view/YearGrid.h"

namespace velkor {

/// What a click does, by the index of mnuSelection.
enum class SelectionMode {
  /// Opens an event, and selects on free days.
  Automatic = 0,
  AlwaysSelect = 1,
  AlwaysOpen = 2,
};

/// What lblDate shows: a prefix, the first date and, for more than one cell, the last one.
struct PointerLabel {
  static constexpr int DatePrefix = 0;
  static constexpr int SelectedPrefix = 1;

  /// Index in the prefix table: 0 "Date:", 1 "Selected:".
  int prefix = DatePrefix;
  Date from;
  std::optional<Date> to;

  friend bool operator==(const PointerLabel&, const PointerLabel&) = default;
};

/// The drawn selection before and after a step.
struct SelectionChange {
  std::optional<Selection> before;
  std::optional<Selection> after;

  bool Changed() const { return before != after; }
};

/// What has to be drawn anew after the pointer moved or the grid changed under it.
struct PointerMove {
  /// ShownEvent is another one.
  bool hover = false;
  /// Label is another one.
  bool label = false;
  SelectionChange selection;
};

/// Which items of mnuPop are enabled.
struct MenuEnabling {
  bool mnuDelete = false;
  bool mnuEdit = false;
  bool mnuClear = false;
};

struct PointerPress {
  bool dragStarted = false;
  /// mnuPop has to pop up.
  std::optional<MenuEnabling> menu;
  SelectionChange selection;
};

struct PointerRelease {
  /// A drag was completed over these days.
  std::optional<DateRange> range;
  /// Index of the event that has to be opened.
  std::optional<std::size_t> open;
  SelectionChange selection;
};

/// The state of the pointer over one grid. It calls nobody: each handler returns what its owner has
/// to do. Press and release use the cell of the last move. A handler that finds the grid changed
/// goes by the changed one, so an event index is never an earlier layout's.
class GridPointer {
 public:
  /// `grid` outlives this.
  explicit GridPointer(const YearGrid& grid);

  void SetMode(SelectionMode mode);
  SelectionMode Mode() const { return mode_; }

  /// `at` in twips from the grid's top left corner, scrolling added. Allocates nothing.
  PointerMove MouseMove(Point at);
  /// The right button ends a drag with the days that it has reached.
  PointerPress MouseDown(MouseButton button);
  PointerRelease MouseUp(MouseButton button);
  /// To be called when the grid was laid out anew, resized or given another span: finds out again
  /// what lies under the pointer. A drag whose rows or columns moved ends without a range; in
  /// another span the selection and the label go, too.
  PointerMove GridChanged();

  /// 1 to 12; RowOutside when the last move was not on a row; 0 before any move.
  int CurrentRow() const { return row_; }
  /// From 1 at the top of the row.
  int CurrentBand() const { return band_; }
  /// 1 to 37; 0 outside the row's month.
  int CurrentColumn() const { return column_; }
  bool Dragging() const { return dragging_; }

  /// Index of the event under the pointer; nothing as long as GridChanged is due.
  std::optional<std::size_t> HoverEvent() const;
  /// Its key; empty over free cells.
  std::string HoverKey(LocaleApi& locale) const;
  /// The event that the hover display shows: none where a press selects.
  std::optional<std::size_t> ShownEvent() const;
  /// What lblDate shows; nothing before the first date.
  const std::optional<PointerLabel>& Label() const { return label_; }

  /// Is there from the press that begins a drag until ClearSelection or another drag.
  std::optional<Selection> DrawnSelection() const { return selection_; }
  /// The days of a selection that is not being dragged any more.
  std::optional<DateRange> SelectedRange() const;
  /// The day under the pointer; nothing outside the months and beside the grid.
  std::optional<DateRange> DayUnderPointer() const;
  /// Ends a drag, too.
  SelectionChange ClearSelection();
  /// Selects one day, unless it is selected already; ends a drag, too.
  SelectionChange SelectDay(GridCell day);
  /// Selects all days of a row's month (1 to 12); ends a drag, too.
  SelectionChange SelectMonth(int row);

 private:
  /// What of the grid a drag and the hovered event depend on.
  struct Basis {
    explicit Basis(const YearGrid& grid);
    friend bool operator==(const Basis&, const Basis&) = default;

    DisplaySpan span;
    std::array<int, MonthRows + 1> bandsInRow;
    float columnWidth;
    float bandHeight;
  };
  /// What of the pointer is to be seen, to tell what changed.
  struct Seen {
    std::uint64_t revision;
    std::optional<std::size_t> event;
    std::optional<PointerLabel> label;
    std::optional<Selection> selection;
  };

  Seen See() const;
  PointerMove ChangeSince(const Seen& before) const;
  SelectionChange SelectionSince(const Seen& before) const;
  bool UpToDate() const;
  void FollowGrid();
  void TakeCell(const GridHit& hit);
  void EnableByMode();
  void DragTo(const GridHit& hit);
  MenuEnabling CallMenu();
  /// With its days selected.
  void CompleteDrag();
  void EndDrag();
  /// Without a range, while the button is down.
  void AbandonDrag();
  /// The day under the pointer; none beside the grid, where the cell of the last move stays.
  std::optional<GridCell> DayCell() const;
  bool IsOverADay() const;
  Date DateAt(GridCell cell) const;
  DateRange RangeOf(const Selection& ordered) const;

  const YearGrid& grid_;
  SelectionMode mode_ = SelectionMode::Automatic;
  std::uint64_t revision_;
  Basis basis_;

  std::optional<Point> point_;
  int row_ = 0;
  int band_ = 0;
  int column_ = 0;
  std::optional<std::size_t> event_;
  /// A press of a button selects; otherwise the left one's release opens the event under the
  /// pointer.
  bool selectionEnabled_ = true;

  bool dragging_ = false;
  /// The button of an abandoned drag is still down: its release must open nothing.
  bool releaseIsDue_ = false;
  /// The anchor and the moving end of the drag; after it the corners in date order.
  Selection drag_;
  std::optional<Selection> selection_;
  /// For what lblDate shows next.
  int prefix_ = PointerLabel::DatePrefix;
  std::optional<PointerLabel> label_;
};

}  // namespace velkor
