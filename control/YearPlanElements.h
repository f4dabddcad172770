// control/YearPlanElements.h: the child elements of the control, by name.
#pragma once

#include <array>
#include <vector>

#include "categories/LegendElements.h"
#include "control/ControlLook.h"
#include "platform/Elements.h"
#include "values/Font.h"

namespace velkor {

/// Keys of the buttons of Toolbar1.
namespace toolbar_keys {
inline constexpr std::string_view Back = "Back";
inline constexpr std::string_view Next = "Next";
inline constexpr std::string_view Filter = "Filter";
inline constexpr std::string_view Print = "Print";
inline constexpr std::string_view Open = "Open";
inline constexpr std::string_view Save = "Save";
}  // namespace toolbar_keys

/// A face makes a native peer for each element, menu and timer.
struct YearPlanElements {
  YearPlanElements();

  /// All that have a place of their own, in the order of the Tab key. They do not overlap what is
  /// not their holder; what a holder holds follows it.
  std::vector<PlacedElement> Placed();
  std::array<Menu*, 2> Menus() { return {&mnuPop, &legend.mnuCatPop}; }
  std::array<Timer*, 4> Timers() { return {&tmrStart, &tmrBackground, &tmrItems, &tmrCalendar}; }

  Toolbar Toolbar1;
  /// "Year " and the displayed year.
  Label lblSelectedYear{"lblSelectedYear"};
  /// The date under the pointer, or the days being selected.
  Label lblDate{"lblDate"};
  CommandButton Command1{"Command1"};
  /// Filled in the colour of the status, which its tool tip words.
  Image imgLogo{"imgLogo"};

  ControlLook look;
  /// What the control is drawn with; with the user's code page.
  Font font;

  /// Holds the grid with its headers and VScroll1; paints the corner between them.
  PictureBox picParent{"picParent"};
  /// The weekdays above the grid.
  PictureBox picHeadCol{"picHeadCol"};
  /// The months beside the grid.
  PictureBox picHeadRow{"picHeadRow"};
  /// The part of the grid in sight.
  PictureBox pic1{"pic1"};
  ScrollBar VScroll1{"VScroll1"};
  LegendElements legend;

  MenuItem mnuNew{"mnuNew", "New Appointment"};
  MenuItem mnuEdit{"mnuEdit", "Edit Appointment"};
  MenuItem mnuDelete{"mnuDelete", "Delete Appointment"};
  MenuItem mnuClear{"mnuClear", "Clear Selection"};
  MenuItem mnuSelectionMode{"mnuSelectionMode", "Selection"};
  MenuItem mnuSelectionAutomatic{"mnuSelection", "Automatic", 0};
  MenuItem mnuSelectionAlways{"mnuSelection", "Always Select Days", 1};
  MenuItem mnuSelectionNever{"mnuSelection", "Always Open Appointments", 2};
  MenuItem mnuHelp{"mnuHelp", "Help"};
  MenuItem mnuAbout{"mnuAbout", "About"};
  MenuItem mnuSeparator1{"mnuSeparator1", ""};
  MenuItem mnuSeparator2{"mnuSeparator2", ""};
  Menu mnuPop{"mnuPop"};

  Timer tmrStart{"tmrStart", 100};
  Timer tmrBackground{"tmrBackground", 50000};
  /// Runs while item events wait to be taken together.
  Timer tmrItems{"tmrItems", 50};
  /// Runs from the first start-up on: sees to the connection with the calendar program.
  Timer tmrCalendar{"tmrCalendar", 5000};
};

}  // namespace velkor
