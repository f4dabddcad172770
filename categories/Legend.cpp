// categories/Legend.cpp: the handlers of the legend's elements.
#include "categories/Legend.h"

#include <algorithm>
#include <cmath>
#include <utility>

#include "categories/CategoryCommands.h"
#include "categories/LegendElements.h"
#include "model/CategoryView.h"
#include "view/Frame.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

constexpr double RowsPerNotch = 3;

}  // namespace

Legend::Legend(LegendElements& elements, CategoryView& view, CategoryCommands& commands)
    : elements_(elements), view_(view), commands_(commands), wheel_(RowsPerNotch) {
  PictureBox& picCats = elements_.picCats;
  picCats.onPaint = [this](Surface& surface, const Rect& visible) {
    picCats_Paint(surface, visible);
  };
  picCats.onMouseDown = [this](MouseButton button, Point at) { picCats_MouseDown(button, at); };
  picCats.onMouseMove = [this](Point at) { picCats_MouseMove(at); };
  picCats.onMouseLeave = [this] { pointerY_.reset(); };
  picCats.onMouseWheel = [this](double notches) { wheel_.Turn(elements_.vScrollCat, notches); };
  picCats.onKeyDown = [this](Key key) { return picCats_KeyDown(key); };
  picCats.onToolTip = [this] { return picCats_ToolTip(); };
  elements_.vScrollCat.onChange = [this] { vScrollCat_Change(); };
  elements_.mnuCatNew.onClick = [this] { mnuCatNew_Click(); };
  elements_.mnuCatRename.onClick = [this] { mnuCatRename_Click(); };
  elements_.mnuCatColour.onClick = [this] { commands_.CatColour(); };
  elements_.mnuCatDelete.onClick = [this] { commands_.CatDelete(); };
  elements_.txtEdit.onKeyPress = [this](int code) { return txtEdit_KeyPress(code); };
  elements_.txtEdit.onLostFocus = [this] { EndEdit(); };
  commands_.onSelectionChange = [this] { SelectionChanged(); };
  UpdateMenu();
}

void Legend::SetFont(Font font) {
  font_ = std::move(font);
  elements_.picCats.Refresh();
}

void Legend::SetLive(bool live) {
  live_ = live;
  if (!live) {
    EndEdit();
    commands_.Select(0);
  }
  UpdateMenu();
}

void Legend::CategoriesChanged() {
  EndEdit();
  LayOut();
  SelectionChanged();
  if (onChange) onChange(AccessibleChange::Children);
}

void Legend::SelectRow(int index) {
  if (!live_) return;
  commands_.Select(index);
  ShowRow(index);
}

void Legend::Place(const Rect& bounds, PixelSize pixel, bool scrolls) {
  scrolls_ = scrolls;
  bounds_ = {bounds.left, bounds.top, std::max(bounds.left, bounds.right),
             std::max(bounds.top, bounds.bottom)};
  pixel_ = pixel;
  LayOut();
}

void Legend::LayOut() {
  const Twips hidden = LegendHeight(view_.Categories()) - bounds_.Height();
  const bool scroll = scrolls_ && hidden > 0;
  const Twips right =
      scroll ? std::max(bounds_.left, bounds_.right - ScrollBarWidth) : bounds_.right;
  elements_.picCatView.SetBounds({bounds_.left, bounds_.top, right, bounds_.bottom});
  ScrollBar& bar = elements_.vScrollCat;
  bar.SetBounds({right, bounds_.top, bounds_.right, bounds_.bottom});
  bar.SetVisible(scroll);
  const double pixel = pixel_.height;
  bar.SetRange(static_cast<int>(std::ceil(std::max(hidden, 0.0) / pixel)),
               std::max(1, static_cast<int>(LegendRowHeight / pixel)),
               std::max(1, static_cast<int>(bounds_.Height() / pixel)));
  PlaceRows();
}

void Legend::PlaceRows() {
  const Twips offset = elements_.vScrollCat.Value() * static_cast<double>(pixel_.height);
  // It reaches to the end of the view, where few rows are listed too.
  const Twips bottom = std::max(LegendHeight(view_.Categories()) - offset, bounds_.Height());
  elements_.picCats.SetBounds({0, -offset, elements_.picCatView.Bounds().Width(), bottom});
  PlaceEdit();
  elements_.picCats.Refresh();
}

void Legend::PlaceEdit() {
  if (edited_ == 0) return;
  elements_.txtEdit.SetBounds(
      LegendNameRect(LegendRowRect(edited_, elements_.picCats.Bounds().Width())));
}

void Legend::picCats_Paint(Surface& surface, const Rect& visible) {
  const Rect& bounds = elements_.picCats.Bounds();
  const Rect inSight{0, -bounds.top, bounds.Width(), bounds_.Height() - bounds.top};
  const Rect part{visible.left, std::max(visible.top, inSight.top), visible.right,
                  std::min(visible.bottom, inSight.bottom)};
  if (part.Height() <= 0) return;
  DrawLegend(surface, view_.Categories(), font_, part, bounds.Width() - pixel_.width,
             commands_.Selected());
  surface.Outline(
      {inSight.left, inSight.top, inSight.right - pixel_.width, inSight.bottom - pixel_.height},
      FrameColour, 1);
}

