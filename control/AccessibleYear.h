// control/AccessibleYear.h: the planner as a screen reader meets it: its elements, the year as a
// table of months, days and bars, the categories as a list.
#pragma once

#include <cstddef>
#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <unordered_set>
#include <vector>

#include "control/YearPlanElements.h"
#include "platform/Accessible.h"
#include "span/Locale.h"
#include "view/Bar.h"
#include "view/YearGrid.h"

namespace velkor {

class CategoryCommands;
class Clock;
class GridView;
class Legend;
class ShownDates;

/// What the tree tells of; all of it outlives the tree.
struct AccessibleSources {
  YearPlanElements& elements;
  const YearGrid& grid;
  GridView& gridView;
  Legend& legend;
  const CategoryCommands& categories;
  const CalendarNames& names;
  const ShownDates& dates;
  Clock& clock;
};

/// Every answer is read from what is drawn: there are no nodes but those asked about. The table's
/// children are its twelve months, whose children are their days, and after them its bars, in the
/// order in which they are drawn.
class AccessibleYear : public AccessibleTree {
 public:
  explicit AccessibleYear(const AccessibleSources& sources);

  bool IsThere(const AccessibleId& node) override;
  std::optional<AccessibleFacts> FactsOf(const AccessibleId& node) override;
  std::optional<AccessibleId> ParentOf(const AccessibleId& node) override;
  int ChildCount(const AccessibleId& node) override;
  std::optional<AccessibleId> ChildAt(const AccessibleId& node, int index) override;
  int IndexOf(const AccessibleId& node) override;
  std::optional<AccessibleId> NodeAt(std::uint8_t kind, std::uint32_t index) override;
  std::optional<AccessibleId> NodeOf(const Element& element) override;
  Element* ElementOf(const AccessibleId& node) override;
  std::optional<AccessibleId> NodeAtPoint(int x, int y) override;
  std::optional<AccessibleId> CurrentOf(const Element& element) override;
  std::vector<AccessibleId> SelectionOf(const AccessibleId& node) override;
  bool Act(const AccessibleId& node) override;
  bool Select(const AccessibleId& node) override;

  /// To be called when the grid, or the legend, changed so.
  void GridChanged(AccessibleChange change) { Tell(change, elements_.pic1); }
  void LegendChanged(AccessibleChange change) { Tell(change, elements_.legend.picCats); }
  /// To be called when the grid was drawn anew, whether or not it holds other events.
  void GridRedrawn();

 private:
  enum Kind : std::uint8_t { Control, ElementKind, Button, Month, Day, BarKind, CategoryKind };

  AccessibleId IdOf(Kind kind, std::size_t index) const;
  AccessibleId IdOfElement(const Element& element) const;
  AccessibleId IdOfDay(GridCell cell) const;
  void Tell(AccessibleChange change, const Element& element);

  const PlacedElement& PlacedOf(const AccessibleId& node) const { return placed_[node.index]; }
  GridCell CellOf(const AccessibleId& day) const;
  const Bar& BarOf(const AccessibleId& bar) const { return grid_.Layout().bars[bar.index]; }
  int DaysOf(int row) const;
  std::optional<std::size_t> BarAt(std::size_t event, int row) const;

  AccessibleFacts FactsOfControl() const;
  AccessibleFacts FactsOfElement(const PlacedElement& placed);
  AccessibleFacts FactsOfButton(std::size_t index) const;
  AccessibleFacts FactsOfMonth(int row) const;
  AccessibleFacts FactsOfDay(GridCell cell) const;
  AccessibleFacts FactsOfBar(const Bar& bar);
  AccessibleFacts FactsOfCategory(int index) const;

  /// In pixels of the control, clipped by nothing.
  PixelRect PlaceOf(const PlacedElement& placed) const;
  /// What of it its holders let be seen.
  PixelRect SeenOf(const PlacedElement& placed) const;
  PixelRect ButtonRect(std::size_t index) const;
  /// A rectangle of the grid, and of the legend's rows.
  PixelRect InGrid(const Rect& rect) const;
  PixelRect InLegend(const Rect& rect) const;
  void Place(AccessibleFacts& facts, const PixelRect& bounds, const Element& element) const;
  std::optional<AccessibleId> NodeInGrid(int x, int y) const;

  std::string DayText(Date day) const;
  /// Whether other days of the span have an occurrence of the same appointment.
  bool Repeats(const CalEvent& event);

  YearPlanElements& elements_;
  const YearGrid& grid_;
  GridView& gridView_;
  Legend& legend_;
  const CategoryCommands& categories_;
  const CalendarNames& names_;
  const ShownDates& dates_;
  Clock& clock_;
  const std::vector<PlacedElement> placed_;
  /// Places in `placed_` of the control's children.
  std::vector<std::uint32_t> children_;
  /// The layout that was told of last.
  std::uint64_t told_ = 0;
  /// Identifiers that several events have, of the layout of this revision; gathered when first
  /// asked for.
  std::unordered_set<std::string_view> repeated_;
  std::uint64_t repeatedRevision_ = 0;
};

}  // namespace velkor
