// control/AccessibleYear.cpp: the shape of the tree, and what is done to its nodes.
#include "control/AccessibleYear.h"

#include <algorithm>
#include <tuple>

#include "categories/CategoryCommands.h"
#include "categories/Legend.h"
#include "control/GridView.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

/// Days of a row are numbered from the row's number times this.
constexpr std::size_t DaysApart = 32;

bool HoldsOthers(const Element& element, const std::vector<PlacedElement>& placed) {
  return std::ranges::any_of(placed,
                             [&](const PlacedElement& other) { return other.holder == &element; });
}

bool Contains(const PixelRect& rect, int x, int y) {
  return rect.left <= x && x < rect.right && rect.top <= y && y < rect.bottom;
}

}  // namespace

AccessibleYear::AccessibleYear(const AccessibleSources& sources)
    : elements_(sources.elements),
      grid_(sources.grid),
      gridView_(sources.gridView),
      legend_(sources.legend),
      categories_(sources.categories),
      names_(sources.names),
      dates_(sources.dates),
      clock_(sources.clock),
      placed_(elements_.Placed()) {
  for (std::uint32_t i = 0; i < placed_.size(); ++i) {
    const Element& element = *placed_[i].element;
    // A picture without a name is a frame around those that it holds.
    if (element.AccessibleName().empty() && HoldsOthers(element, placed_)) continue;
    children_.push_back(i);
  }
}

AccessibleId AccessibleYear::IdOf(Kind kind, std::size_t index) const {
  std::uint64_t revision = 0;
  if (kind == BarKind) revision = grid_.Revision();
  if (kind == Month || kind == Day) {
    const DisplaySpan& span = grid_.Span();
    revision = static_cast<std::uint64_t>(span.ViewYear) * (MonthRows + 1) +
               static_cast<std::uint64_t>(span.FirstMonth);
  }
  return {kind, static_cast<std::uint32_t>(index), revision};
}

AccessibleId AccessibleYear::IdOfElement(const Element& element) const {
  const auto found = std::ranges::find(placed_, &element, &PlacedElement::element);
  return IdOf(ElementKind, static_cast<std::size_t>(found - placed_.begin()));
}

AccessibleId AccessibleYear::IdOfDay(GridCell cell) const {
  const int day = cell.column - grid_.Columns().RowDayOffset[cell.row];
  return IdOf(Day, static_cast<std::size_t>(cell.row) * DaysApart + static_cast<std::size_t>(day));
}

GridCell AccessibleYear::CellOf(const AccessibleId& day) const {
  const int row = static_cast<int>(day.index / DaysApart);
  return {row, grid_.Columns().RowDayOffset[row] + static_cast<int>(day.index % DaysApart)};
}

int AccessibleYear::DaysOf(int row) const {
  return grid_.Columns().RowLastColumn[row] - grid_.Columns().RowDayOffset[row];
}

bool AccessibleYear::IsThere(const AccessibleId& node) {
  const std::size_t index = node.index;
  if (node.revision != IdOf(static_cast<Kind>(node.kind), 0).revision) return false;
  switch (node.kind) {
    case Control:
      return index == 0;
    case ElementKind:
      return std::ranges::find(children_, node.index) != children_.end();
    case Button:
      return index < elements_.Toolbar1.Buttons().size();
    case Month:
      return index >= 1 && index <= MonthRows;
    case Day: {
      const std::size_t row = index / DaysApart;
      const std::size_t day = index % DaysApart;
      return row >= 1 && row <= MonthRows && day >= 1 &&
             day <= static_cast<std::size_t>(DaysOf(static_cast<int>(row)));
    }
    case BarKind:
      return index < grid_.Layout().bars.size();
    case CategoryKind:
      return index >= 1 && index <= static_cast<std::size_t>(grid_.Categories().Count());
    default:
      return false;
  }
}

std::optional<AccessibleId> AccessibleYear::NodeAt(std::uint8_t kind, std::uint32_t index) {
  const AccessibleId node = IdOf(static_cast<Kind>(kind), index);
  return IsThere(node) ? std::optional(node) : std::nullopt;
}

std::optional<AccessibleId> AccessibleYear::NodeOf(const Element& element) {
  const AccessibleId node = IdOfElement(element);
  return IsThere(node) ? std::optional(node) : std::nullopt;
}