void Legend::vScrollCat_Change() {
  PlaceRows();
}

/// Beside the rows nothing is selected.
void Legend::picCats_MouseDown(MouseButton button, Point at) {
  if (!live_) return;
  EndEdit();
  commands_.Select(LegendRowAt(at.y, view_.Categories()));
  if (button == MouseButton::Right) PopUp(at);
}

void Legend::picCats_MouseMove(Point at) {
  pointerY_ = at.y + elements_.picCats.Bounds().top;
}

/// The rows move below a pointer that rests.
std::string Legend::picCats_ToolTip() const {
  if (!pointerY_) return {};
  const CategoryTable& categories = view_.Categories();
  const int index = LegendRowAt(*pointerY_ - elements_.picCats.Bounds().top, categories);
  return index > 0 ? LegendText(categories.At(index)) : std::string();
}

int Legend::RowAfter(Key key) const {
  const int count = view_.Categories().Count();
  const int selected = commands_.Selected();
  const int page = std::max(1, static_cast<int>(bounds_.Height() / LegendRowHeight));
  switch (key) {
    case Key::Up:
      // Without a selection it begins at the end.
      return selected == 0 ? count : std::max(1, selected - 1);
    case Key::Down:
      return std::min(count, selected + 1);
    case Key::PageUp:
      return std::min(count, std::max(1, selected - page));
    case Key::PageDown:
      return std::min(count, selected + page);
    case Key::Home:
      return std::min(count, 1);
    case Key::End:
      return count;
    default:
      return 0;
  }
}

bool Legend::picCats_KeyDown(Key key) {
  if (!live_) return false;
  if (const int row = RowAfter(key); row > 0) {
    SelectRow(row);
    return true;
  }
  const int selected = commands_.Selected();
  if (key == Key::Enter && selected > 0) {
    mnuCatRename_Click();
    return true;
  }
  if (key != Key::Menu) return false;
  if (selected > 0) ShowRow(selected);
  const Rect row = LegendRowRect(selected, elements_.picCats.Bounds().Width());
  const Rect name = LegendNameRect(row);
  PopUp({name.left, selected > 0 ? name.bottom : -elements_.picCats.Bounds().top});
  return true;
}

void Legend::PopUp(Point at) {
  UpdateMenu();
  const Rect& view = elements_.picCatView.Bounds();
  const Rect& rows = elements_.picCats.Bounds();
  elements_.mnuCatPop.PopUp({view.left + rows.left + at.x, view.top + rows.top + at.y});
}

void Legend::UpdateMenu() {
  elements_.mnuCatNew.SetEnabled(live_);
  const bool enabled = live_ && commands_.Selected() > 0;
  for (MenuItem* entry :
       {&elements_.mnuCatRename, &elements_.mnuCatColour, &elements_.mnuCatDelete}) {
    entry->SetEnabled(enabled);
  }
}

void Legend::SelectionChanged() {
  const int before = std::exchange(selected_, commands_.Selected());
  if (selected_ != edited_) EndEdit();
  UpdateMenu();
  RefreshRow(before);
  RefreshRow(selected_);
  const CategoryTable& categories = view_.Categories();
  elements_.picCats.SetDescription(selected_ == 0 ? std::string()
                                                  : LegendText(categories.At(selected_)) + ", " +
                                                        std::to_string(selected_) + " of " +
                                                        std::to_string(categories.Count()));
  if (before == selected_ || !onChange) return;
  onChange(AccessibleChange::Selection);
  onChange(AccessibleChange::Current);
}

void Legend::RefreshRow(int index) {
  if (index == 0) return;
  elements_.picCats.RefreshPart(LegendRowRect(index, elements_.picCats.Bounds().Width()));
}

void Legend::ShowRow(int index) {
  const Rect row = LegendRowRect(index, 0);
  ScrollIntoView(elements_.vScrollCat, row.top, row.bottom, bounds_.Height(), pixel_.height);
}

void Legend::mnuCatNew_Click() {
  const int before = view_.Categories().Count();
  commands_.New();
  const int count = view_.Categories().Count();
  // It is the last but one, or the last.
  if (count == before + 1) {
    ShowRow(count - 1);
    ShowRow(count);
  }
}

void Legend::mnuCatRename_Click() {
  const int selected = commands_.Selected();
  if (!live_ || selected == 0) return;
  ShowRow(selected);
  edited_ = selected;
  PlaceEdit();
  TextBox& edit = elements_.txtEdit;
  edit.SetText(view_.Categories().At(selected).name);
  edit.SetVisible(true);
  edit.SetFocus();
}

bool Legend::txtEdit_KeyPress(int code) {
  if (code != key_codes::Enter && code != key_codes::Escape) return true;
  // It leaves with its text, whatever the command tells.
  const bool applies = code == key_codes::Enter && edited_ > 0;
  const std::string text = elements_.txtEdit.Text();
  EndEdit();
  elements_.picCats.SetFocus();
  if (applies) commands_.Rename(text);
  return false;
}

void Legend::EndEdit() {
  // First: an element that is hidden loses the keyboard.
  if (std::exchange(edited_, 0) == 0) return;
  elements_.txtEdit.SetVisible(false);
  elements_.txtEdit.SetText("");
}

}  // namespace velkor
