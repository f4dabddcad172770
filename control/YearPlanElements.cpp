// control/YearPlanElements.cpp: the toolbar's buttons and the order of the menu.
#include "control/YearPlanElements.h"

#include <string>

namespace velkor {
namespace {

ToolbarButton ButtonOf(std::string_view key, std::string_view toolTip, bool enabled) {
  return {std::string(key), std::string(toolTip), enabled};
}

}  // namespace

YearPlanElements::YearPlanElements()
    : Toolbar1("Toolbar1",
               {ButtonOf(toolbar_keys::Back, "Previous year", true),
                ButtonOf(toolbar_keys::Next, "Next year", true),
                ButtonOf(toolbar_keys::Filter, "Click to define a filter", false),
                ButtonOf(toolbar_keys::Print, "Print: not in this version yet", false),
                ButtonOf(toolbar_keys::Open, "Import categories: not in this version yet", false),
                ButtonOf(toolbar_keys::Save, "Export to XML: not in this version yet", false)}) {
  Command1.SetCaption("Force refresh of current year");
  mnuSelectionMode.entries = {&mnuSelectionAutomatic, &mnuSelectionAlways, &mnuSelectionNever};
  mnuPop.entries = {&mnuNew,           &mnuEdit,       &mnuDelete, &mnuSeparator1, &mnuClear,
                    &mnuSelectionMode, &mnuSeparator2, &mnuHelp,   &mnuAbout};
}

}  // namespace velkor