Element* AccessibleYear::ElementOf(const AccessibleId& node) {
  switch (node.kind) {
    case ElementKind:
      return node.index < placed_.size() ? placed_[node.index].element : nullptr;
    case Button:
      return &elements_.Toolbar1;
    case Month:
    case Day:
    case BarKind:
      return &elements_.pic1;
    case CategoryKind:
      return &elements_.legend.picCats;
    default:
      return nullptr;
  }
}

std::optional<AccessibleId> AccessibleYear::ParentOf(const AccessibleId& node) {
  if (node.kind == Control || !IsThere(node)) return std::nullopt;
  if (node.kind == ElementKind) return AccessibleId();
  if (node.kind == Day) return IdOf(Month, node.index / DaysApart);
  return IdOfElement(*ElementOf(node));
}

int AccessibleYear::ChildCount(const AccessibleId& node) {
  if (!IsThere(node)) return 0;
  if (node.kind == Control) return static_cast<int>(children_.size());
  if (node.kind == Month) return DaysOf(static_cast<int>(node.index));
  if (node.kind != ElementKind) return 0;
  const Element* const element = PlacedOf(node).element;
  if (element == &elements_.Toolbar1) return static_cast<int>(elements_.Toolbar1.Buttons().size());
  if (element == &elements_.pic1) return MonthRows + static_cast<int>(grid_.Layout().bars.size());
  return element == &elements_.legend.picCats ? grid_.Categories().Count() : 0;
}

std::optional<AccessibleId> AccessibleYear::ChildAt(const AccessibleId& node, int index) {
  if (index < 0 || index >= ChildCount(node)) return std::nullopt;
  const auto place = static_cast<std::size_t>(index);
  if (node.kind == Control) return IdOf(ElementKind, children_[place]);
  if (node.kind == Month) return IdOf(Day, node.index * DaysApart + place + 1);
  const Element* const element = PlacedOf(node).element;
  if (element == &elements_.Toolbar1) return IdOf(Button, place);
  if (element == &elements_.legend.picCats) return IdOf(CategoryKind, place + 1);
  return place < MonthRows ? IdOf(Month, place + 1) : IdOf(BarKind, place - MonthRows);
}

int AccessibleYear::IndexOf(const AccessibleId& node) {
  const int index = static_cast<int>(node.index);
  switch (node.kind) {
    case ElementKind:
      return static_cast<int>(std::ranges::find(children_, node.index) - children_.begin());
    case Month:
    case CategoryKind:
      return index - 1;
    case Day:
      return index % static_cast<int>(DaysApart) - 1;
    case BarKind:
      return MonthRows + index;
    default:
      return index;
  }
}

std::optional<AccessibleId> AccessibleYear::NodeAtPoint(int x, int y) {
  // What is held is placed after its holder and lies over it.
  const auto found = std::find_if(children_.rbegin(), children_.rend(), [&](std::uint32_t child) {
    return placed_[child].element->Visible() && Contains(SeenOf(placed_[child]), x, y);
  });
  if (found == children_.rend()) return std::nullopt;
  const AccessibleId node = IdOf(ElementKind, *found);
  const Element* const element = placed_[*found].element;
  if (element == &elements_.pic1) return NodeInGrid(x, y).value_or(node);
  for (int i = 0; i < ChildCount(node); ++i) {
    const PixelRect rect = element == &elements_.Toolbar1
                               ? ButtonRect(static_cast<std::size_t>(i))
                               : InLegend(LegendRowRect(i + 1, element->Bounds().Width()));
    if (Contains(rect, x, y)) return ChildAt(node, i);
  }
  return node;
}

std::optional<AccessibleId> AccessibleYear::NodeInGrid(int x, int y) const {
  const PixelRect origin = InGrid({});
  const PixelSize pixel = grid_.Geometry().pixel;
  // The middle of the pixel.
  const auto hit = grid_.HitTestAt({(x - origin.left + 0.5) * static_cast<double>(pixel.width),
                                    (y - origin.top + 0.5) * static_cast<double>(pixel.height)});
  if (!hit) return std::nullopt;
  if (const auto event = grid_.EventAt(*hit)) {
    if (const auto bar = BarAt(*event, hit->row)) return IdOf(BarKind, *bar);
  }
  if (hit->column > 0) return IdOfDay({hit->row, hit->column});
  return IdOf(Month, static_cast<std::size_t>(hit->row));
}

