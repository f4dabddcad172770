// control/GridView.h: the grid as its user meets it: painted, scrolled, pointed at, steered by
// keys.
#pragma once

#include <functional>
#include <optional>
#include <string>
#include <string_view>

#include "control/DayCursor.h"
#include "control/ShownDates.h"
#include "control/YearPlanElements.h"
#include "platform/Accessible.h"
#include "platform/Platform.h"
#include "span/Locale.h"
#include "values/Font.h"
#include "view/GridPointer.h"
#include "view/Scrolling.h"
#include "view/YearGrid.h"

namespace velkor {

/// What the grid asks of the control; keys are those of the event collection.
struct GridCommands {
  std::function<void(std::string_view key)> open;
  std::function<void(std::string_view key)> remove;
  std::function<void(int by)> changeYear;
  /// The cursor came to another day or event, or other days are selected.
  std::function<void(AccessibleChange)> changed;
};

class GridView {
 public:
  /// All outlive this. Takes over the handlers of the grid's surfaces and of VScroll1.
  GridView(YearPlanElements& elements, const YearGrid& grid, const Platform& platform,
           GridCommands commands);

  /// What the grid is drawn with.
  void SetNames(CalendarNames names, const ShownDates& dates, Font font);
  const ShownDates& Dates() const { return dates_; }

  /// The grid is drawn from now on; until then its surface stays empty.
  void Begin() { shown_ = true; }
  /// It is not any more; what was selected and pointed at is forgotten.
  void End();
  /// After the grid was laid out, sized or given other events: everything is painted again.
  /// @param spanChanged  other months are on show
  void GridChanged(bool spanChanged);

  void ClearSelection();
  /// 0 automatic, 1 always select, 2 always open.
  void SetSelectionMode(int mode);

  /// How far the grid is scrolled.
  Twips Offset() const;
  const DayCursor& Cursor() const { return cursor_; }
  /// The selected days, also while they are being dragged out.
  std::optional<Selection> Selected() const { return pointer_.DrawnSelection(); }
  // What screen readers ask for; nothing happens while the grid is not drawn.
  /// Selects all days of a row's month, or one day, which the cursor comes to.
  void SelectMonth(int row);
  void SelectDay(GridCell cell);
  /// Brings the cursor to a day that an event covers, and chooses the event.
  void PointAt(GridCell cell, std::size_t event);
  void OpenEvent(std::size_t event);

  /// The event that the context menu acts on; empty for none.
  const std::string& SelectedKey() const { return selectedKey_; }
  /// The days that a new appointment takes: the selection, else the day that the menu was called
  /// for.
  std::optional<DateRange> DaysForNew() const;

 private:
  void pic1_Paint(Surface& surface, const Rect& visible);
  void pic1_MouseMove(Point at);
  void pic1_MouseDown(MouseButton button, Point at);
  void pic1_MouseUp(MouseButton button, Point at);
  bool pic1_KeyDown(Key key);
  std::string pic1_ToolTip() const;
  void picHeadCol_Paint(Surface& surface);
  void picHeadRow_Paint(Surface& surface, const Rect& visible);
  void picHeadRow_MouseDown(MouseButton button, Point at);
  void picParent_Paint(Surface& surface);
  void VScroll1_Change();

  Point InGrid(Point at) const { return {at.x, at.y + Offset()}; }
  void SetScrollRange();
  void ShowRows(Twips top, Twips bottom);
  void RefreshPart(const Rect& inGrid);
  void FollowPointer();
  void Apply(const PointerMove& move);
  void Show(const SelectionChange& change);
  void ShowLabel();
  void ShowCursor();
  void WordCursor();
  void MoveCursor(const std::function<void()>& move);
  /// What a key does to the day that the cursor shows.
  /// @return false for a key that does nothing to it
  bool UseCursor(Key key);
  /// @param named  the event that the menu is about; empty for the day alone
  void PopUpAtCursor(std::string named);
  void PopUp(Point at, std::string key, std::optional<DateRange> day);
  /// Key of the event that the keyboard points at; empty for none.
  std::string CursorKey() const;

  YearPlanElements& elements_;
  const YearGrid& grid_;
  Platform platform_;
  ShownDates dates_;
  GridCommands commands_;
  CalendarNames names_;
  Font font_;
  GridPointer pointer_;
  DayCursor cursor_;
  bool shown_ = false;
  std::string selectedKey_;
  /// The day that the menu was called for.
  std::optional<DateRange> menuDay_;
  /// Where the pointer is over pic1.
  std::optional<Point> pointerAt_;
  /// The left button went down over the grid.
  bool pressed_ = false;
  /// lblDate tells of the cursor and not of the pointer.
  bool labelIsCursors_ = false;
  /// A notch of the wheel moves by three bands.
  WheelSteps wheel_{3};
  /// Kept for its memory: a move must not need any.
  std::string label_;
};

}  // namespace velkor
