// categories/Legend.h: the legend as its user meets it: painted, scrolled, pointed at, steered by
// keys, renamed in place.
#pragma once

#include <functional>
#include <optional>
#include <string>

#include "platform/Accessible.h"
#include "values/Font.h"
#include "values/Twips.h"
#include "view/Scrolling.h"

namespace velkor {

class CategoryCommands;
class CategoryView;
class Surface;
struct LegendElements;

class Legend {
 public:
  /// All outlive this. Takes over the handlers of the elements and onSelectionChange of the
  /// commands.
  Legend(LegendElements& elements, CategoryView& view, CategoryCommands& commands);

  void SetFont(Font font);
  /// Lays the legend out in a rectangle of the control, its frame included.
  /// @param scrolls  a scroll bar is shown where rows have no room
  void Place(const Rect& bounds, PixelSize pixel, bool scrolls = true);
  /// Whether there is a calendar whose categories can be changed; at first there is none.
  void SetLive(bool live);
  /// Other categories are on show: ends a rename in progress and lays the rows out again.
  void CategoriesChanged();
  /// Selects a row, counted from 1, and brings it into sight, unless the legend is not live.
  void SelectRow(int index);
  /// Set by whoever tells screen readers.
  std::function<void(AccessibleChange)> onChange;

 private:
  void picCats_Paint(Surface& surface, const Rect& visible);
  void picCats_MouseDown(MouseButton button, Point at);
  void picCats_MouseMove(Point at);
  bool picCats_KeyDown(Key key);
  std::string picCats_ToolTip() const;
  void vScrollCat_Change();
  void mnuCatNew_Click();
  void mnuCatRename_Click();
  bool txtEdit_KeyPress(int code);

  void LayOut();
  void PlaceRows();
  void PlaceEdit();
  /// Hides txtEdit, where it stands, and leaves the name as it is.
  void EndEdit();
  void SelectionChanged();
  void UpdateMenu();
  void RefreshRow(int index);
  void ShowRow(int index);
  void PopUp(Point at);
  /// Index of the row that a key leads to from the selected one; 0 when it leads nowhere.
  int RowAfter(Key key) const;

  LegendElements& elements_;
  CategoryView& view_;
  CategoryCommands& commands_;
  Font font_;
  Rect bounds_;
  PixelSize pixel_;
  bool scrolls_ = true;
  bool live_ = false;
  /// The row that is painted as selected.
  int selected_ = 0;
  /// The row over which txtEdit stands; 0 while nothing is renamed.
  int edited_ = 0;
  WheelSteps wheel_;
  /// How far below the top of picCatView the pointer is.
  std::optional<Twips> pointerY_;
};

}  // namespace velkor
