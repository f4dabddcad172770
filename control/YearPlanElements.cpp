// control/YearPlanElements.cpp: the toolbar's buttons, the order of the elements and of the menu.
#include "control/YearPlanElements.h"

#include <string>

namespace velkor {
namespace {

ToolbarButton ButtonOf(std::string_view key, int image, std::string_view toolTip) {
  return {std::string(key), std::string(toolTip), false, false, image, true};
}

}  // namespace

YearPlanElements::YearPlanElements()
    : Toolbar1("Toolbar1",
               {ButtonOf(toolbar_keys::Back, toolbar_images::Back, "Previous year"),
                ButtonOf(toolbar_keys::Next, toolbar_images::Next, "Next year"),
                ButtonOf(toolbar_keys::Filter, toolbar_images::Filter, "Click to define a filter"),
                ButtonOf(toolbar_keys::Print, toolbar_images::Print, "Print preview"),
                ButtonOf(toolbar_keys::Open, toolbar_images::Open, "Import categories"),
                ButtonOf(toolbar_keys::Save, toolbar_images::Save, "Export to XML")}) {
  Toolbar1.SetAccessibleName("Commands");
  imgLogo.SetAccessibleName("Status");
  picHeadCol.SetAccessibleName("Weekdays");
  picHeadRow.SetAccessibleName("Months");
  pic1.SetAccessibleName("Year");
  VScroll1.SetAccessibleName("Scroll the months");
  legend.picCats.SetAccessibleName("Categories");
  legend.txtEdit.SetAccessibleName("Name of the category");
  legend.vScrollCat.SetAccessibleName("Scroll the categories");
  lblSelectedYear.style = {13, true};
  Command1.accessKey = 'R';
  Command1.SetCaption("Force refresh of current year");
  mnuSelectionMode.entries = {&mnuSelectionAutomatic, &mnuSelectionAlways, &mnuSelectionNever};
  mnuPop.entries = {&mnuNew,           &mnuEdit,       &mnuDelete, &mnuSeparator1, &mnuClear,
                    &mnuSelectionMode, &mnuSeparator2, &mnuHelp,   &mnuAbout};
}

std::vector<PlacedElement> YearPlanElements::Placed() {
  return {
      {&Toolbar1},
      {&lblSelectedYear},
      {&lblDate},
      {&Command1},
      {&imgLogo},
      {&picParent},
      {&picHeadCol, &picParent},
      {&picHeadRow, &picParent},
      {&pic1, &picParent},
      {&VScroll1, &picParent},
      {&legend.picCatView},
      {&legend.picCats, &legend.picCatView},
      {&legend.txtEdit, &legend.picCats},
      {&legend.vScrollCat},
  };
}

}  // namespace velkor
