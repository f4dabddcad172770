// control/AccessibleYearFacts.cpp: what is said about each kind of node, and where it is drawn.
#include <algorithm>
#include <utility>

#include "categories/CategoryCommands.h"
#include "control/AccessibleYear.h"
#include "control/GridView.h"
#include "control/HoverText.h"
#include "control/ShownDates.h"
#include "platform/System.h"
#include "span/Globals.h"
#include "support/ToolbarIcons.h"
#include "view/LegendPainter.h"

namespace velkor {
namespace {

PixelRect MovedBy(const PixelRect& rect, const PixelRect& origin) {
  return {rect.left + origin.left, rect.top + origin.top, rect.right + origin.left,
          rect.bottom + origin.top};
}

bool IsEmpty(const PixelRect& rect) {
  return rect.Width() <= 0 || rect.Height() <= 0;
}

/// Appends a part of a description.
void Add(std::string& text, std::string_view part) {
  if (part.empty()) return;
  if (!text.empty()) text += ", ";
  text += part;
}

std::string SubjectOf(const CalEvent& event) {
  std::string subject = Globals::StripControlChars(event.Subject);
  return subject.empty() ? "No subject" : subject;
}

std::string CountOfAppointments(std::size_t count) {
  return std::to_string(count) + (count == 1 ? " appointment" : " appointments");
}

/// How far it is scrolled.
std::string PercentOf(const ScrollBar& bar) {
  constexpr double All = 100;
  const double share = bar.Max() > 0 ? All * bar.Value() / bar.Max() : 0;
  return std::to_string(static_cast<int>(RoundHalfEven(share))) + " %";
}

}  // namespace

PixelRect AccessibleYear::PlaceOf(const PlacedElement& placed) const {
  const PixelSize pixel = grid_.Geometry().pixel;
  PixelRect place = ToPixels(placed.element->Bounds(), pixel);
  for (const Element* holder = placed.holder; holder != nullptr;) {
    place = MovedBy(place, ToPixels(holder->Bounds(), pixel));
    holder = std::ranges::find(placed_, holder, &PlacedElement::element)->holder;
  }
  return place;
}

PixelRect AccessibleYear::SeenOf(const PlacedElement& placed) const {
  const PixelRect place = PlaceOf(placed);
  if (placed.holder == nullptr) return place;
  const auto holder = std::ranges::find(placed_, placed.holder, &PlacedElement::element);
  return Intersection(place, SeenOf(*holder));
}

PixelRect AccessibleYear::InGrid(const Rect& rect) const {
  const Twips offset = gridView_.Offset();
  const PixelRect place = ToPixels({rect.left, rect.top - offset, rect.right, rect.bottom - offset},
                                   grid_.Geometry().pixel);
  return MovedBy(place, PlaceOf(placed_[IdOfElement(elements_.pic1).index]));
}

PixelRect AccessibleYear::InLegend(const Rect& rect) const {
  return MovedBy(ToPixels(rect, grid_.Geometry().pixel),
                 PlaceOf(placed_[IdOfElement(elements_.legend.picCats).index]));
}

/// As wide as their pictures need and as high as the toolbar, side by side, as the faces show them.
PixelRect AccessibleYear::ButtonRect(std::size_t index) const {
  const PixelRect toolbar = PlaceOf(placed_[IdOfElement(elements_.Toolbar1).index]);
  const PixelSize pixel = grid_.Geometry().pixel;
  const int side =
      std::min(toolbar.Height(), ToPixel(ToolbarButtonSide, static_cast<float>(pixel.width)));
  const int left = toolbar.left + static_cast<int>(index) * side;
  return {left, toolbar.top, left + side, toolbar.bottom};
}

void AccessibleYear::Place(AccessibleFacts& facts, const PixelRect& bounds,
                           const Element& element) const {
  facts.bounds = bounds;
  facts.visible = element.Visible();
  facts.inSight = !IsEmpty(Intersection(bounds, SeenOf(placed_[IdOfElement(element).index])));
}

std::optional<AccessibleFacts> AccessibleYear::FactsOf(const AccessibleId& node) {
  if (!IsThere(node)) return std::nullopt;
  switch (node.kind) {
    case ElementKind:
      return FactsOfElement(PlacedOf(node));
    case Button:
      return FactsOfButton(node.index);
    case Month:
      return FactsOfMonth(static_cast<int>(node.index));
    case Day:
      return FactsOfDay(CellOf(node));
    case BarKind:
      return FactsOfBar(BarOf(node));
    case CategoryKind:
      return FactsOfCategory(static_cast<int>(node.index));
    default:
      return FactsOfControl();
  }
}

AccessibleFacts AccessibleYear::FactsOfControl() const {
  AccessibleFacts facts;
  facts.name = "Year planner";
  facts.description = elements_.pic1.Description();
  for (const std::uint32_t child : children_) {
    const PixelRect place = PlaceOf(placed_[child]);
    facts.bounds.right = std::max(facts.bounds.right, place.right);
    facts.bounds.bottom = std::max(facts.bounds.bottom, place.bottom);
  }
  return facts;
}

AccessibleFacts AccessibleYear::FactsOfElement(const PlacedElement& placed) {
  const Element& element = *placed.element;
  AccessibleFacts facts;
  facts.name = element.AccessibleName();
  facts.description = element.Description();
  facts.enabled = element.Enabled();
  if (const auto* const label = dynamic_cast<const Label*>(&element)) {
    facts.role = AccessibleRole::Label;
    facts.name = label->Caption();
    facts.description.clear();
  } else if (const auto* const button = dynamic_cast<const CommandButton*>(&element)) {
    facts.role = AccessibleRole::Button;
    facts.name = button->Caption();
    facts.action = "Press";
    facts.focusable = true;
  } else if (const auto* const box = dynamic_cast<const TextBox*>(&element)) {
    facts.role = AccessibleRole::Edit;
    facts.value = box->Text();
    facts.focusable = true;
  } else if (const auto* const bar = dynamic_cast<const ScrollBar*>(&element)) {
    facts.role = AccessibleRole::ScrollBar;
    facts.value = PercentOf(*bar);
  } else if (dynamic_cast<const Image*>(&element) != nullptr) {
    facts.role = AccessibleRole::Status;
    facts.value = element.ToolTip();
  } else if (dynamic_cast<const Toolbar*>(&element) != nullptr) {
    facts.role = AccessibleRole::ToolBar;
    facts.focusable = true;
  } else if (const auto* const picture = dynamic_cast<const PictureBox*>(&element)) {
    facts.role = AccessibleRole::Header;
    facts.focusable = static_cast<bool>(picture->onKeyDown);
    if (picture == &elements_.pic1) facts.role = AccessibleRole::Table;
    if (picture == &elements_.legend.picCats) facts.role = AccessibleRole::List;
  }
  const PixelRect seen = SeenOf(placed);
  Place(facts, IsEmpty(seen) ? PlaceOf(placed) : seen, element);
  return facts;
}

AccessibleFacts AccessibleYear::FactsOfButton(std::size_t index) const {
  const ToolbarButton& button = elements_.Toolbar1.Buttons()[index];
  AccessibleFacts facts;
  facts.role = AccessibleRole::Button;
  facts.name = button.toolTip;
  facts.action = "Press";
  facts.enabled = elements_.Toolbar1.Enabled() && button.enabled;
  facts.pressed = button.checked;
  facts.focusable = true;
  Place(facts, ButtonRect(index), elements_.Toolbar1);
  return facts;
}

AccessibleFacts AccessibleYear::FactsOfMonth(int row) const {
  const DisplaySpan& span = grid_.Span();
  const int month = span.MonthOfRow(row);
  const MonthColumns& columns = grid_.Columns();
  const GridGeometry& geometry = grid_.Geometry();
  AccessibleFacts facts;
  facts.role = AccessibleRole::Row;
  // A span of two years has the months of both.
  facts.name = names_.months[static_cast<std::size_t>(month)] + ' ' +
               std::to_string(span.YearOfMonth(month));
  facts.action = "Select";
  facts.selectable = true;
  const std::optional<Selection> days = gridView_.Selected();
  facts.selected = days && Contains(*days, {row, columns.RowDayOffset[row] + 1}) &&
                   Contains(*days, {row, columns.RowLastColumn[row]});
  Place(
      facts,
      InGrid({geometry.ColumnEdge(columns.RowDayOffset[row]), geometry.RowTop(grid_.Layout(), row),
              geometry.ColumnEdge(columns.RowLastColumn[row]),
              geometry.RowBottom(grid_.Layout(), row)}),
      elements_.pic1);
  return facts;
}

AccessibleFacts AccessibleYear::FactsOfDay(GridCell cell) const {
  const GridGeometry& geometry = grid_.Geometry();
  const Date day = grid_.Span().DateAtCell(cell.column, cell.row);
  AccessibleFacts facts;
  facts.role = AccessibleRole::Cell;
  facts.name = DayText(day);
  Add(facts.name, grid_.OffDays().NameOf(day));
  if (DaysBetween(day, clock_.Now()) == 0) Add(facts.description, "Today");
  if (const std::vector<std::size_t> events = EventsOfDay(grid_, cell); !events.empty()) {
    std::string subjects;
    for (const std::size_t event : events) Add(subjects, SubjectOf(grid_.Events()[event]));
    Add(facts.description, CountOfAppointments(events.size()) + ": " + subjects);
  }
  facts.action = "Select";
  facts.focusable = true;
  facts.selectable = true;
  const std::optional<Selection> days = gridView_.Selected();
  facts.selected = days && Contains(*days, cell);
  Place(facts,
        InGrid({geometry.ColumnEdge(cell.column - 1), geometry.RowTop(grid_.Layout(), cell.row),
                geometry.ColumnEdge(cell.column), geometry.RowBottom(grid_.Layout(), cell.row)}),
        elements_.pic1);
  return facts;
}

AccessibleFacts AccessibleYear::FactsOfBar(const Bar& bar) {
  const CalEvent& event = grid_.Events()[bar.event];
  AccessibleFacts facts;
  facts.role = AccessibleRole::Bar;
  facts.name = SubjectOf(event);
  facts.description = DatesText(event, dates_, [this](Date day) { return DayText(day); });
  Add(facts.description, event.Categories);
  if (Repeats(event)) Add(facts.description, "repeats");
  facts.action = "Open";
  facts.focusable = true;
  facts.selectable = true;
  const DayCursor& cursor = gridView_.Cursor();
  facts.selected = cursor.HasChosen() && cursor.ChosenEvent() == bar.event;
  Place(facts, InGrid(BarRect(bar, grid_.Geometry(), grid_.Layout())), elements_.pic1);
  return facts;
}

AccessibleFacts AccessibleYear::FactsOfCategory(int index) const {
  AccessibleFacts facts;
  facts.role = AccessibleRole::ListItem;
  facts.name = LegendText(grid_.Categories().At(index));
  facts.action = "Select";
  facts.focusable = true;
  facts.selectable = true;
  facts.selected = categories_.Selected() == index;
  const PictureBox& rows = elements_.legend.picCats;
  Place(facts, InLegend(LegendRowRect(index, rows.Bounds().Width())), rows);
  return facts;
}

/// "Monday 5 January 2026", or the short date in a language without names.
std::string AccessibleYear::DayText(Date day) const {
  const DateFields fields = day.Fields();
  const std::string& weekday = names_.days[static_cast<std::size_t>(day.Weekday() - 1)];
  const std::string& month = names_.months[static_cast<std::size_t>(fields.month)];
  if (weekday.empty() || month.empty()) return dates_.ShortDate(day);
  return weekday + ' ' + std::to_string(fields.day) + ' ' + month + ' ' +
         std::to_string(fields.year);
}

bool AccessibleYear::Repeats(const CalEvent& event) {
  if (std::exchange(repeatedRevision_, grid_.Revision()) != grid_.Revision()) {
    repeated_.clear();
    std::unordered_set<std::string_view> known;
    for (const CalEvent& each : grid_.Events()) {
      if (!known.insert(each.EventID).second) repeated_.insert(each.EventID);
    }
  }
  return event.Recurring || repeated_.contains(event.EventID);
}

}  // namespace velkor