std::optional<std::size_t> AccessibleYear::BarAt(std::size_t event, int row) const {
  const std::vector<Bar>& bars = grid_.Layout().bars;
  const auto found = std::partition_point(bars.begin(), bars.end(), [&](const Bar& bar) {
    return std::tuple<std::size_t, int>(bar.event, bar.row) < std::tuple(event, row);
  });
  if (found == bars.end() || found->event != event || found->row != row) return std::nullopt;
  return static_cast<std::size_t>(found - bars.begin());
}

std::optional<AccessibleId> AccessibleYear::CurrentOf(const Element& element) {
  if (&element == &elements_.legend.picCats && categories_.Selected() > 0) {
    return IdOf(CategoryKind, static_cast<std::size_t>(categories_.Selected()));
  }
  if (&element == &elements_.pic1) {
    const DayCursor& cursor = gridView_.Cursor();
    if (const std::optional<GridCell> cell = cursor.Cell()) {
      const auto event = cursor.HasChosen() ? cursor.ChosenEvent() : std::nullopt;
      const auto bar = event ? BarAt(*event, cell->row) : std::nullopt;
      return bar ? IdOf(BarKind, *bar) : IdOfDay(*cell);
    }
  }
  return NodeOf(element);
}

std::vector<AccessibleId> AccessibleYear::SelectionOf(const AccessibleId& node) {
  std::vector<AccessibleId> selected;
  if (!IsThere(node)) return selected;
  const Element* const element = ElementOf(node);
  if (element == &elements_.legend.picCats && categories_.Selected() > 0) {
    selected.push_back(IdOf(CategoryKind, static_cast<std::size_t>(categories_.Selected())));
  }
  const std::optional<Selection> days = gridView_.Selected();
  if (element != &elements_.pic1 || !days) return selected;
  for (int row = 1; row <= MonthRows; ++row) {
    if (node.kind != ElementKind && node != IdOf(Month, static_cast<std::size_t>(row))) continue;
    const int first = grid_.Columns().RowDayOffset[row] + 1;
    for (int column = first; column <= grid_.Columns().RowLastColumn[row]; ++column) {
      if (velkor::Contains(*days, {row, column})) selected.push_back(IdOfDay({row, column}));
    }
  }
  return selected;
}

bool AccessibleYear::Act(const AccessibleId& node) {
  if (!IsThere(node)) return false;
  switch (node.kind) {
    case ElementKind: {
      auto* const clickable = dynamic_cast<ClickableElement*>(PlacedOf(node).element);
      if (clickable == nullptr || !clickable->onClick) return false;
      clickable->Click();
      return true;
    }
    case Button: {
      // The handler may change the toolbar.
      const std::string key = elements_.Toolbar1.Buttons()[node.index].key;
      elements_.Toolbar1.ClickButton(key);
      return true;
    }
    case BarKind:
      gridView_.OpenEvent(BarOf(node).event);
      return true;
    default:
      return Select(node);
  }
}

bool AccessibleYear::Select(const AccessibleId& node) {
  if (!IsThere(node)) return false;
  switch (node.kind) {
    case Month:
      gridView_.SelectMonth(static_cast<int>(node.index));
      return true;
    case Day:
      gridView_.SelectDay(CellOf(node));
      return true;
    case BarKind:
      gridView_.PointAt({BarOf(node).row, BarOf(node).first + 1}, BarOf(node).event);
      return true;
    case CategoryKind:
      legend_.SelectRow(static_cast<int>(node.index));
      return true;
    default:
      return false;
  }
}

void AccessibleYear::Tell(AccessibleChange change, const Element& element) {
  if (!onChange) return;
  const bool isOfOne = change == AccessibleChange::Current ||
                       (change == AccessibleChange::Selection && &element != &elements_.pic1);
  const auto node = isOfOne ? CurrentOf(element) : NodeOf(element);
  if (node) onChange(change, *node);
}

void AccessibleYear::GridRedrawn() {
  if (std::exchange(told_, grid_.Revision()) != grid_.Revision()) {
    GridChanged(AccessibleChange::Children);
  }
}

}  // namespace velkor
